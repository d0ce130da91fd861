#ifndef APPS_VELK_WATCH_THEME_STYLE_H
#define APPS_VELK_WATCH_THEME_STYLE_H

#include <QProxyStyle>

namespace Velk {

/// Qt's Fusion style with outlines that are taken from the text colour. Fusion darkens the window's colour for them, so
/// that on a dark one check boxes, fields and buttons have none that could be seen. A button that is switched on is
/// filled with the highlight colour, and not only a shade darker.
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
