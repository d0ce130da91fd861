// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sample_buffer.h>

#include <QTest>

#include <deque>
#include <memory>
#include <random>
#include <vector>

using namespace Velk;

namespace {

SampleLimits limits(int samplesPerKey, int samples = 1000, qint64 bytes = 1000)
{
    SampleLimits result;
    result.samplesPerKey = samplesPerKey;
    result.samples = samples;
    result.bytes = bytes;
    return result;
}

/// "1:10 2:20": time stamps and values.
QString text(const Samples& samples)
{
    QStringList texts;
    for (auto sample = samples.begin(); sample != samples.end(); ++sample)
        texts << QStringLiteral("%1:%2").arg(sample.key()).arg(sample.value().toString());
    return texts.join(' ');
}

/// "2 at 1-2": what was dropped.
QString text(const LossSpan& span)
{
    return QStringLiteral("%1 at %2-%3").arg(span.count).arg(span.from).arg(span.to);
}

void addNumbers(SampleBuffer& buffer, int first, int last)
{
    for (int i = first; i <= last; ++i)
        buffer.add(i, 10 * i);
}

} // namespace

class TestSampleBuffer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void samplesComeOutInTheOrderOfTime();
    void aTakenBufferIsEmpty();
    void theOldestSampleOfTheKeyMakesRoom();
    void theSamplesOfAllKeysShareTheBudget();
    void aKeyWithoutSamplesHasNothingToMakeRoomWith();
    void bytesAreBoundedToo();
    void growingValuesOfManyKeysKeepWithinTheBytes();
    void aSampleThatCannotFitLeavesTheOthers();
    void aSharedValueCountsUntilItsLastSampleGoes();
    void roomIsWhatFitsOverAllKeys();
    void whatIsTakenOrClearedOrGoneMakesRoom();
    void samplesAfterABurstAreBuffered();
    void clearingIsNoLoss();
    void anyOrderOfCallsKeepsTheNewestSamples();
};

void TestSampleBuffer::samplesComeOutInTheOrderOfTime()
{
    SampleBudget budget;
    SampleBuffer buffer(&budget);
    QVERIFY(buffer.isEmpty());

    buffer.add(1.5, "a");
    buffer.add(2.5, QVariant());
    buffer.add(3.5, 7);

    QCOMPARE(text(buffer.take()), QStringLiteral("1.5:a 2.5: 3.5:7"));
}

void TestSampleBuffer::aTakenBufferIsEmpty()
{
    SampleBudget budget;
    SampleBuffer buffer(&budget);
    addNumbers(buffer, 1, 3);
    buffer.take();

    QVERIFY(buffer.isEmpty());
    QCOMPARE(text(buffer.take()), QString());
    addNumbers(buffer, 4, 4);

    QCOMPARE(text(buffer.take()), QStringLiteral("4:40"));
}

void TestSampleBuffer::theOldestSampleOfTheKeyMakesRoom()
{
    SampleBudget budget(limits(3));
    SampleBuffer buffer(&budget);

    addNumbers(buffer, 1, 5);

    QCOMPARE(text(buffer.take()), QStringLiteral("3:30 4:40 5:50"));
    QCOMPARE(text(buffer.takeDropped()), QStringLiteral("2 at 1-2"));
    QCOMPARE(text(buffer.takeDropped()), QStringLiteral("0 at 0-0"));
    addNumbers(buffer, 6, 8);
    QCOMPARE(text(buffer.take()), QStringLiteral("6:60 7:70 8:80"));
    QCOMPARE(buffer.takeDropped().count, 0);
}

void TestSampleBuffer::theSamplesOfAllKeysShareTheBudget()
{
    SampleBudget budget(limits(10, 4));
    SampleBuffer arm(&budget);
    SampleBuffer leg(&budget);
    addNumbers(arm, 1, 2);
    addNumbers(leg, 1, 2);

    addNumbers(arm, 3, 5);

    QCOMPARE(text(arm.take()), QStringLiteral("4:40 5:50"));
    QCOMPARE(text(leg.take()), QStringLiteral("1:10 2:20"));
    QCOMPARE(text(arm.takeDropped()), QStringLiteral("3 at 1-3"));
    QCOMPARE(leg.takeDropped().count, 0);
}

void TestSampleBuffer::aKeyWithoutSamplesHasNothingToMakeRoomWith()
{
    SampleBudget budget(limits(10, 2));
    SampleBuffer arm(&budget);
    SampleBuffer leg(&budget);
    addNumbers(arm, 1, 2);

    addNumbers(leg, 3, 3);

    QVERIFY(leg.isEmpty());
    QCOMPARE(text(leg.takeDropped()), QStringLiteral("1 at 3-3"));
}

void TestSampleBuffer::bytesAreBoundedToo()
{
    SampleBudget budget(limits(10, 10, 100));
    SampleBuffer buffer(&budget);
    buffer.add(1, "long", 60);
    buffer.add(2, "longer", 60);
    buffer.add(3, "short", 40);
    QCOMPARE(budget.room(), 0);

    buffer.add(4, "shorter", 1);

    QCOMPARE(text(buffer.take()), QStringLiteral("3:short 4:shorter"));
    QCOMPARE(text(buffer.takeDropped()), QStringLiteral("2 at 1-2"));
    QCOMPARE(budget.room(), 10);
}

