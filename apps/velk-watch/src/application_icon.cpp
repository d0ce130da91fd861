// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "application_icon.h"

#include <QPainter>
#include <QPainterPath>

namespace Velk {

QPixmap drawnIcon(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    // In the units of velk-watch.svg, which shows the same.
    painter.scale(size / 128.0, size / 128.0);

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1f3a4d));
    painter.drawRoundedRect(QRectF(8, 8, 112, 112), 22, 22);

    painter.setPen(QPen(QColor(0x3f6076), 3));
    painter.drawLine(QPointF(26, 44), QPointF(102, 44));
    painter.drawLine(QPointF(26, 66), QPointF(102, 66));
    painter.drawLine(QPointF(26, 88), QPointF(102, 88));

    QPainterPath curve(QPointF(24, 82));
    curve.cubicTo(QPointF(40, 82), QPointF(42, 38), QPointF(58, 38));
    curve.cubicTo(QPointF(74, 38), QPointF(72, 74), QPointF(88, 62));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0xe69f00), 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(curve);
    painter.setPen(QPen(QColor(0x56b4e9), 8, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter.drawPolyline(QPolygonF{{24, 98}, {62, 98}, {62, 90}, {104, 90}});
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(92, 58), 9, 9);
    return pixmap;
}

QIcon applicationIcon()
{
    QIcon drawn;
    for (const int size : {16, 24, 32, 48, 64, 128})
        drawn.addPixmap(drawnIcon(size));
    return QIcon::fromTheme(QStringLiteral("velk-watch"), drawn);
}

} // namespace Velk
