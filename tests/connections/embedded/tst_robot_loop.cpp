// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/robot_loop.h>

#include <QStringList>
#include <QTest>

#include <atomic>
#include <thread>

using namespace Velk;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds patience{60000};

/// A door that a function on the loop's thread waits at until the test opens it.
class Door
{
public:
    void open() { m_isOpen = true; }
    bool isAwaited() const { return m_isWaiting; }
    void pass()
    {
        m_isWaiting = true;
        while (!m_isOpen)
            std::this_thread::yield();
    }

private:
    std::atomic<bool> m_isOpen{false};
    std::atomic<bool> m_isWaiting{false};
};

/// What a loop's functions use, with the loop as a member.
struct Owner
{
    Door door;
    std::atomic<int> preparations{0};
    std::thread::id* endedOn = nullptr;
    std::atomic<bool>* hasEnded = nullptr;
    RobotLoop loop{milliseconds(1),
                   [this] {
                       ++preparations;
                       door.pass();
                   },
                   [] {}};

    ~Owner()
    {
        if (endedOn)
            *endedOn = std::this_thread::get_id();
        if (hasEnded)
            *hasEnded = true;
    }
};

} // namespace

class TestRobotLoop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nothingIsCalledBeforeItIsStarted();
    void itPreparesOnceAndStepsAgainAndAgain();
    void nothingIsCalledAfterItWasStopped();
    void itRunsOnAThreadOfItsOwn();
    void itCanBeStartedAgain();
    void startingAndStoppingTwiceDoesNothing();
    void destructionStopsIt();
    void aLongPeriodDoesNotHoldUpTheStop();
    void aLongFunctionSeesThatItIsToStop();
    void stoppingDoesNotWaitForTheFunctionThatRuns();
    void aNewStartBeginsAfterTheFunctionThatRuns();
    void theOwnerOfAStartLivesUntilTheLastFunctionHasReturned();
    void theOwnerMayEndOnTheLoopsThread();
};

void TestRobotLoop::nothingIsCalledBeforeItIsStarted()
{
    std::atomic<int> calls{0};
    {
        const RobotLoop loop(
            milliseconds(1), [&calls] { ++calls; }, [&calls] { ++calls; });
    }
    QCOMPARE(calls.load(), 0);
}

void TestRobotLoop::itPreparesOnceAndStepsAgainAndAgain()
{
    std::atomic<int> preparations{0};
    std::atomic<int> steps{0};
    std::atomic<bool> wasUnprepared{false};
    RobotLoop loop(
        milliseconds(1), [&preparations] { ++preparations; },
        [&] {
            wasUnprepared = wasUnprepared || preparations == 0;
            ++steps;
        });

    loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(steps.load() >= 10, 30000);
    loop.stop();

    QCOMPARE(preparations.load(), 1);
    QVERIFY(!wasUnprepared.load());
}

void TestRobotLoop::nothingIsCalledAfterItWasStopped()
{
    std::atomic<int> steps{0};
    RobotLoop loop(
        milliseconds(1), [] {}, [&steps] { ++steps; });
    std::atomic<int> otherSteps{0};
    RobotLoop other(
        milliseconds(1), [] {}, [&otherSteps] { ++otherSteps; });
    loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(steps.load() > 0, 30000);

    loop.stop();
    QVERIFY(loop.waitUntilIdle(patience));
    const int stepsAtStop = steps;
    other.start();
    QTRY_VERIFY_WITH_TIMEOUT(otherSteps.load() >= 20, 30000);

    QCOMPARE(steps.load(), stepsAtStop);
}

void TestRobotLoop::itRunsOnAThreadOfItsOwn()
{
    std::thread::id preparing;
    std::thread::id stepping;
    std::atomic<bool> hasStepped{false};
    RobotLoop loop(
        milliseconds(1), [&preparing] { preparing = std::this_thread::get_id(); },
        [&stepping, &hasStepped] {
            stepping = std::this_thread::get_id();
            hasStepped = true;
        });

    loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(hasStepped.load(), 30000);
    loop.stop();
    QVERIFY(loop.waitUntilIdle(patience));

    QVERIFY(preparing == stepping);
    QVERIFY(preparing != std::this_thread::get_id());
}

void TestRobotLoop::itCanBeStartedAgain()
{
    std::atomic<int> preparations{0};
    std::atomic<int> steps{0};
    RobotLoop loop(
        milliseconds(1), [&preparations] { ++preparations; }, [&steps] { ++steps; });
    loop.start();
    QTRY_COMPARE_WITH_TIMEOUT(preparations.load(), 1, 30000);
    loop.stop();
    QVERIFY(loop.waitUntilIdle(patience));
    const int stepsAtStop = steps;

    loop.start();

    QTRY_VERIFY_WITH_TIMEOUT(steps.load() > stepsAtStop, 30000);
    loop.stop();
    QCOMPARE(preparations.load(), 2);
}

