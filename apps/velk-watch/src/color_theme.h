// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_COLOR_THEME_H
#define APPS_VELK_WATCH_COLOR_THEME_H

#include <QCoreApplication>
#include <QPalette>
#include <QString>

namespace Velk {

/// The colours of the windows: those of the desktop, or one of our own palettes.
class ColorTheme
{
    Q_DECLARE_TR_FUNCTIONS(Velk::ColorTheme)

public:
    enum Name
    {
        Desktop,
        Light,
        Dark,
        HighContrast
    };

    static QList<Name> names();
    /// The name in a menu, translated.
    static QString text(Name name);
    /// The name in the settings: "desktop", "light", "dark", "high-contrast".
    static QString toString(Name name);
    /// The theme of this name in the settings; Desktop for any other text.
    static Name fromString(const QString& text);
    /// The palette of a theme; for Desktop the given one.
    static QPalette palette(Name name, const QPalette& desktop);
};

/// The contrast ratio of two colours, from 1 to 21, as the Web Content Accessibility Guidelines define it. Text is
/// legible from 4.5 on, in high contrast from 7 on.
double contrastRatio(const QColor& a, const QColor& b);

} // namespace Velk

#endif
