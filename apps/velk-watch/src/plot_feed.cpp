// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_feed.h"

#include "plot_view.h"

#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>

namespace Velk {

PlotFeed::PlotFeed(const WatchModel* watchModel, const SampleHistory* history, PlotView* plot, QObject* parent)
    : QObject(parent)
    , m_history(history)
    , m_plot(plot)
    , m_curves(watchModel, history)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &PlotFeed::update);
    const auto schedule = qOverload<>(&QTimer::start);
    connect(watchModel, &WatchModel::appearanceChanged, &m_timer, schedule);
    connect(watchModel, &WatchModel::rowsInserted, &m_timer, schedule);
    connect(watchModel, &WatchModel::rowsRemoved, &m_timer, schedule);
    connect(watchModel, &WatchModel::modelReset, &m_timer, schedule);
    connect(history, &SampleHistory::samplesDropped, &m_timer, schedule);
    connect(history, &SampleHistory::samplesAdded, this, [this] {
        if (m_plot->isFollowing())
            m_timer.start();
    });
    connect(plot, &PlotView::followingChanged, &m_timer, schedule);
}

void PlotFeed::update()
{
    m_plot->setCurves(m_curves.shownCurves(), m_history->newestTime());
}

} // namespace Velk
