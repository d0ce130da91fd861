// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/loop_feed.h>
#include <connections/embedded/robot_memory.h>

#include <QSignalSpy>
#include <QTest>
#include <QTime>

#include <atomic>
#include <memory>
#include <thread>
#include <utility>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

/// Counts in the memory, as long as it may.
class CountingFeed : public LoopFeed
{
public:
    CountingFeed()
        : LoopFeed(std::chrono::milliseconds(1))
    {}

    std::atomic<int> steps{0};

protected:
    void step() override { memory()->setData("Count", ++steps); }
};

/// Stays in its first prepare() until the test lets it go. The second one reports another failure.
class SlowFeed : public LoopFeed
{
public:
    SlowFeed()
        : LoopFeed(std::chrono::milliseconds(1))
    {}
    ~SlowFeed() override
    {
        if (hasEnded)
            *hasEnded = true;
    }

    std::atomic<bool> isReleased{false};
    std::atomic<int> preparations{0};
    std::atomic<int> reports{0};
    std::atomic<bool>* hasEnded = nullptr;

protected:
    void prepare() override
    {
        if (++preparations > 1) {
            failed("Marker", "Reported by the second run.");
            return;
        }
        while (!isReleased)
            std::this_thread::yield();
        inReach();
        failed("No power", "Switch the robot on.");
        ++reports;
    }
    void step() override {}
};

} // namespace

class TestLoopFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aLoopFeedWritesUntilTheLinkIsClosed();
    void whatAStoppedRunReportsHasNoEffect();
    void aStepThatHangsIsLeftBehind();
    void theExampleOfTheClassCommentWritesWhileItsLinkIsOpen();
};

void TestLoopFeed::aLoopFeedWritesUntilTheLinkIsClosed()
{
    const auto feed = std::make_shared<CountingFeed>();
    EmbeddedLink link(feed);
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QVERIFY(feed->memory()->newest("Count"));
    QTRY_VERIFY_WITH_TIMEOUT(feed->steps >= 10, timeoutMs);

    link.close();

    QVERIFY(feed->waitUntilStopped(std::chrono::milliseconds(timeoutMs)));
    const int steps = feed->steps;
    EmbeddedLink other(std::make_shared<CountingFeed>());
    other.open();
    QTRY_VERIFY_WITH_TIMEOUT(other.memory()->newest("Count") && other.memory()->newest("Count")->value.toInt() > 10,
                             timeoutMs);
    QCOMPARE(feed->steps.load(), steps);
}

void TestLoopFeed::whatAStoppedRunReportsHasNoEffect()
{
    const auto feed = std::make_shared<SlowFeed>();
    EmbeddedLink link(feed);
    QSignalSpy established(&link, &RobotLink::connectionEstablished);
    QSignalSpy failed(&link, &RobotLink::failed);
    link.open();
    QTRY_COMPARE_WITH_TIMEOUT(feed->preparations.load(), 1, timeoutMs);
    link.close();
    link.open();

    feed->isReleased = true;
    QTRY_VERIFY_WITH_TIMEOUT(!failed.isEmpty() && failed.last().at(0) == "Marker", timeoutMs);

    QCOMPARE(feed->reports.load(), 1);
    QCOMPARE(link.state(), RobotLink::Connecting);
    QCOMPARE(established.count(), 0);
    QCOMPARE(failed.count(), 1);
}

void TestLoopFeed::aStepThatHangsIsLeftBehind()
{
    std::atomic<bool> hasEnded{false};
    auto feed = std::make_shared<SlowFeed>();
    feed->hasEnded = &hasEnded;
    SlowFeed* const hanging = feed.get();
    auto link = std::make_unique<EmbeddedLink>(std::move(feed));
    link->open();
    QTRY_COMPARE_WITH_TIMEOUT(hanging->preparations.load(), 1, timeoutMs);

    link.reset();

    QVERIFY(!hasEnded.load());
    hanging->isReleased = true;
    QTRY_VERIFY_WITH_TIMEOUT(hasEnded.load(), timeoutMs);
}

void TestLoopFeed::theExampleOfTheClassCommentWritesWhileItsLinkIsOpen()
{
#include "loop_feed_example.inc"

    link.open();

    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QVERIFY(link.memory()->newest("Clock/Second"));
}

QTEST_GUILESS_MAIN(TestLoopFeed)
#include "tst_loop_feed.moc"
