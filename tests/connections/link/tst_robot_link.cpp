// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "test_link.h"

#include <QPointer>
#include <QTest>

#include <functional>
#include <utility>

using namespace Velk;

namespace {

const QStringList opening{"stateChanged: Connecting", "start: Connecting"};
const QStringList establishing{"stateChanged: Connected with memory", "established: Connected with memory"};
const QStringList losing{"end lost: Connected with memory", "stateChanged: Lost", "lost: Lost",
                         "failed Gone/far: Lost"};
const QStringList closing{"end closed: Disconnected", "stop: Disconnected", "stateChanged: Disconnected",
                          "disconnected: Disconnected"};

} // namespace

class TestRobotLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.clear(); }

    void theSignalsOfAConnectionComeInOrder();
    void eventsThatDoNotFitTheStateAreIgnored_data();
    void eventsThatDoNotFitTheStateAreIgnored();
    void aSlotThatClosesTheLinkEndsTheSequence_data();
    void aSlotThatClosesTheLinkEndsTheSequence();
    void aSlotMayDeleteTheLink_data();
    void aSlotMayDeleteTheLink();
    void aLinkClosedWhileTheLostServiceDeliversIsClosedOnly();
    void aSlotMayOpenTheLinkAgain_data();
    void aSlotMayOpenTheLinkAgain();
    void aLinkOpenedWhileItsServiceEndsConnectsAfterTheOldAttemptWasStopped();
    void aLinkOpenedAndClosedWhileItsServiceEndsIsClosed();
    void aLinkDeletedWhileItsServiceEndsStopsConnecting_data();
    void aLinkDeletedWhileItsServiceEndsStopsConnecting();
    void aLinkCannotBeOpenedFromItsDestructor();
    void aLinkThatGivesUpIsClosedAndSaysWhy();
    void givingUpIsReportedAlsoAfterTheSameFailure();
    void destructionEndsTheServiceWithoutASignal();

private:
    QStringList m_log;
};

void TestRobotLink::theSignalsOfAConnectionComeInOrder()
{
    TestLink link(&m_log);
    link.open();
    QCOMPARE(link.takeLog(), opening);
    link.establish();
    QCOMPARE(link.takeLog(), establishing);
    link.lose("Gone", "far");
    QCOMPARE(link.takeLog(), losing);
    link.establish();
    QCOMPARE(link.takeLog(), establishing);
    link.close();
    QCOMPARE(link.takeLog(), closing);
}

void TestRobotLink::eventsThatDoNotFitTheStateAreIgnored_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("event");
    QTest::newRow("closed, closed again") << "disconnected"
                                          << "close";
    QTest::newRow("closed, established") << "disconnected"
                                         << "establish";
    QTest::newRow("closed, lost") << "disconnected"
                                  << "lose";
    QTest::newRow("connecting, opened") << "connecting"
                                        << "open";
    QTest::newRow("connecting, lost") << "connecting"
                                      << "lose";
    QTest::newRow("connected, opened") << "connected"
                                       << "open";
    QTest::newRow("connected, established") << "connected"
                                            << "establish";
    QTest::newRow("lost, opened") << "lost"
                                  << "open";
    QTest::newRow("lost, lost") << "lost"
                                << "lose";
}

void TestRobotLink::eventsThatDoNotFitTheStateAreIgnored()
{
    QFETCH(QString, state);
    QFETCH(QString, event);
    TestLink link(&m_log);
    const QMap<QString, std::function<void()>> events{{"open", [&link] { link.open(); }},
                                                      {"close", [&link] { link.close(); }},
                                                      {"establish", [&link] { link.establish(); }},
                                                      {"lose", [&link] { link.lose("Gone", "far"); }}};
    const QMap<QString, QStringList> ways{
        {"connecting", {"open"}}, {"connected", {"open", "establish"}}, {"lost", {"open", "establish", "lose"}}};
    for (const QString& step : ways.value(state))
        events.value(step)();
    link.takeLog();
    const RobotLink::State before = link.state();

    events.value(event)();

    QCOMPARE(link.takeLog(), QStringList());
    QCOMPARE(link.state(), before);
}

