// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/robot_link.h>

#include <robotconnection/memory_interface.h>

#include <QMap>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <boost/make_shared.hpp>

#include <functional>
#include <utility>

using namespace Velk;

namespace {

class NoService : public MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return {}; }
    QFuture<QStringList> getEventList() override { return {}; }
    QFuture<QStringList> getMicroEventList() override { return {}; }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override {}
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject*, const char*) override {}
};

/// A connection under the test's hand. The log has the hooks and the signals in their order, each with the state and
/// the presence of the memory service at that moment.
class TestLink : public RobotLink
{
public:
    explicit TestLink(QStringList* hookLog)
        : log(*hookLog)
    {
        connect(this, &RobotLink::stateChanged, this, [this] { note("stateChanged"); });
        connect(this, &RobotLink::connectionEstablished, this, [this] { note("established"); });
        connect(this, &RobotLink::connectionLost, this, [this] { note("lost"); });
        connect(this, &RobotLink::disconnected, this, [this] { note("disconnected"); });
        connect(this, &RobotLink::failed, this, [this](const QString& title, const QString& message) {
            note(QStringLiteral("failed %1/%2").arg(title, message));
        });
    }
    ~TestLink() override { shutDown(); }

    QString url() const override { return "test:"; }

    void establish() { RobotLink::establish(boost::make_shared<NoService>()); }
    using RobotLink::giveUp;
    using RobotLink::ledger;
    using RobotLink::lose;
    using RobotLink::reportFailure;
    using RobotLink::setRealTimeSupport;

    QStringList takeLog() { return std::exchange(log, {}); }

    QStringList& log;
    int uncollected = 0; // losses of "Arm" that are counted outside the ledger
    std::function<void()> onEndService;

protected:
    void startConnecting() override { note("start"); }
    void stopConnecting() override { note("stop"); }
    void endService(MemoryInterface&, Ending ending) override
    {
        note(ending == Ending::Lost ? "end lost" : "end closed");
        // A copy: the callback may delete the link.
        if (const auto callback = onEndService)
            callback();
    }
    void collectLosses() override
    {
        ledger().record(ledger().account("Arm"), LossCause::Dropped, std::exchange(uncollected, 0), 1, 2);
    }

private:
    void note(const QString& what)
    {
        const char* const states[] = {"Disconnected", "Connecting", "Connected", "Lost"};
        log << QStringLiteral("%1: %2%3").arg(what, states[state()], memoryInterface() ? " with memory" : "");
    }
};

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
    void aSlotMayOpenTheLinkAgain_data();
    void aSlotMayOpenTheLinkAgain();
    void aLinkClosedWhileTheLostServiceDeliversIsClosedOnly();
    void aLinkOpenedWhileItsServiceEndsConnectsAfterTheOldAttemptWasStopped();
    void aLinkOpenedAndClosedWhileItsServiceEndsIsClosed();
    void aLinkDeletedWhileItsServiceEndsStopsConnecting_data();
    void aLinkDeletedWhileItsServiceEndsStopsConnecting();
    void aLinkCannotBeOpenedFromItsDestructor();
    void aLinkThatGivesUpIsClosedAndSaysWhy();
    void givingUpIsReportedAlsoAfterTheSameFailure();
    void destructionEndsTheServiceWithoutASignal();

    void theSameFailureIsReportedOnceUntilConnectedOrOpenedAgain();

    void lossesOfManyCallsAreAnnouncedOncePerTurn();
    void whatIsCountedElsewhereIsCollectedBeforeTheLedgerIsRead();
    void openingForgetsTheLossesAndClosingDoesNot();

    void theRealTimeAnswerIsAnnouncedOnceForEachConnection();
    void theRealTimeAnswerEndsWithTheConnection();
    void theRealTimeAnswerOfAnEndedConnectionIsNotAnnounced();

    void theReportIsEmptyAndComesFromTheEventLoop();
    void thereIsNoReportWithoutAConnection();
    void thereIsNoReportAfterTheConnectionHasEnded();

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

void TestRobotLink::theSameFailureIsReportedOnceUntilConnectedOrOpenedAgain()
{
    TestLink link(&m_log);
    QSignalSpy failed(&link, &RobotLink::failed);
    link.open();
    link.reportFailure("Refused", "by a");
    link.reportFailure("Refused", "by b");
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 2);

    link.establish();
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 3);
    link.close();
    link.open();
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 4);
}

