// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "curve_decimation.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace Velk {

namespace {

// The points of one pixel column between two gaps. The lowest and the highest are drawn.
class Stretch
{
public:
    void add(const CurvePoint& point)
    {
        if (m_isEmpty || point.value < m_lowest.value)
            m_lowest = point;
        if (m_isEmpty || point.value > m_highest.value)
            m_highest = point;
        m_isEmpty = false;
    }

    void moveTo(QVector<CurvePoint>& points)
    {
        if (m_isEmpty)
            return;
        points.append(m_lowest.time < m_highest.time ? m_lowest : m_highest);
        if (m_lowest.time != m_highest.time)
            points.append(m_lowest.time < m_highest.time ? m_highest : m_lowest);
        m_isEmpty = true;
    }

private:
    bool m_isEmpty = true;
    CurvePoint m_lowest{};
    CurvePoint m_highest{};
};

} // namespace

bool isGap(const CurvePoint& point)
{
    return std::isnan(point.value);
}

CurvePoint gapAt(double time)
{
    return {time, std::numeric_limits<double>::quiet_NaN()};
}

QVector<CurvePoint> decimated(const QVector<CurvePoint>& points, double from, double to, int columns)
{
    if (columns < 1 || !(to > from))
        return {};
    const auto isBefore = [](const CurvePoint& point, double time) { return point.time < time; };
    const auto isAfter = [](double time, const CurvePoint& point) { return time < point.time; };
    auto first = std::lower_bound(points.cbegin(), points.cend(), from, isBefore);
    auto end = std::upper_bound(first, points.cend(), to, isAfter);
    if (first != points.cbegin())
        --first;
    if (end != points.cend())
        ++end;

    const auto count = end - first;
    QVector<CurvePoint> result;
    if (count <= static_cast<qptrdiff>(columns) * 2) {
        result.reserve(int(count));
        std::copy(first, end, std::back_inserter(result));
        return result;
    }

    const double columnWidth = (to - from) / columns;
    result.reserve(columns * 2 + 2);
    Stretch stretch;
    int column = -2; // none yet; -1 is that of the neighbour on the left
    bool hasGapInColumn = false;
    bool isGapPending = false;
    double gapTime = 0.0;
    const auto finishStretch = [&] {
        stretch.moveTo(result);
        if (isGapPending)
            result.append(gapAt(gapTime));
        isGapPending = false;
    };
    for (auto point = first; point != end; ++point) {
        const int itsColumn = point->time < from  ? -1
                              : point->time >= to ? columns
                                                  : std::min(columns - 1, int((point->time - from) / columnWidth));
        if (itsColumn != column) {
            finishStretch();
            column = itsColumn;
            hasGapInColumn = false;
        }
        if (isGap(*point)) {
            isGapPending = true;
            gapTime = point->time;
        } else {
            // The first gap of a column is drawn; a later one only if no point of the column follows it.
            if (isGapPending && !hasGapInColumn) {
                finishStretch();
                hasGapInColumn = true;
            }
            isGapPending = false;
            stretch.add(*point);
        }
    }
    finishStretch();
    return result;
}

} // namespace Velk
