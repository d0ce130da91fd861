// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_CURVE_H
#define APPS_VELK_WATCH_PLOT_CURVE_H

#include "curve_decimation.h"

#include <QColor>
#include <QString>
#include <QVector>

namespace Velk {

/// A key as a plot draws it. A plain value; copies share the points.
struct PlotCurve
{
    enum Kind
    {
        Line,  ///< numbers, joined
        Steps, ///< booleans: 0 and 1, held until the next sample
        Marks, ///< events: a mark for each occurrence, whatever its value
        None   ///< values that a plot cannot show, such as text
    };

    QString name;
    QColor color;
    Kind kind = None;
    QVector<CurvePoint> points; ///< ascending in time
};

/// The value of a curve at a time.
struct CurveReading
{
    QString name;
    QColor color;
    QString text; ///< the value, as the table of the watched keys shows it
};

inline bool operator==(const CurveReading& a, const CurveReading& b)
{
    return a.name == b.name && a.color == b.color && a.text == b.text;
}

/// The readings of the curves at a time: for lines and steps the newest sample until then, unless a gap follows it; for
/// marks "event" when one is at most `tolerance` away. Curves without a reading are left out.
QVector<CurveReading> readingsAt(const QVector<PlotCurve>& curves, double time, double tolerance);

} // namespace Velk

#endif
