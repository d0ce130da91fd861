// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_ITEM_MODEL_TRANSLATOR_H
#define ITEMMODELS_ITEM_MODEL_TRANSLATOR_H

#include <itemmodels/itemmodels_export.h>

#include <QLocale>

#include <memory>

QT_BEGIN_NAMESPACE
class QTranslator;
QT_END_NAMESPACE

namespace Velk {

/// Translates the item models' own texts (headers, tool tips, accessibility texts) into the language of the locale,
/// German or French. Null for any other language, and in a build without Qt's linguist tools.
///
/// Pass it to QCoreApplication::installTranslator() and keep it as long as the application. An application that
/// translates these contexts itself installs its own translator later: the last one comes first.
ITEMMODELS_EXPORT std::unique_ptr<QTranslator> createItemModelTranslator(const QLocale& locale = QLocale());

} // namespace Velk

#endif
