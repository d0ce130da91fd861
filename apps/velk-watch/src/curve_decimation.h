// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_CURVE_DECIMATION_H
#define APPS_VELK_WATCH_CURVE_DECIMATION_H

#include <QVector>

namespace Velk {

/// A point of a curve. A value that is not a number is a gap: the curve is not drawn across it.
struct CurvePoint
{
    double time;
    double value;
};

inline bool operator==(const CurvePoint& a, const CurvePoint& b)
{
    const bool bothGaps = a.value != a.value && b.value != b.value;
    return a.time == b.time && (bothGaps || a.value == b.value);
}

/// Whether the point is a gap.
bool isGap(const CurvePoint& point);
/// The gap at a time.
CurvePoint gapAt(double time);

/// The points to draw of a curve on `columns` pixel columns from the time `from` to the time `to`: the lowest and the
/// highest value of each column, so that no peak is lost, and gaps. Of the gaps in one column at most two
/// are kept: the first, and one behind the last point. The curve is drawn across the others.
///
/// `points` ascend in time. The neighbours on both sides of the range are kept, so that the curve reaches both edges.
/// Returns at most pointsPerColumn points for each column, and two neighbours. Returns all points of the range when
/// there are at most two for each column. Empty without a column, or when `to` is not after `from`.
QVector<CurvePoint> decimated(const QVector<CurvePoint>& points, double from, double to, int columns);

/// At most two pairs of points and two gaps.
constexpr int pointsPerColumn = 6;

} // namespace Velk

#endif
