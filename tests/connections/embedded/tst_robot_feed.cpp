// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

/// A feed that reports nothing by itself.
class SilentFeed : public RobotFeed
{
public:
    void start() override { ++starts; }
    void stop() override { ++stops; }
    bool waitUntilStopped(std::chrono::milliseconds limit) override
    {
        waits.append({stops, limit});
        return true;
    }
    QString url() const override { return "silent:"; }
    bool isRealTimeSupported() const override { return false; }

    int starts = 0;
    int stops = 0;
    QList<QPair<int, std::chrono::milliseconds>> waits; // of each wait: the number of stops before it, and its limit
};

struct Session
{
    std::shared_ptr<SilentFeed> feed = std::make_shared<SilentFeed>();
    EmbeddedLink link{feed};
    QSignalSpy established{&link, &RobotLink::connectionEstablished};
    QSignalSpy lost{&link, &RobotLink::connectionLost};
    QSignalSpy failed{&link, &RobotLink::failed};

    /// Reports a failure and waits until the link has handled it, and so all reports before it.
    bool waitForMarker()
    {
        feed->failed("Marker", "The last report.");
        return QTest::qWaitFor([this] { return !failed.isEmpty() && failed.last().at(0) == "Marker"; }, timeoutMs);
    }
};

} // namespace

class TestRobotFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPlainFeedIsInReachAtOnce();
    void aRobotOutOfReachIsConnectedWhenItIsBack();
    void theLinkHasTheUrlAndTheMemoryOfItsFeed();
    void theFeedRunsWhileTheLinkIsOpen();
    void theLinkFollowsTheReach();
    void reportsOfOneTurnAreFollowedToTheLastOne();
    void aRobotThatIsBackWithinOneTurnIsConnectedAgain();
    void aFailureIsReportedAndTheLinkWaits();
    void aFloodOfFailuresIsBounded();
    void aRepeatedFailureLeavesRoomForAnotherOne();
    void reportsWithoutAnOpenLinkHaveNoEffect_data();
    void reportsWithoutAnOpenLinkHaveNoEffect();
    void reportsOfARunThatEndedHaveNoEffect();
    void reportsComeFromAnyThread();
    void aFeedMayOutliveItsLink();
    void onlyDestroyingTheLinkWaitsForTheFeed();
    void anAppendedSampleOfAFeedIsDelivered();
};

void TestRobotFeed::aPlainFeedIsInReachAtOnce()
{
    EmbeddedLink link(std::make_shared<RobotFeed>());
    QVERIFY(link.memory());

    link.open();

    QCOMPARE(link.state(), RobotLink::Connecting);
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QCOMPARE(link.url(), QStringLiteral("embedded:"));
}

void TestRobotFeed::aRobotOutOfReachIsConnectedWhenItIsBack()
{
    EmbeddedLink link(std::make_shared<RobotMemory>());
    QSignalSpy failed(&link, &RobotLink::failed);
    QSignalSpy lost(&link, &RobotLink::connectionLost);
    link.feed().outOfReach();

    link.open();
    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, timeoutMs);
    QCOMPARE(link.state(), RobotLink::Connecting);
    link.feed().inReach();

    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QCOMPARE(lost.count(), 0);
}

void TestRobotFeed::theLinkHasTheUrlAndTheMemoryOfItsFeed()
{
    const Session session;

    QCOMPARE(session.link.url(), QStringLiteral("silent:"));
    QVERIFY(!session.link.isRealTimeSupported());
    QCOMPARE(session.link.memory().get(), session.feed->memory().get());
    QCOMPARE(&session.link.feed(), session.feed.get());
}

void TestRobotFeed::theFeedRunsWhileTheLinkIsOpen()
{
    auto session = std::make_unique<Session>();
    const std::shared_ptr<SilentFeed> feed = session->feed;
    QCOMPARE(feed->starts, 0);
    session->link.open();
    QCOMPARE(feed->starts, 1);
    QCOMPARE(feed->stops, 0);
    session->link.close();
    session->link.close();
    QCOMPARE(feed->stops, 1);
    session->link.open();

    session.reset();

    QCOMPARE(feed->starts, 2);
    QCOMPARE(feed->stops, 2);
}

