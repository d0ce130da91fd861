// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_TRANSLATIONS_H
#define APPS_VELK_WATCH_TRANSLATIONS_H

#include <QLocale>

class QCoreApplication;

namespace Velk {

/// Translates the texts of the application and of the libraries into the language of the locale, if there is a
/// translation. The translators are children of the application.
void installTranslations(QCoreApplication* application, const QLocale& locale = QLocale());

} // namespace Velk

#endif
