// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "color_theme.h"

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

struct Colors
{
    QRgb window;
    QRgb base;
    QRgb alternateBase;
    QRgb text;
    QRgb disabledText;
    QRgb button;
    QRgb highlight;
    QRgb highlightedText;
    QRgb link;
};

constexpr Colors lightColors{0xffeff0f1, 0xffffffff, 0xfff5f6f7, 0xff1b1e20, 0xff6b7074,
                             0xfff7f8f9, 0xff1d5fa8, 0xffffffff, 0xff1d5fa8};
constexpr Colors darkColors{0xff26292d, 0xff1b1d20, 0xff222529, 0xffe8eaec, 0xff8d9297,
                            0xff33373c, 0xff2f6fb5, 0xffffffff, 0xff7ab8f5};
constexpr Colors highContrastColors{0xff000000, 0xff000000, 0xff101010, 0xffffffff, 0xffb4b4b4,
                                    0xff000000, 0xffffff00, 0xff000000, 0xff00ffff};

QPalette paletteOf(const Colors& colors)
{
    // QPalette derives the colours of bevels from the button's colour; all others are set here.
    QPalette palette(QColor(colors.button), QColor(colors.window));
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::WindowText, colors.text);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternateBase);
    palette.setColor(QPalette::Text, colors.text);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::ButtonText, colors.text);
    palette.setColor(QPalette::BrightText, colors.highlight);
    palette.setColor(QPalette::ToolTipBase, colors.base);
    palette.setColor(QPalette::ToolTipText, colors.text);
    palette.setColor(QPalette::PlaceholderText, colors.disabledText);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, colors.highlightedText);
    palette.setColor(QPalette::Link, colors.link);
    palette.setColor(QPalette::LinkVisited, colors.link);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.disabledText);
    return palette;
}

// A channel of a colour, 0 to 1, as light intensity.
double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

QList<ColorTheme::Name> ColorTheme::names()
{
    return {Desktop, Light, Dark, HighContrast};
}

QString ColorTheme::text(Name name)
{
    switch (name) {
    case Desktop:
        return tr("As the desktop");
    case Light:
        return tr("Light");
    case Dark:
        return tr("Dark");
    case HighContrast:
        return tr("High contrast");
    }
    return {};
}

QString ColorTheme::toString(Name name)
{
    switch (name) {
    case Desktop:
        return QStringLiteral("desktop");
    case Light:
        return QStringLiteral("light");
    case Dark:
        return QStringLiteral("dark");
    case HighContrast:
        return QStringLiteral("high-contrast");
    }
    return {};
}

ColorTheme::Name ColorTheme::fromString(const QString& text)
{
    const QList<Name> all = names();
    const auto found = std::find_if(all.cbegin(), all.cend(), [&text](Name name) { return toString(name) == text; });
    return found == all.cend() ? Desktop : *found;
}

QPalette ColorTheme::palette(Name name, const QPalette& desktop)
{
    switch (name) {
    case Desktop:
        return desktop;
    case Light:
        return paletteOf(lightColors);
    case Dark:
        return paletteOf(darkColors);
    case HighContrast:
        return paletteOf(highContrastColors);
    }
    return desktop;
}

double contrastRatio(const QColor& a, const QColor& b)
{
    const double brighter = std::max(luminance(a), luminance(b));
    const double darker = std::min(luminance(a), luminance(b));
    return (brighter + 0.05) / (darker + 0.05);
}

} // namespace Velk
