// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/plot_feed.h>

#include "support/patient_try.h"

#include <apps/velk-watch/src/plot_view.h>
#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <support/fake_robot.h>

#include <QTest>

using namespace Velk;

namespace {

const QString arm = QStringLiteral("Arm");

// A plot that is fed from a robot with one watched key, which has two samples.
struct Fixture
{
    Fixture()
    {
        robot.establish();
        model->addKeys({MemoryKey(arm, QString(), DataNature)});
        plot.resize(400, 200);
        plot.show();
        robot.memory->deliver({{arm, {{1.0, 5}, {2.0, 6}}}});
        QTRY_COMPARE(plot.drawnPoints(), 2);
    }

    FakeConnectionManager robot;
    DisplayedMemoryKeyListModel* model = new DisplayedMemoryKeyListModel(&robot);
    WatchModel watchModel{model};
    SampleHistory history{model};
    PlotView plot;
    PlotFeed feed{&watchModel, &history, &plot, nullptr};
};

} // namespace

class TestPlotFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newSamplesArePlotted()
    {
        Fixture f;

        f.robot.memory->deliver({{arm, {{3.0, 7}}}});

        QTRY_COMPARE(f.plot.drawnPoints(), 3);
    }

    void aHiddenKeyIsNotPlotted()
    {
        Fixture f;

        f.watchModel.setShown(arm, false);

        QTRY_COMPARE(f.plot.drawnPoints(), 0);
    }

    void aRemovedKeyIsNotPlotted()
    {
        Fixture f;

        f.model->removeKeys({MemoryKey(arm, QString(), DataNature)});

        QTRY_COMPARE(f.plot.drawnPoints(), 0);
    }

    void aFrozenPlotGetsNewSamplesWhenItFollowsAgain()
    {
        Fixture f;
        f.plot.setFollowing(false);
        QCoreApplication::processEvents();

        f.robot.memory->deliver({{arm, {{3.0, 7}}}});
        QCoreApplication::processEvents();
        f.plot.drawNow();
        QCOMPARE(f.plot.drawnPoints(), 2);

        f.plot.setFollowing(true);
        QTRY_COMPARE(f.plot.drawnPoints(), 3);
    }
};

QTEST_MAIN(TestPlotFeed)
#include "tst_plot_feed.moc"
