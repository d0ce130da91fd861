// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "history_curves.h"

#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>

#include <QMetaType>

#include <cmath>
#include <limits>

namespace Velk {

HistoryCurves::HistoryCurves(const WatchModel* watchModel, const SampleHistory* history)
    : m_watchModel(watchModel)
    , m_history(history)
{}

QVector<PlotCurve> HistoryCurves::shownCurves()
{
    QVector<PlotCurve> curves;
    QHash<QString, Entry> entries;
    for (int row = 0; row < m_watchModel->count(); ++row) {
        const MemoryKey& key = m_watchModel->key(row);
        const QString name = key.name();
        if (!m_watchModel->isShown(name))
            continue;
        Entry entry = m_entries.take(name);
        const quint64 revision = m_history->revision(name);
        const bool isMarks = key.nature() == EventNature;
        // The nature of a key can become known after its first samples.
        if (entry.revision != revision || (entry.curve.kind == PlotCurve::Marks) != isMarks) {
            entry.curve = curveOf(m_history->samples(name), key.nature());
            entry.revision = revision;
        }
        entry.curve.name = name;
        entry.curve.color = m_watchModel->color(name);
        curves.append(entry.curve);
        entries.insert(name, entry);
    }
    m_entries.swap(entries);
    return curves;
}

PlotCurve HistoryCurves::curveOf(const HistorySpan& samples, MemoryKeyNature nature)
{
    PlotCurve curve;
    curve.points.reserve(samples.size());
    if (nature == EventNature) {
        curve.kind = PlotCurve::Marks;
        for (const HistorySample& sample : samples)
            curve.points.append({sample.time, 1.0});
        return curve;
    }

    bool isAllTruthValues = true;
    bool hasNumber = false;
    for (const HistorySample& sample : samples) {
        if (sample.isAfterGap && !curve.points.isEmpty() && !isGap(curve.points.last())) {
            // At the next double after the last point: every later sample is newer.
            const double last = curve.points.last().time;
            curve.points.append(gapAt(std::nextafter(last, std::numeric_limits<double>::infinity())));
        }
        const bool isNumber = std::isfinite(sample.number);
        hasNumber = hasNumber || isNumber;
        if (isNumber && isAllTruthValues)
            isAllTruthValues = sample.value.userType() == QMetaType::Bool;
        curve.points.append(isNumber ? CurvePoint{sample.time, sample.number} : gapAt(sample.time));
    }
    if (hasNumber)
        curve.kind = isAllTruthValues ? PlotCurve::Steps : PlotCurve::Line;
    return curve;
}

} // namespace Velk
