// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_THEME_STYLE_H
#define APPS_VELK_WATCH_THEME_STYLE_H

#include <QProxyStyle>

namespace Velk {

/// Qt's Fusion style with outlines that are visible on dark colours. Fusion draws outlines darker than the window; on a
/// dark window this style draws them between the colours of window and text. A tool button that is switched on is
/// filled with a part of the highlight colour.
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