void TestRobotLink::lossesOfManyCallsAreAnnouncedOncePerTurn()
{
    TestLink link(&m_log);
    QSignalSpy recorded(&link, &RobotLink::lossesRecorded);
    qint64 announced = 0;
    connect(&link, &RobotLink::lossesRecorded, this,
            [&] { announced = link.lossLedger().total().span(LossCause::Dropped).count; });

    for (int i = 0; i < 10; ++i)
        link.ledger().record(link.ledger().account("Arm"), LossCause::Dropped, 1, i, i);
    QCOMPARE(recorded.count(), 0);
    QTRY_COMPARE(recorded.count(), 1);
    QCOMPARE(announced, 10);
    link.ledger().record(link.ledger().account("Arm"), LossCause::Dropped, 1, 10, 10);

    QTRY_COMPARE(recorded.count(), 2);
    QCOMPARE(announced, 11);
    QCOMPARE(link.losses().dropped, 11);
}

void TestRobotLink::whatIsCountedElsewhereIsCollectedBeforeTheLedgerIsRead()
{
    TestLink link(&m_log);
    link.uncollected = 3;

    QCOMPARE(link.losses("Arm").dropped, 3);
    QCOMPARE(link.losses().total(), 3);
    QCOMPARE(link.losses("Leg"), SampleLosses());
}

void TestRobotLink::openingForgetsTheLossesAndClosingDoesNot()
{
    TestLink link(&m_log);
    link.open();
    link.ledger().record(link.ledger().account("Arm"), LossCause::Trimmed, 1, 1, 1);
    link.establish();
    link.lose("Gone", "far");
    link.establish();
    link.close();
    QCOMPARE(link.losses().trimmed, 1);

    link.open();

    QCOMPARE(link.losses(), SampleLosses());
}

void TestRobotLink::theRealTimeAnswerIsAnnouncedOnceForEachConnection()
{
    TestLink link(&m_log);
    QSignalSpy answered(&link, &RobotLink::realTimeSupportAnswered);
    link.open();
    link.establish();
    QVERIFY(!link.realTimeSupport());

    link.setRealTimeSupport(true);
    link.setRealTimeSupport(true);
    QCOMPARE(answered.count(), 0);
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(answered.at(0).at(0).toBool(), true);
    QCOMPARE(link.realTimeSupport(), std::optional<bool>(true));

    link.lose("Gone", "far");
    link.establish();
    link.setRealTimeSupport(false);
    QTRY_COMPARE(answered.count(), 2);
    QCOMPARE(answered.at(1).at(0).toBool(), false);
}

void TestRobotLink::theRealTimeAnswerEndsWithTheConnection()
{
    TestLink link(&m_log);
    link.setRealTimeSupport(true);
    QVERIFY(!link.realTimeSupport());
    link.open();
    link.establish();
    link.setRealTimeSupport(true);

    link.lose("Gone", "far");
    QVERIFY(!link.realTimeSupport());
    link.establish();
    link.setRealTimeSupport(true);
    link.close();

    QVERIFY(!link.realTimeSupport());
}

void TestRobotLink::theRealTimeAnswerOfAnEndedConnectionIsNotAnnounced()
{
    TestLink link(&m_log);
    QSignalSpy answered(&link, &RobotLink::realTimeSupportAnswered);
    link.open();
    link.establish();
    link.setRealTimeSupport(true);

    link.lose("Gone", "far");
    link.establish();
    QCoreApplication::processEvents();

    QCOMPARE(answered.count(), 0);
}

void TestRobotLink::theReportIsEmptyAndComesFromTheEventLoop()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    int reports = 0;
    int lines = -1;

    link.requestReport([&](const LinkReport& report) {
        ++reports;
        lines = int(report.lines.size());
    });

    QCOMPARE(reports, 0);
    QTRY_COMPARE(reports, 1);
    QCOMPARE(lines, 0);
}

void TestRobotLink::thereIsNoReportWithoutAConnection()
{
    TestLink link(&m_log);
    int reports = 0;
    link.requestReport([&](const LinkReport&) { ++reports; });
    link.open();
    link.requestReport([&](const LinkReport&) { ++reports; });

    QCoreApplication::processEvents();

    QCOMPARE(reports, 0);
}

void TestRobotLink::thereIsNoReportAfterTheConnectionHasEnded()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    int reports = 0;
    link.requestReport([&](const LinkReport&) { ++reports; });

    link.lose("Gone", "far");
    link.establish();
    QCoreApplication::processEvents();

    QCOMPARE(reports, 0);
}

QTEST_GUILESS_MAIN(TestRobotLink)
#include "tst_robot_link.moc"