void TestSampleBuffer::growingValuesOfManyKeysKeepWithinTheBytes()
{
    SampleBudget budget(limits(10, 1000, 100));
    std::vector<SampleBuffer> buffers;
    for (int key = 0; key < 50; ++key)
        buffers.emplace_back(&budget);
    for (SampleBuffer& buffer : buffers)
        buffer.add(1, 1, 1);

    for (SampleBuffer& buffer : buffers)
        buffer.add(2, 40, 40);

    qint64 bytes = 0;
    int samples = 0;
    qint64 dropped = 0;
    for (SampleBuffer& buffer : buffers) {
        for (const QVariant& value : buffer.take()) {
            bytes += value.toInt();
            ++samples;
        }
        dropped += buffer.takeDropped().count;
    }
    QCOMPARE(bytes, 90); // 50 small values and one large one
    QCOMPARE(samples + dropped, 100);
}

void TestSampleBuffer::aSampleThatCannotFitLeavesTheOthers()
{
    SampleBudget budget(limits(10, 10, 100));
    SampleBuffer arm(&budget);
    SampleBuffer leg(&budget);
    arm.add(1, "arm", 30);
    leg.add(1, "leg", 60);

    arm.add(2, "longer than what leg leaves", 41);
    arm.add(3, "larger than the budget", 101);

    QCOMPARE(text(arm.take()), QStringLiteral("1:arm"));
    QCOMPARE(text(arm.takeDropped()), QStringLiteral("2 at 2-3"));
}

void TestSampleBuffer::aSharedValueCountsUntilItsLastSampleGoes()
{
    SampleBudget budget(limits(3, 10, 100));
    SampleBuffer arm(&budget);
    SampleBuffer leg(&budget);
    arm.add(1, "shared", 60);
    arm.add(2, "shared");
    arm.add(3, "shared");
    arm.add(4, "own", 1);

    leg.add(4, "leg", 50);
    QVERIFY(leg.isEmpty());

    arm.add(5, "own", 1);
    arm.add(6, "own", 1);
    leg.add(6, "leg", 50);
    QCOMPARE(text(leg.take()), QStringLiteral("6:leg"));
}

void TestSampleBuffer::roomIsWhatFitsOverAllKeys()
{
    SampleBudget budget(limits(10, 4));
    SampleBuffer buffer(&budget);
    QCOMPARE(budget.room(), 4);

    addNumbers(buffer, 1, 3);
    QCOMPARE(budget.room(), 1);
    addNumbers(buffer, 4, 9);

    QCOMPARE(budget.room(), 0);
}

void TestSampleBuffer::whatIsTakenOrClearedOrGoneMakesRoom()
{
    SampleBudget budget(limits(10, 6));
    SampleBuffer taken(&budget);
    SampleBuffer cleared(&budget);
    auto gone = std::make_unique<SampleBuffer>(&budget);
    for (SampleBuffer* const buffer : {&taken, &cleared, gone.get()})
        addNumbers(*buffer, 1, 2);
    QCOMPARE(budget.room(), 0);

    taken.take();
    QCOMPARE(budget.room(), 2);
    cleared.clear();
    QCOMPARE(budget.room(), 4);
    const SampleBuffer moved(std::move(*gone));
    gone.reset();
    QCOMPARE(budget.room(), 4);
}

void TestSampleBuffer::samplesAfterABurstAreBuffered()
{
    SampleBudget budget(limits(3000, 3000));
    SampleBuffer buffer(&budget);
    addNumbers(buffer, 1, 5000);
    QCOMPARE(buffer.take().size(), 3000);
    QCOMPARE(budget.room(), 3000);

    addNumbers(buffer, 5001, 5002);

    QCOMPARE(text(buffer.take()), QStringLiteral("5001:50010 5002:50020"));
}

void TestSampleBuffer::clearingIsNoLoss()
{
    SampleBudget budget;
    SampleBuffer buffer(&budget);
    addNumbers(buffer, 1, 5);

    buffer.clear();

    QVERIFY(buffer.isEmpty());
    QCOMPARE(buffer.takeDropped().count, 0);
    addNumbers(buffer, 6, 6);
    QCOMPARE(text(buffer.take()), QStringLiteral("6:60"));
}

void TestSampleBuffer::anyOrderOfCallsKeepsTheNewestSamples()
{
    std::mt19937 random(7);
    SampleBudget budget(limits(5, 8));
    SampleBuffer buffers[] = {SampleBuffer(&budget), SampleBuffer(&budget)};
    std::deque<int> expected[2];
    qint64 dropped[2] = {0, 0};
    for (int i = 1; i <= 20000; ++i) {
        const std::size_t key = random() % 2;
        if (random() % 12 == 0) {
            QStringList texts;
            for (const int number : std::exchange(expected[key], {}))
                texts << QStringLiteral("%1:%2").arg(number).arg(10 * number);
            QCOMPARE(text(buffers[key].take()), texts.join(' '));
            continue;
        }
        const bool isFull = expected[key].size() == 5 || expected[0].size() + expected[1].size() == 8;
        const bool isRefused = isFull && expected[key].empty();
        dropped[key] += isFull ? 1 : 0;
        if (isFull && !isRefused)
            expected[key].pop_front();
        if (!isRefused)
            expected[key].push_back(i);
        addNumbers(buffers[key], i, i);
    }

    QCOMPARE(buffers[0].takeDropped().count, dropped[0]);
    QCOMPARE(buffers[1].takeDropped().count, dropped[1]);
}

QTEST_APPLESS_MAIN(TestSampleBuffer)
#include "tst_sample_buffer.moc"
