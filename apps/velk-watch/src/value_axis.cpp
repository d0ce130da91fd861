// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "value_axis.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Velk {

namespace {

constexpr double margin = 0.06; // of the range, on both sides
// The narrowest range, relative to the values: in a narrower one doubles cannot distinguish the ticks.
constexpr double minRelativeRange = 1e-9;
// The difference of two values up to this one is finite.
constexpr double greatestValue = std::numeric_limits<double>::max() / 1e10;

bool isWithinReach(double lower, double upper)
{
    const double magnitude = std::max(std::abs(lower), std::abs(upper));
    return magnitude < greatestValue && upper - lower > magnitude * minRelativeRange && upper - lower > 1e-300;
}

} // namespace

void ValueAxis::fit(const QVector<PlotCurve>& curves, double from, double to)
{
    if (!m_isFitting)
        return;
    double lowest = std::numeric_limits<double>::infinity();
    double highest = -lowest;
    for (const PlotCurve& curve : curves) {
        if (curve.kind != PlotCurve::Line && curve.kind != PlotCurve::Steps)
            continue;
        auto point = std::lower_bound(curve.points.cbegin(), curve.points.cend(), from,
                                      [](const CurvePoint& candidate, double time) { return candidate.time < time; });
        for (; point != curve.points.cend() && point->time <= to; ++point) {
            if (!std::isfinite(point->value) || std::abs(point->value) >= greatestValue)
                continue;
            lowest = std::min(lowest, point->value);
            highest = std::max(highest, point->value);
        }
    }
    if (lowest > highest)
        return;
    // A level curve gets a range around its value.
    const double range = isWithinReach(lowest, highest) ? highest - lowest : std::max(std::abs(highest) * 0.1, 0.5);
    m_lower = lowest - range * margin;
    m_upper = highest + range * margin;
}

void ValueAxis::zoom(double factor, double around)
{
    if (!(factor > 0.0) || !std::isfinite(around))
        return;
    const double lower = around - (around - m_lower) * factor;
    const double upper = around + (m_upper - around) * factor;
    if (!isWithinReach(lower, upper))
        return;
    m_lower = lower;
    m_upper = upper;
    m_isFitting = false;
}

void ValueAxis::pan(double difference)
{
    if (difference == 0.0 || !isWithinReach(m_lower + difference, m_upper + difference))
        return;
    m_lower += difference;
    m_upper += difference;
    m_isFitting = false;
}

} // namespace Velk
