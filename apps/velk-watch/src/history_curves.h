// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_HISTORY_CURVES_H
#define APPS_VELK_WATCH_HISTORY_CURVES_H

#include "plot_curve.h"

#include <memorykeymodel/memory_key.h>

#include <QHash>

namespace Velk {

class HistorySpan;
class SampleHistory;
class WatchModel;

/// The curves of the keys that a watch model shows, from the samples that a history keeps of them. A curve is made
/// again only when the samples of its key have changed.
class HistoryCurves
{
public:
    /// Neither is owned; both must outlive this object.
    HistoryCurves(const WatchModel* watchModel, const SampleHistory* history);

    /// The curves of the keys whose display flag is set, in the order of the watch model's rows.
    QVector<PlotCurve> shownCurves();

    /// The samples as points, with a gap before each one that follows a gap, and where a data key has no number.
    static PlotCurve curveOf(const HistorySpan& samples, MemoryKeyNature nature);

private:
    struct Entry
    {
        quint64 revision = 0;
        PlotCurve curve;
    };

    const WatchModel* m_watchModel;
    const SampleHistory* m_history;
    QHash<QString, Entry> m_entries; // of the keys in the last result
};

} // namespace Velk

#endif
