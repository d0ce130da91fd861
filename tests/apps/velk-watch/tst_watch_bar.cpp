// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/watch_bar.h>

#include <QAction>
#include <QMainWindow>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

using namespace Velk;

namespace {

// "record! save": the actions that are enabled, with ! if checked.
QString recordingActions(const WatchBar& bar)
{
    QStringList enabled;
    if (bar.recordAction()->isEnabled())
        enabled << (bar.recordAction()->isChecked() ? QStringLiteral("record!") : QStringLiteral("record"));
    if (bar.saveAction()->isEnabled())
        enabled << QStringLiteral("save");
    if (bar.discardAction()->isEnabled())
        enabled << QStringLiteral("discard");
    return enabled.join(QLatin1Char(' '));
}

} // namespace

class TestWatchBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theActionsFollowTheRecording_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("isConnected");
        QTest::addColumn<QString>("expected");
        const int idle = RecordingControl::Idle;
        const int recording = RecordingControl::Recording;
        const int unsaved = RecordingControl::Unsaved;
        QTest::newRow("no robot") << idle << false << QString();
        QTest::newRow("a robot") << idle << true << QStringLiteral("record");
        QTest::newRow("a recording runs") << recording << true << QStringLiteral("record! save");
        QTest::newRow("an unsaved recording") << unsaved << true << QStringLiteral("record save discard");
        QTest::newRow("an unsaved recording of a robot that is gone")
            << unsaved << false << QStringLiteral("save discard");
    }

    void theActionsFollowTheRecording()
    {
        QFETCH(int, state);
        QFETCH(bool, isConnected);
        QMainWindow window;
        auto* const bar = new WatchBar(&window);

        bar->setRecordingState(RecordingControl::State(state), isConnected);

        QTEST(recordingActions(*bar), "expected");
    }

    void thePeriodIsReportedWhenItChanges()
    {
        QMainWindow window;
        auto* const bar = new WatchBar(&window);
        QSignalSpy changed(bar, &WatchBar::periodChanged);

        bar->setPeriod(250);
        bar->setPeriod(250);

        QCOMPARE(changed.count(), 1);
        QCOMPARE(changed.at(0).at(0).toInt(), 250);
        QCOMPARE(bar->period(), 250);
    }

    void aPeriodIsReportedOnceItIsTypedIn()
    {
        QMainWindow window;
        auto* const bar = new WatchBar(&window);
        window.addToolBar(bar);
        window.show();
        auto* const field = bar->findChild<QSpinBox*>(QStringLiteral("period"));
        QVERIFY(field);
        QSignalSpy changed(bar, &WatchBar::periodChanged);

        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("40"));
        QCOMPARE(changed.count(), 0);
        QTest::keyClick(field, Qt::Key_Return);

        QCOMPARE(changed.count(), 1);
        QCOMPARE(bar->period(), 40);
    }

    void theShortcutsWorkWhileTheBarIsHidden()
    {
        QMainWindow window;
        auto* const bar = new WatchBar(&window);
        window.addToolBar(bar);
        bar->hide();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));

        QTest::keyClick(&window, Qt::Key_F6);

        QVERIFY(bar->freezeAction()->isChecked());
    }
};

QTEST_MAIN(TestWatchBar)
#include "tst_watch_bar.moc"
