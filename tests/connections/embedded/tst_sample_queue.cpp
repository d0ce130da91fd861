#include "sample_queue.h"

#include <QTest>

using namespace Velk;

namespace {

/// "1:10 2:20": time stamps and values.
QString text(const QMap<double, QVariant>& samples)
{
    QStringList texts;
    for (auto sample = samples.begin(); sample != samples.end(); ++sample)
        texts << QStringLiteral("%1:%2").arg(sample.key()).arg(sample.value().toString());
    return texts.join(QLatin1Char(' '));
}

} // namespace

class TestSampleQueue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void samplesComeOutInTheOrderOfTime();
    void takenSamplesAreGone();
    void aFullQueueDropsTheOldestAndCountsThem();
    void aQueueWorksOnAfterItHasDropped();
    void clearedSamplesAreNotCountedAsDropped();

private:
    const SampleQueue::DropCount m_dropped = std::make_shared<std::atomic<qint64>>(0);

    void push(SampleQueue& queue, int first, int last) const
    {
        for (int i = first; i <= last; ++i)
            queue.push(i, i * 10);
    }
};

void TestSampleQueue::samplesComeOutInTheOrderOfTime()
{
    SampleQueue queue(10, m_dropped);
    QVERIFY(queue.isEmpty());

    push(queue, 1, 3);

    QVERIFY(!queue.isEmpty());
    QCOMPARE(text(queue.take()), QStringLiteral("1:10 2:20 3:30"));
    QCOMPARE(m_dropped->load(), 0);
}

void TestSampleQueue::takenSamplesAreGone()
{
    SampleQueue queue(10, m_dropped);
    push(queue, 1, 3);
    queue.take();

    QVERIFY(queue.isEmpty());
    QCOMPARE(text(queue.take()), QString());
    push(queue, 4, 4);
    QCOMPARE(text(queue.take()), QStringLiteral("4:40"));
}

void TestSampleQueue::aFullQueueDropsTheOldestAndCountsThem()
{
    const auto dropped = std::make_shared<std::atomic<qint64>>(0);
    SampleQueue queue(3, dropped);

    push(queue, 1, 8);

    QCOMPARE(dropped->load(), 5);
    QCOMPARE(text(queue.take()), QStringLiteral("6:60 7:70 8:80"));
}

void TestSampleQueue::aQueueWorksOnAfterItHasDropped()
{
    const auto dropped = std::make_shared<std::atomic<qint64>>(0);
    SampleQueue queue(3, dropped);
    push(queue, 1, 4);
    queue.take();

    push(queue, 5, 6);

    QCOMPARE(text(queue.take()), QStringLiteral("5:50 6:60"));
    QCOMPARE(dropped->load(), 1);
}

void TestSampleQueue::clearedSamplesAreNotCountedAsDropped()
{
    const auto dropped = std::make_shared<std::atomic<qint64>>(0);
    SampleQueue queue(3, dropped);
    push(queue, 1, 2);

    queue.clear();

    QVERIFY(queue.isEmpty());
    QCOMPARE(dropped->load(), 0);
}

QTEST_APPLESS_MAIN(TestSampleQueue)
#include "tst_sample_queue.moc"
