// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "window_fixture.h"

#include <apps/velk-watch/src/message_bar.h>
#include <apps/velk-watch/src/plot_view.h>
#include <apps/velk-watch/src/recording_control.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTest>

using namespace Velk;

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void aSimulatedRobotIsOpenedByItsUrl()
    {
        WindowFixture f;

        QLineEdit* const url = f.find<QLineEdit>("robotUrlField");
        url->setText(QStringLiteral("sim:?seed=3"));
        QTest::keyClick(url, Qt::Key_Return);

        QTRY_VERIFY(f.window->session() && f.window->session()->catalogue());
        QTest::keyClicks(f.search(), QStringLiteral("Elbow/Pos"));
        QTest::keyClick(f.search(), Qt::Key_Return);
        QTRY_VERIFY(!f.valueOf(elbow).isEmpty());
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connected for ")));
    }

    void anInvalidUrlIsReportedAndChangesNothing()
    {
        WindowFixture f;
        f.connectRobot();

        QLineEdit* const url = f.find<QLineEdit>("robotUrlField");
        url->setText(QStringLiteral("nonsense:"));
        QTest::keyClick(url, Qt::Key_Return);

        QCOMPARE(f.window->messageBar()->title(), QStringLiteral("This robot cannot be opened"));
        QVERIFY(f.window->messageBar()->message().contains(QStringLiteral("nonsense")));
        QCOMPARE(f.window->session()->link(), f.link);
    }

    void thePeriodThatTheRobotGrantsIsShown()
    {
        WindowFixture f;
        f.connectRobot(false);
        auto* const period = f.find<QSpinBox>("period");

        period->setFocus();
        period->selectAll();
        QTest::keyClicks(period, QStringLiteral("10"));
        QTest::keyClick(period, Qt::Key_Return);

        QTRY_COMPARE(f.status("periodStatus"),
                     QStringLiteral("10 ms asked, this robot gives 200 ms and more: 200 ms in force"));
        QCOMPARE(f.window->session()->displayedKeys()->samplingPeriod(), 200);
    }

    void theWatcherIsPausedAndGoesOn()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);

        f.action("watcherAction")->trigger();
        QVERIFY(!f.window->session()->isWatcherRunning());
        QTRY_VERIFY(f.status("connectionStatus").endsWith(QStringLiteral(", sampling paused")));

        f.action("watcherAction")->trigger();
        QVERIFY(f.window->session()->isWatcherRunning());
    }

    void theTableIsFrozen()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.action("freezeAction")->trigger();
        f.memory->setData(elbow, 9);
        QTRY_COMPARE(f.window->session()->displayedKeys()->displayedKeys().constBegin()->valueHistory().last(),
                     QVariant(9));
        QCOMPARE(f.valueOf(elbow), QStringLiteral("1.5"));

        f.action("freezeAction")->trigger();

        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("9"));
    }

    void theCurveIsPlotted()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);

        QTRY_VERIFY(f.window->plot()->drawnPoints() > 1);
    }

    void aLostConnectionComesBackWithoutAClick()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->watchModel()->setColor(elbow, Qt::red);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);

        f.link->feed().outOfReach();
        QTRY_VERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connection lost for ")));
        QVERIFY(f.window->messageBar()->count() > 0);
        QCOMPARE(f.window->recording()->state(), RecordingControl::Unsaved);

        f.link->feed().inReach();
        f.memory->setData(elbow, 4.5);
        QTRY_COMPARE(f.valueOf(elbow), QStringLiteral("4.5"));
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Connected for ")));
        QCOMPARE(f.window->watchModel()->color(elbow), QColor(Qt::red));
        f.window->recording()->discard();
    }

    void disconnectingAndConnectingAgain()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        auto* const button = f.find<QPushButton>("connectButton");
        QCOMPARE(button->text(), QStringLiteral("Dis&connect"));

        QTest::mouseClick(button, Qt::LeftButton);

        QCOMPARE(button->text(), QStringLiteral("&Connect"));
        QVERIFY(f.status("connectionStatus").startsWith(QStringLiteral("Disconnected for ")));
        QCOMPARE(f.window->messageBar()->count(), 0);
    }

    void theMenuDisconnects()
    {
        WindowFixture f;
        f.connectRobot();

        f.menuAction(QStringLiteral("&Disconnect"))->trigger();

        QCOMPARE(f.link->state(), RobotLink::Disconnected);
    }

    void anotherRobotIsWatchedForTheSameKeys()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);

        f.window->openRobot(QStringLiteral("sim:"));

        QTRY_VERIFY(f.window->session()->isWatcherRunning());
        QTRY_COMPARE(f.watched(), QStringLiteral("Arm/Elbow/Position DATA"));
    }

    void itsModelsPassTheModelTester()
    {
        WindowFixture f;
        const QAbstractItemModelTester table(f.table()->model(),
                                             QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester tree(f.tree()->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        const QAbstractItemModelTester list(f.find<QTableView>("catalogueTable")->model(),
                                            QAbstractItemModelTester::FailureReportingMode::QtTest);

        f.connectRobot();
        f.watch(elbow);
        QTest::keyClicks(f.search(), QStringLiteral("el"));
        f.link->feed().outOfReach();
        QTRY_COMPARE(f.link->state(), RobotLink::Lost);
        f.link->feed().inReach();

        QTRY_VERIFY(f.window->session()->isReady());
        f.window->session()->unwatch(f.window->session()->watchedKeys());
        QCOMPARE(f.watched(), QString());
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
