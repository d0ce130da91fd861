// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/robot_memory.h>

#include <QSet>
#include <QTest>

#include <algorithm>
#include <chrono>
#include <limits>
#include <thread>
#include <type_traits>
#include <vector>

using namespace Velk;

static_assert(!std::is_copy_constructible<RobotMemory>::value, "robot and viewer share one memory");

namespace {

/// "data: A B; events: C; micro-events: D", sorted.
QString keys(const RobotMemory& memory)
{
    const auto sorted = [](QStringList names) {
        std::sort(names.begin(), names.end());
        return names.join(QLatin1Char(' '));
    };
    return QStringLiteral("data: %1; events: %2; micro-events: %3")
        .arg(sorted(memory.dataNames()), sorted(memory.eventNames()), sorted(memory.microEventNames()));
}

const QString a = QStringLiteral("A");
const QString b = QStringLiteral("B");
const QString c = QStringLiteral("C");

double newestTime(const RobotMemory& memory, const QString& name)
{
    const std::optional<MemorySample> newest = memory.newest(name);
    return newest ? newest->timeStamp : 0.0;
}

QString newestValue(const RobotMemory& memory, const QString& name)
{
    const std::optional<MemorySample> newest = memory.newest(name);
    return newest ? newest->value.toString() : QStringLiteral("none");
}

double now()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace

class TestRobotMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewMemoryIsEmpty();
    void aWrittenKeyIsListedByItsKind();
    void aDeclaredKeyIsListedAndHasNoValue();
    void declaringAKeyAgainChangesNothing();
    void aNameIsAKeyOfOneKind_data();
    void aNameIsAKeyOfOneKind();
    void theNewestValueIsKept();
    void anInvalidValueIsAValue();
    void timeStampsAreSecondsSinceTheEpoch();
    void timeStampsAscendStrictly();
    void aTimeStampOfTheRobotIsKept();
    void aTimeStampThatGoesBackIsRaised();
    void aTimeStampThatIsNoNumberIsRefused_data();
    void aTimeStampThatIsNoNumberIsRefused();
    void aRemovedKeyIsGone();
    void aRemovedNameMayComeBackAsAnotherKind();
    void removingWhatIsNotThereDoesNothing();
    void removalsLeaveEveryOtherNameInItsList();
    void manyThreadsMayWriteAtOnce();
};

void TestRobotMemory::aNewMemoryIsEmpty()
{
    const RobotMemory memory;

    QCOMPARE(keys(memory), QStringLiteral("data: ; events: ; micro-events: "));
    QVERIFY(!memory.newest(a));
}

void TestRobotMemory::aWrittenKeyIsListedByItsKind()
{
    RobotMemory memory;

    QVERIFY(memory.setData(a, 1));
    QVERIFY(memory.raiseEvent(b, 2));
    QVERIFY(memory.raiseMicroEvent(c, 3));

    QCOMPARE(keys(memory), QStringLiteral("data: A; events: B; micro-events: C"));
    QCOMPARE(newestValue(memory, a), QStringLiteral("1"));
    QCOMPARE(newestValue(memory, b), QStringLiteral("2"));
    QCOMPARE(newestValue(memory, c), QStringLiteral("3"));
}

void TestRobotMemory::aDeclaredKeyIsListedAndHasNoValue()
{
    RobotMemory memory;

    QVERIFY(memory.declareData(a));
    QVERIFY(memory.declareEvent(b));
    QVERIFY(memory.declareMicroEvent(c));

    QCOMPARE(keys(memory), QStringLiteral("data: A; events: B; micro-events: C"));
    QVERIFY(!memory.newest(a));
}

void TestRobotMemory::declaringAKeyAgainChangesNothing()
{
    RobotMemory memory;
    memory.setData(a, 1);

    QVERIFY(memory.declareData(a));

    QCOMPARE(keys(memory), QStringLiteral("data: A; events: ; micro-events: "));
    QCOMPARE(newestValue(memory, a), QStringLiteral("1"));
}

void TestRobotMemory::aNameIsAKeyOfOneKind_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("data") << 0;
    QTest::newRow("event") << 1;
    QTest::newRow("micro-event") << 2;
}

void TestRobotMemory::aNameIsAKeyOfOneKind()
{
    QFETCH(int, kind);
    RobotMemory memory;
    const QList<bool (RobotMemory::*)(const QString&)> declare{&RobotMemory::declareData, &RobotMemory::declareEvent,
                                                               &RobotMemory::declareMicroEvent};
    (memory.*declare.at(kind))(a);
    const QString before = keys(memory);

    QCOMPARE(memory.setData(a, 1), kind == 0);
    QCOMPARE(memory.raiseEvent(a, 1), kind == 1);
    QCOMPARE(memory.raiseMicroEvent(a, 1), kind == 2);
    QCOMPARE(memory.declareData(a), kind == 0);
    QCOMPARE(memory.declareEvent(a), kind == 1);
    QCOMPARE(memory.declareMicroEvent(a), kind == 2);

    QCOMPARE(keys(memory), before);
}

void TestRobotMemory::theNewestValueIsKept()
{
    RobotMemory memory;
    memory.setData(a, 1);
    memory.setData(a, QStringLiteral("two"));

    QCOMPARE(newestValue(memory, a), QStringLiteral("two"));
}