void TestRobotFeed::theLinkFollowsTheReach()
{
    Session session;
    session.link.open();
    session.feed->inReach();
    QTRY_COMPARE_WITH_TIMEOUT(session.link.state(), RobotLink::Connected, timeoutMs);

    session.feed->outOfReach();
    QTRY_COMPARE_WITH_TIMEOUT(session.link.state(), RobotLink::Lost, timeoutMs);
    QCOMPARE(session.failed.count(), 1);
    session.feed->inReach();

    QTRY_COMPARE_WITH_TIMEOUT(session.link.state(), RobotLink::Connected, timeoutMs);
}

void TestRobotFeed::reportsOfOneTurnAreFollowedToTheLastOne()
{
    Session session;
    session.link.open();

    for (int i = 0; i < 3; ++i) {
        session.feed->inReach();
        session.feed->inReach();
        session.feed->outOfReach();
        session.feed->outOfReach();
    }

    QTRY_COMPARE_WITH_TIMEOUT(session.link.state(), RobotLink::Lost, timeoutMs);
    QCOMPARE(session.established.count(), 1);
    QCOMPARE(session.lost.count(), 1);
}

void TestRobotFeed::aRobotThatIsBackWithinOneTurnIsConnectedAgain()
{
    Session session;
    session.link.open();
    session.feed->inReach();
    QTRY_VERIFY_WITH_TIMEOUT(session.link.isConnected(), timeoutMs);

    session.feed->outOfReach();
    session.feed->inReach();

    QVERIFY(session.waitForMarker());
    QVERIFY(session.link.isConnected());
    QCOMPARE(session.lost.count(), 1);
    QCOMPARE(session.established.count(), 2);
}

void TestRobotFeed::aFailureIsReportedAndTheLinkWaits()
{
    Session session;
    session.link.open();

    session.feed->failed("No power", "Switch the robot on.");

    QTRY_COMPARE_WITH_TIMEOUT(session.failed.count(), 1, timeoutMs);
    QCOMPARE(session.failed.at(0), QVariantList({"No power", "Switch the robot on."}));
    QCOMPARE(session.link.state(), RobotLink::Connecting);
    session.feed->inReach();
    QTRY_VERIFY_WITH_TIMEOUT(session.link.isConnected(), timeoutMs);
}

void TestRobotFeed::aFloodOfFailuresIsBounded()
{
    Session session;
    session.link.open();
    QStringList messages;
    for (int i = 0; i < 1000; ++i)
        messages << QStringLiteral("Attempt %1 failed.").arg(i);

    for (const QString& message : std::as_const(messages))
        session.feed->failed("No power", message);
    session.feed->inReach();

    // A message that has another copy is kept by the link.
    const auto kept =
        std::count_if(messages.cbegin(), messages.cend(), [](const QString& message) { return !message.isDetached(); });
    QCOMPARE(int(kept), 20);
    QTRY_VERIFY_WITH_TIMEOUT(session.link.isConnected(), timeoutMs);
    QCOMPARE(session.failed.count(), 20);
    session.feed->failed("No power", "Attempt 1001 failed.");
    session.feed->outOfReach();
    QTRY_VERIFY_WITH_TIMEOUT(!session.link.isConnected(), timeoutMs);
    QCOMPARE(session.failed.count(), 20);
}

void TestRobotFeed::aRepeatedFailureLeavesRoomForAnotherOne()
{
    Session session;
    session.link.open();

    for (int i = 0; i < 1000; ++i)
        session.feed->failed("No power", "Switch the robot on.");
    session.feed->failed("No brakes", "Release the emergency stop.");

    QTRY_COMPARE_WITH_TIMEOUT(session.failed.count(), 2, timeoutMs);
    QCOMPARE(session.failed.at(0).at(0).toString(), QString("No power"));
    QCOMPARE(session.failed.at(1).at(0).toString(), QString("No brakes"));
}

