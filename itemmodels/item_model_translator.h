#ifndef ITEMMODELS_ITEM_MODEL_TRANSLATOR_H
#define ITEMMODELS_ITEM_MODEL_TRANSLATOR_H

#include <itemmodels/itemmodels_export.h>

#include <QLocale>

#include <memory>

QT_BEGIN_NAMESPACE
class QTranslator;
QT_END_NAMESPACE

namespace Velk {

/// The item models' own texts (headers, tool tips, accessibility texts) in the language of the locale: German and
/// French are there, English needs none. Null for any other language, and in a build without Qt's linguist tools.
///
/// Hand it to QCoreApplication::installTranslator() and keep it as long as the application. An application that has
/// texts for these contexts in translations of its own installs those later, and they win.
ITEMMODELS_EXPORT std::unique_ptr<QTranslator> createItemModelTranslator(const QLocale& locale = QLocale());

} // namespace Velk

#endif