void TestRobotMemory::anInvalidValueIsAValue()
{
    RobotMemory memory;
    memory.setData(a, QVariant());

    QVERIFY(memory.newest(a));
    QVERIFY(!memory.newest(a)->value.isValid());
}

void TestRobotMemory::timeStampsAreSecondsSinceTheEpoch()
{
    RobotMemory memory;
    const double before = now();
    memory.setData(a, 1);
    const double after = now();

    QVERIFY(newestTime(memory, a) >= before);
    QVERIFY(newestTime(memory, a) <= after);
}

void TestRobotMemory::timeStampsAscendStrictly()
{
    RobotMemory memory;
    std::vector<double> stamps;
    for (int i = 0; i < 10000; ++i) {
        memory.raiseEvent(a, i);
        stamps.push_back(newestTime(memory, a));
    }

    QVERIFY(std::adjacent_find(stamps.begin(), stamps.end(), std::greater_equal<double>()) == stamps.end());
}

void TestRobotMemory::aTimeStampOfTheRobotIsKept()
{
    RobotMemory memory;
    QVERIFY(memory.setData(a, 1, 12.5));
    QVERIFY(memory.raiseEvent(b, 1, 13.5));
    QVERIFY(memory.raiseMicroEvent(c, 1, -14.5));

    QCOMPARE(newestTime(memory, a), 12.5);
    QCOMPARE(newestTime(memory, b), 13.5);
    QCOMPARE(newestTime(memory, c), -14.5);
}

void TestRobotMemory::aTimeStampThatGoesBackIsRaised()
{
    RobotMemory memory;
    memory.raiseEvent(a, 1, 100.0);

    QVERIFY(memory.raiseEvent(a, 2, 50.0));
    const double second = newestTime(memory, a);
    QVERIFY(memory.raiseEvent(a, 3, 100.0));

    QVERIFY(second > 100.0);
    QVERIFY(second < 100.001);
    QVERIFY(newestTime(memory, a) > second);
    QCOMPARE(newestValue(memory, a), QStringLiteral("3"));
}

void TestRobotMemory::aTimeStampThatIsNoNumberIsRefused_data()
{
    QTest::addColumn<double>("timeStamp");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("negative infinite") << -std::numeric_limits<double>::infinity();
}

void TestRobotMemory::aTimeStampThatIsNoNumberIsRefused()
{
    QFETCH(double, timeStamp);
    RobotMemory memory;

    QVERIFY(!memory.setData(a, 1, timeStamp));
    QVERIFY(!memory.raiseEvent(b, 1, timeStamp));
    QVERIFY(!memory.raiseMicroEvent(c, 1, timeStamp));

    QCOMPARE(keys(memory), QStringLiteral("data: ; events: ; micro-events: "));
    QVERIFY(memory.setData(a, 1));
}

void TestRobotMemory::aRemovedKeyIsGone()
{
    RobotMemory memory;
    memory.setData(a, 1);

    QVERIFY(memory.removeKey(a));

    QCOMPARE(keys(memory), QStringLiteral("data: ; events: ; micro-events: "));
    QVERIFY(!memory.newest(a));
}

void TestRobotMemory::aRemovedNameMayComeBackAsAnotherKind()
{
    RobotMemory memory;
    memory.setData(a, 1);
    memory.removeKey(a);

    QVERIFY(memory.raiseEvent(a, 2));

    QCOMPARE(keys(memory), QStringLiteral("data: ; events: A; micro-events: "));
}

void TestRobotMemory::removingWhatIsNotThereDoesNothing()
{
    RobotMemory memory;
    memory.setData(a, 1);

    QVERIFY(!memory.removeKey(b));

    QCOMPARE(keys(memory), QStringLiteral("data: A; events: ; micro-events: "));
}

void TestRobotMemory::removalsLeaveEveryOtherNameInItsList()
{
    RobotMemory memory;
    QStringList expected;
    for (int i = 0; i < 100; ++i)
        memory.setData(QString::number(i), i);
    for (int i = 0; i < 100; ++i) {
        if (i % 3 == 1)
            expected << QString::number(i);
        else
            QVERIFY(memory.removeKey(QString::number(i)));
    }

    QStringList names = memory.dataNames();
    std::sort(names.begin(), names.end());
    std::sort(expected.begin(), expected.end());
    QCOMPARE(names, expected);
}

void TestRobotMemory::manyThreadsMayWriteAtOnce()
{
    constexpr int threadCount = 4;
    constexpr int writes = 2000;
    RobotMemory memory;
    std::vector<std::thread> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back([&memory, t] {
            for (int i = 0; i < writes; ++i) {
                memory.setData(QStringLiteral("Shared/%1").arg(i % 50), i);
                memory.setData(QStringLiteral("Own/%1/%2").arg(t).arg(i % 50), i);
                memory.raiseEvent(QStringLiteral("Event/%1").arg(t), i);
                memory.removeKey(QStringLiteral("Shared/%1").arg((i + 25) % 50));
                memory.dataNames();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    QCOMPARE(memory.eventNames().size(), threadCount);
    QCOMPARE(memory.dataNames().filter(QStringLiteral("Own/")).size(), threadCount * 50);
    const QStringList names = memory.dataNames();
    QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), names.size());
    QCOMPARE(newestValue(memory, QStringLiteral("Event/0")), QString::number(writes - 1));
}

QTEST_APPLESS_MAIN(TestRobotMemory)
#include "tst_robot_memory.moc"