void TestRobotLink::aSlotThatClosesTheLinkEndsTheSequence_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("Connecting") << int(RobotLink::Connecting)
                                << QStringList{"stateChanged: Connecting", "stateChanged: Disconnected"};
    QTest::newRow("Connected") << int(RobotLink::Connected)
                               << opening + QStringList{"stateChanged: Connected with memory"} + closing;
    QTest::newRow("Lost") << int(RobotLink::Lost)
                          << opening + establishing + losing.mid(0, 2) +
                                 QStringList{"stop: Disconnected", "stateChanged: Disconnected"};
}

void TestRobotLink::aSlotThatClosesTheLinkEndsTheSequence()
{
    QFETCH(int, state);
    QFETCH(QStringList, expected);
    TestLink link(&m_log);
    connect(&link, &RobotLink::stateChanged, &link, [&link, state](RobotLink::State now) {
        if (now == state)
            link.close();
    });

    link.open();
    link.establish();
    link.lose("Gone", "far");

    QCOMPARE(link.takeLog(), expected);
}

void TestRobotLink::aSlotMayDeleteTheLink_data()
{
    QTest::addColumn<QString>("signal");
    for (const char* signal : {"connecting", "connected", "established", "real time", "losses", "closed",
                               "disconnected", "lost state", "lost", "failed"})
        QTest::newRow(signal) << QString(signal);
}

void TestRobotLink::aSlotMayDeleteTheLink()
{
    QFETCH(QString, signal);
    auto* const link = new TestLink(&m_log);
    const QPointer<TestLink> alive(link);
    connect(link, &RobotLink::stateChanged, this, [link, signal](RobotLink::State state) {
        const QStringList names{"closed", "connecting", "connected", "lost state"};
        if (names.at(state) == signal)
            delete link;
    });
    const auto deleteAt = [link, signal](const QString& name) {
        return [link, signal, name] {
            if (name == signal)
                delete link;
        };
    };
    connect(link, &RobotLink::connectionEstablished, this, deleteAt("established"));
    connect(link, &RobotLink::connectionLost, this, deleteAt("lost"));
    connect(link, &RobotLink::failed, this, deleteAt("failed"));
    connect(link, &RobotLink::realTimeSupportAnswered, this, deleteAt("real time"));
    connect(link, &RobotLink::lossesRecorded, this, deleteAt("losses"));
    connect(link, &RobotLink::disconnected, this, deleteAt("disconnected"));
    const std::function<void()> steps[] = {[link] { link->open(); }, [link] { link->establish(); },
                                           [link] {
                                               link->setRealTimeSupport(true);
                                               link->ledger().record(link->ledger().account("Arm"), LossCause::Dropped,
                                                                     1, 1, 1);
                                               QCoreApplication::processEvents();
                                           },
                                           [link, signal] {
                                               if (signal.contains("closed") || signal == "disconnected")
                                                   link->close();
                                               else
                                                   link->lose("Gone", "far");
                                           }};

    for (const auto& step : steps) {
        if (alive)
            step();
    }

    QVERIFY(!alive);
}

void TestRobotLink::aLinkClosedWhileTheLostServiceDeliversIsClosedOnly()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    link.takeLog();
    link.onEndService = [&link] { link.close(); };

    link.lose("Gone", "far");

    QCOMPARE(link.takeLog(), QStringList("end lost: Connected with memory") + closing);
}

void TestRobotLink::aSlotMayOpenTheLinkAgain_data()
{
    QTest::addColumn<bool>("isAtDisconnected");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("stateChanged") << false << closing.mid(0, 3) + opening;
    QTest::newRow("disconnected") << true << closing + opening;
}