void TestRobotLoop::startingAndStoppingTwiceDoesNothing()
{
    std::atomic<int> preparations{0};
    RobotLoop loop(
        milliseconds(1), [&preparations] { ++preparations; }, [] {});

    loop.stop();
    loop.start();
    loop.start();
    QTRY_COMPARE_WITH_TIMEOUT(preparations.load(), 1, 30000);
    loop.stop();
    loop.stop();

    QVERIFY(loop.waitUntilIdle(patience));
    QCOMPARE(preparations.load(), 1);
}

void TestRobotLoop::destructionStopsIt()
{
    std::atomic<bool> isInStep{false};
    {
        RobotLoop loop(
            milliseconds(1), [] {},
            [&isInStep] {
                isInStep = true;
                std::this_thread::yield();
                isInStep = false;
            });
        loop.start();
    }
    QVERIFY(!isInStep.load());
}

void TestRobotLoop::aLongPeriodDoesNotHoldUpTheStop()
{
    std::atomic<int> steps{0};
    RobotLoop loop(
        std::chrono::hours(1000), [] {}, [&steps] { ++steps; });
    loop.start();
    QTRY_COMPARE_WITH_TIMEOUT(steps.load(), 1, 30000);

    loop.stop();

    QVERIFY(loop.waitUntilIdle(patience));
    QCOMPARE(steps.load(), 1);
}

void TestRobotLoop::aLongFunctionSeesThatItIsToStop()
{
    std::atomic<bool> isPreparing{false};
    RobotLoop* running = nullptr;
    RobotLoop loop(
        milliseconds(1),
        [&isPreparing, &running] {
            isPreparing = true;
            while (!running->isStopping())
                std::this_thread::yield();
        },
        [] {});
    running = &loop;
    loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(isPreparing.load(), 30000);

    QVERIFY(!loop.isStopping());

    loop.stop();

    QVERIFY(loop.waitUntilIdle(patience));
}

void TestRobotLoop::stoppingDoesNotWaitForTheFunctionThatRuns()
{
    Owner owner;
    owner.loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(owner.door.isAwaited(), 30000);

    owner.loop.stop();

    QVERIFY(!owner.loop.waitUntilIdle(milliseconds(0)));
    owner.door.open();
    QVERIFY(owner.loop.waitUntilIdle(patience));
}

void TestRobotLoop::aNewStartBeginsAfterTheFunctionThatRuns()
{
    Owner owner;
    owner.loop.start();
    QTRY_VERIFY_WITH_TIMEOUT(owner.door.isAwaited(), 30000);

    owner.loop.stop();
    owner.loop.start();
    QCOMPARE(owner.preparations.load(), 1);
    owner.door.open();

    QTRY_COMPARE_WITH_TIMEOUT(owner.preparations.load(), 2, 30000);
}

void TestRobotLoop::theOwnerOfAStartLivesUntilTheLastFunctionHasReturned()
{
    std::atomic<bool> hasEnded{false};
    auto owner = std::make_shared<Owner>();
    owner->hasEnded = &hasEnded;
    Owner* const running = owner.get();
    running->loop.start(owner);
    QTRY_VERIFY_WITH_TIMEOUT(running->door.isAwaited(), 30000);

    running->loop.stop();
    owner.reset();

    QVERIFY(!hasEnded.load());
    running->door.open();
    QTRY_VERIFY_WITH_TIMEOUT(hasEnded.load(), 30000);
}

void TestRobotLoop::theOwnerMayEndOnTheLoopsThread()
{
    std::thread::id endedOn;
    std::atomic<bool> hasEnded{false};
    auto owner = std::make_shared<Owner>();
    owner->endedOn = &endedOn;
    owner->hasEnded = &hasEnded;
    Owner* const running = owner.get();
    running->loop.start(owner);
    QTRY_VERIFY_WITH_TIMEOUT(running->door.isAwaited(), 30000);
    running->loop.stop();
    owner.reset();
    running->door.open();

    QTRY_VERIFY_WITH_TIMEOUT(hasEnded.load(), 30000);

    QVERIFY(endedOn != std::thread::id());
    QVERIFY(endedOn != std::this_thread::get_id());
}

QTEST_GUILESS_MAIN(TestRobotLoop)
#include "tst_robot_loop.moc"