void TestRobotFeed::reportsWithoutAnOpenLinkHaveNoEffect_data()
{
    QTest::addColumn<bool>("wasOpen");
    QTest::newRow("before it is opened") << false;
    QTest::newRow("after it was closed") << true;
}

void TestRobotFeed::reportsWithoutAnOpenLinkHaveNoEffect()
{
    QFETCH(bool, wasOpen);
    Session session;
    if (wasOpen) {
        session.link.open();
        session.link.close();
    }
    session.feed->inReach();
    session.feed->failed("No power", "Switch the robot on.");

    session.link.open();

    QVERIFY(session.waitForMarker());
    QCOMPARE(session.link.state(), RobotLink::Connecting);
    QCOMPARE(session.established.count(), 0);
    QCOMPARE(session.failed.count(), 1);
}

void TestRobotFeed::reportsOfARunThatEndedHaveNoEffect()
{
    Session session;
    session.link.open();
    session.feed->inReach();
    session.feed->failed("No power", "Switch the robot on.");

    session.link.close();
    session.link.open();

    QVERIFY(session.waitForMarker());
    QCOMPARE(session.link.state(), RobotLink::Connecting);
    QCOMPARE(session.established.count(), 0);
    QCOMPARE(session.failed.count(), 1);
}

void TestRobotFeed::reportsComeFromAnyThread()
{
    Session session;
    session.link.open();
    std::atomic<bool> isStopping{false};
    std::thread robot([&] {
        while (!isStopping) {
            session.feed->inReach();
            session.feed->outOfReach();
        }
    });

    const bool isFollowed =
        QTest::qWaitFor([&] { return session.established.count() >= 10 && session.lost.count() >= 10; }, timeoutMs);
    session.link.close();
    isStopping = true;
    robot.join();

    QVERIFY(isFollowed);
    QCOMPARE(session.link.state(), RobotLink::Disconnected);
}

void TestRobotFeed::aFeedMayOutliveItsLink()
{
    const auto feed = std::make_shared<SilentFeed>();
    {
        EmbeddedLink link(feed);
        link.open();
        feed->inReach();
    }

    feed->outOfReach();
    feed->inReach();
    QCoreApplication::processEvents();

    QCOMPARE(feed->stops, 1);
}

void TestRobotFeed::onlyDestroyingTheLinkWaitsForTheFeed()
{
    auto session = std::make_unique<Session>();
    const std::shared_ptr<SilentFeed> feed = session->feed;
    session->link.open();
    session->link.close();
    session->link.open();
    QCOMPARE(feed->waits.size(), 0);

    session.reset();

    QCOMPARE(feed->waits.size(), 1);
    QCOMPARE(feed->waits.first().first, 2);
    QVERIFY(feed->waits.first().second == std::chrono::seconds(1));
}

void TestRobotFeed::anAppendedSampleOfAFeedIsDelivered()
{
    Session session;
    session.link.open();
    session.feed->inReach();
    QTRY_VERIFY_WITH_TIMEOUT(session.link.isConnected(), timeoutMs);
    const boost::shared_ptr<MemoryInterface> service = session.link.memoryInterface();
    QStringList values;
    connect(service.get(), &MemoryInterface::dataGathered, this, [&values](const GatheredData& batch) {
        for (const QVariant& value : batch.value("Arm"))
            values << value.toString();
    });
    service->watchKey("Arm", 1000);
    service->startWatcher(20, 0);

    std::thread robot([&session] {
        for (int i = 1; i <= 5; ++i)
            session.feed->memory()->appendData("Arm", i, i);
    });
    robot.join();

    QTRY_COMPARE_WITH_TIMEOUT(values, QStringList({"1", "2", "3", "4", "5"}), timeoutMs);
}

QTEST_GUILESS_MAIN(TestRobotFeed)
#include "tst_robot_feed.moc"
