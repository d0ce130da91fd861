// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_FEED_H
#define APPS_VELK_WATCH_PLOT_FEED_H

#include "history_curves.h"

#include <QObject>
#include <QTimer>

namespace Velk {

class PlotView;

/// Gives a plot the curves of the shown keys, whenever keys, colours or samples change: once for all changes of one
/// turn of the event loop. A plot that does not follow gets no new samples.
class PlotFeed : public QObject
{
    Q_OBJECT

public:
    /// None of the arguments is owned; all must outlive this object.
    PlotFeed(const WatchModel* watchModel, const SampleHistory* history, PlotView* plot, QObject* parent);

private:
    void update();

    const SampleHistory* m_history;
    PlotView* m_plot;
    HistoryCurves m_curves;
    QTimer m_timer;
};

} // namespace Velk

#endif
