// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "theme_style.h"

#include "color_theme.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace Velk {

namespace {

QColor outlineOf(const QPalette& palette)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    // In high contrast an outline needs almost the text's colour.
    const double part = contrastRatio(window, text) > 20.0 ? 0.8 : 0.45;
    return QColor::fromRgbF(float(window.redF() * (1 - part) + text.redF() * part),
                            float(window.greenF() * (1 - part) + text.greenF() * part),
                            float(window.blueF() * (1 - part) + text.blueF() * part));
}

bool hasOutline(QStyle::PrimitiveElement element, const QStyleOption* option)
{
    switch (element) {
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorItemViewItemCheck:
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_PanelButtonTool:
        return true;
    case QStyle::PE_Frame:
        return option->state & (QStyle::State_Sunken | QStyle::State_Raised);
    default:
        return false;
    }
}

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void drawOutline(QPainter* painter, const QStyleOption* option)
{
    painter->save();
    painter->setPen(outlineOf(option->palette));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

} // namespace

ThemeStyle::ThemeStyle()
    : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{}

void ThemeStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const
{
    const bool isSwitchedOn = element == PE_PanelButtonTool && (option->state & State_On);
    if (isSwitchedOn) {
        painter->save();
        QColor fill = option->palette.color(QPalette::Highlight);
        fill.setAlphaF(0.3F);
        painter->setPen(option->palette.color(QPalette::Highlight));
        painter->setBrush(fill);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter->restore();
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    if (isDark(option->palette) && hasOutline(element, option) && !(option->state & State_HasFocus))
        drawOutline(painter, option);
}

void ThemeStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                    const QWidget* widget) const
{
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if ((control == CC_SpinBox || control == CC_ComboBox) && isDark(option->palette) &&
        !(option->state & State_HasFocus))
        drawOutline(painter, option);
}

} // namespace Velk
