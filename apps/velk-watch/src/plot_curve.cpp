// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_curve.h"

#include <itemmodels/value_text.h>

#include <QCoreApplication>
#include <QVariant>

#include <algorithm>

namespace Velk {

namespace {

QString valueText(PlotCurve::Kind kind, double value)
{
    return ValueText::brief(kind == PlotCurve::Steps ? QVariant(value != 0.0) : QVariant(value));
}

QString lastValueAt(const PlotCurve& curve, double time)
{
    const auto after = std::upper_bound(curve.points.cbegin(), curve.points.cend(), time,
                                        [](double wanted, const CurvePoint& point) { return wanted < point.time; });
    if (after == curve.points.cbegin() || isGap(*(after - 1)))
        return {};
    // The newest value also holds after its sample.
    return valueText(curve.kind, (after - 1)->value);
}

QString markNear(const PlotCurve& curve, double time, double tolerance)
{
    const auto isBefore = [](const CurvePoint& point, double wanted) { return point.time < wanted; };
    auto mark = std::lower_bound(curve.points.cbegin(), curve.points.cend(), time - tolerance, isBefore);
    for (; mark != curve.points.cend() && mark->time <= time + tolerance; ++mark) {
        if (!isGap(*mark))
            return QCoreApplication::translate("Velk::PlotCurve", "event");
    }
    return {};
}

} // namespace

QVector<CurveReading> readingsAt(const QVector<PlotCurve>& curves, double time, double tolerance)
{
    QVector<CurveReading> readings;
    for (const PlotCurve& curve : curves) {
        QString text;
        if (curve.kind == PlotCurve::Marks)
            text = markNear(curve, time, tolerance);
        else if (curve.kind != PlotCurve::None)
            text = lastValueAt(curve, time);
        if (!text.isEmpty())
            readings.append({curve.name, curve.color, text});
    }
    return readings;
}

} // namespace Velk
