#ifndef APPS_VELK_WATCH_TRANSLATIONS_H
#define APPS_VELK_WATCH_TRANSLATIONS_H

#include <QLocale>

class QCoreApplication;

namespace Velk {

/// Translates the application, and what it shows of the libraries, into the language of the locale, if there is a
/// translation. The translators live as long as the application.
void installTranslations(QCoreApplication* application, const QLocale& locale = QLocale());

} // namespace Velk

#endif
