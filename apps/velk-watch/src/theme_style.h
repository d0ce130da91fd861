// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_THEME_STYLE_H
#define APPS_VELK_WATCH_THEME_STYLE_H

#include <QProxyStyle>

namespace Velk {

/// Qt's Fusion style with outlines that are visible on dark colours: Fusion darkens the window's colour for them, this
/// style mixes it with the text's colour. A button that is switched on is filled with the highlight colour.
class ThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ThemeStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

} // namespace Velk

#endif
