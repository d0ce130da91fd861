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

/// What has to be drawn of a curve on `columns` pixel columns from the time `from` to the time `to`: of every column
/// the lowest and the highest value, so that no peak is lost, and the gaps. Gaps that are narrower than a column are
/// drawn as one, and what follows a gap is never joined to what stands before it.
///
/// `points` ascend in time. The neighbours on both sides of the range are kept, so that the curve enters and leaves it.
/// Never more than pointsPerColumn points for a column, and two neighbours; points that are no more than two for a
/// column are handed back as they are. Empty without a column or when `to` does not lie after `from`.
QVector<CurvePoint> decimated(const QVector<CurvePoint>& points, double from, double to, int columns);

/// Two stretches of two points, each followed by a gap.
constexpr int pointsPerColumn = 6;

} // namespace Velk

#endif
