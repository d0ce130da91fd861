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
    /// For a menu, translated.
    static QString text(Name name);
    /// For the settings: "desktop", "light", "dark", "high-contrast".
    static QString toString(Name name);
    /// Desktop for a text that names none.
    static Name fromString(const QString& text);
    /// The palette; for Desktop the one that is given.
    static QPalette palette(Name name, const QPalette& desktop);
};

/// The ratio in which the brighter of two colours outshines the other, as the Web Content Accessibility Guidelines
/// define it: 1 to 21. Text is legible from 4.5 on, in high contrast from 7 on.
double contrastRatio(const QColor& a, const QColor& b);

} // namespace Velk

#endif