void TestRobotLink::aSlotMayOpenTheLinkAgain()
{
    QFETCH(bool, isAtDisconnected);
    QFETCH(QStringList, expected);
    TestLink link(&m_log);
    link.open();
    link.establish();
    link.takeLog();
    if (isAtDisconnected)
        connect(&link, &RobotLink::disconnected, &link, [&link] { link.open(); });
    else
        connect(&link, &RobotLink::stateChanged, &link, [&link](RobotLink::State state) {
            if (state == RobotLink::Disconnected)
                link.open();
        });

    link.close();

    QCOMPARE(link.takeLog(), expected);
}

void TestRobotLink::aLinkOpenedWhileItsServiceEndsConnectsAfterTheOldAttemptWasStopped()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    link.takeLog();
    link.onEndService = [&link] { link.open(); };

    link.close();

    QCOMPARE(link.takeLog(), QStringList({"end closed: Disconnected", "stateChanged: Connecting", "stop: Connecting",
                                          "start: Connecting"}));
    link.establish();
    QCOMPARE(link.takeLog(), establishing);
}

void TestRobotLink::aLinkOpenedAndClosedWhileItsServiceEndsIsClosed()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    link.takeLog();
    link.onEndService = [&link] {
        link.open();
        link.close();
    };

    link.close();

    QCOMPARE(link.takeLog(), QStringList({"end closed: Disconnected", "stateChanged: Connecting",
                                          "stateChanged: Disconnected", "stop: Disconnected"}));
    QCOMPARE(link.state(), RobotLink::Disconnected);
}

void TestRobotLink::aLinkDeletedWhileItsServiceEndsStopsConnecting_data()
{
    QTest::addColumn<bool>("isLost");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("closed") << false << QStringList{"end closed: Disconnected", "stop: Disconnected"};
    QTest::newRow("lost") << true
                          << QStringList{"end lost: Connected with memory", "end closed: Disconnected",
                                         "stop: Disconnected"};
}

void TestRobotLink::aLinkDeletedWhileItsServiceEndsStopsConnecting()
{
    QFETCH(bool, isLost);
    QFETCH(QStringList, expected);
    auto* const link = new TestLink(&m_log);
    const QPointer<TestLink> alive(link);
    link->open();
    link->establish();
    link->takeLog();
    link->onEndService = [link] {
        link->onEndService = {};
        delete link;
    };

    if (isLost)
        link->lose("Gone", "far");
    else
        link->close();

    QVERIFY(!alive);
    QCOMPARE(std::exchange(m_log, {}), expected);
}

void TestRobotLink::aLinkCannotBeOpenedFromItsDestructor()
{
    {
        TestLink link(&m_log);
        link.open();
        link.establish();
        link.takeLog();
        link.onEndService = [&link] { link.open(); };
    }

    QCOMPARE(std::exchange(m_log, {}), QStringList({"end closed: Disconnected", "stop: Disconnected"}));
}

void TestRobotLink::aLinkThatGivesUpIsClosedAndSaysWhy()
{
    TestLink link(&m_log);
    link.open();
    link.takeLog();

    link.giveUp("Refused", "by the robot");

    QCOMPARE(link.takeLog(), QStringList({"stop: Disconnected", "stateChanged: Disconnected",
                                          "failed Refused/by the robot: Disconnected"}));
}

void TestRobotLink::givingUpIsReportedAlsoAfterTheSameFailure()
{
    TestLink link(&m_log);
    link.open();
    link.reportFailure("Refused", "by the robot");
    link.takeLog();

    link.giveUp("Refused", "by the robot");

    QCOMPARE(link.takeLog(), QStringList({"stop: Disconnected", "stateChanged: Disconnected",
                                          "failed Refused/by the robot: Disconnected"}));
}

void TestRobotLink::destructionEndsTheServiceWithoutASignal()
{
    {
        TestLink link(&m_log);
        link.open();
        link.establish();
        link.takeLog();
    }

    QCOMPARE(std::exchange(m_log, {}), QStringList({"end closed: Disconnected", "stop: Disconnected"}));
}

QTEST_GUILESS_MAIN(TestRobotLink)
#include "tst_robot_link.moc"
