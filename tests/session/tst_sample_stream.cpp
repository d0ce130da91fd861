// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/sample_stream.h>

#include "support/fake_robot.h"
#include "support/fake_robot_link.h"
#include "support/key_text.h"
#include "support/patient_try.h"

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

const QString a = QStringLiteral("A");

// A connected robot, its displayed key set with one key, the stream, and what the stream reported.
struct Fixture
{
    Fixture()
    {
        robot.connected = true;
        keys->addKeys(keySet({a}));
        stream = new SampleStream(&robot, keys, &parent);
        QObject::connect(stream, &SampleStream::began, stream, [this] { reports << "began"; });
        QObject::connect(stream, &SampleStream::gapBegan, stream, [this] { reports << "gap"; });
        QObject::connect(stream, &SampleStream::batchReceived, stream, [this](const GatheredData& batch) {
            for (auto key = batch.cbegin(); key != batch.cend(); ++key)
                reports << key.key() + ": " + samplesText(key.value());
        });
    }
    void deliver(double time, int value) { robot.memory->deliver({{a, {{time, value}}}}); }
    boost::shared_ptr<FakeMemoryInterface> newMemory() { return boost::make_shared<FakeMemoryInterface>(&robot.log); }
    QStringList takeReports()
    {
        QStringList lines;
        lines.swap(reports);
        return lines;
    }

    FakeConnectionManager robot;
    DisplayedMemoryKeyListModel* keys = new DisplayedMemoryKeyListModel(&robot);
    QObject parent;
    SampleStream* stream = nullptr;
    QStringList reports;
};

// A link whose losses are the test's.
class LossyLink : public FakeRobotLink
{
public:
    void dropSamples(int count)
    {
        const double time = 1.0;
        ledger().record(ledger().account(a), LossCause::Dropped, count, time, time);
    }
};

} // namespace

class TestSampleStream : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySampleOfABatchIsReported()
    {
        Fixture f;

        f.robot.memory->deliver({{a, {{1, 10}, {2, 20}}}, {"not displayed", {{3, 30}}}});

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10, 2=20", "not displayed: 3=30"}));
    }

    void aBatchWithoutSamplesIsReportedToo()
    {
        Fixture f;
        QSignalSpy batches(f.stream, &SampleStream::batchReceived);

        f.robot.memory->deliver({});

        QCOMPARE(batches.count(), 1);
        QCOMPARE(f.takeReports(), QStringList("began"));
    }

    void theServiceOfEachConnectionIsReceived()
    {
        Fixture f;
        const auto former = f.robot.memory;
        f.robot.lose();
        f.robot.memory = f.newMemory();
        f.robot.establish();

        f.deliver(1, 10);
        former->deliver({{a, {{2, 20}}}});

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10"}));
    }

    void aBatchIsReportedOnceHoweverOftenTheRobotConnects()
    {
        Fixture f;
        f.robot.lose();
        f.robot.establish();
        f.robot.establish();

        f.deliver(1, 10);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10"}));
    }

    void aServiceThatAppearsLateIsFoundWithTheNextKeys()
    {
        Fixture f;
        f.robot.memory = f.newMemory();

        f.keys->addKeys(keySet({"B"}));
        f.deliver(1, 10);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10"}));
    }

    void aServiceThatAppearsLateIsFoundWithTheNextValues()
    {
        Fixture f;
        f.keys->stopWatcher();
        f.robot.memory = f.newMemory();
        f.keys->startWatcher(false);

        f.deliver(1, 10);
        f.deliver(2, 20);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 2=20"}));
    }

    void aStreamWithoutDisplayedKeysReportsWhatTheRobotDelivers()
    {
        Fixture f;
        SampleStream stream(&f.robot);
        QSignalSpy batches(&stream, &SampleStream::batchReceived);

        f.deliver(1, 10);

        QCOMPARE(batches.count(), 1);
    }

    void theEndOfAConnectionIsAGap_data()
    {
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("lost") << false;
        QTest::newRow("closed") << true;
    }

    void theEndOfAConnectionIsAGap()
    {
        QFETCH(bool, isClosed);
        Fixture f;
        f.deliver(1, 10);

        if (isClosed)
            f.robot.close();
        else
            f.robot.lose();
        f.robot.establish();
        f.deliver(5, 50);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10", "gap", "began", "A: 5=50"}));
    }

    void aConnectionThatBeginsWithoutAnEndIsAGap()
    {
        Fixture f;
        f.deliver(1, 10);

        f.robot.establish();
        f.deliver(5, 50);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10", "gap", "began", "A: 5=50"}));
    }

    void aMarkedGapIsReportedOnce()
    {
        Fixture f;
        f.stream->markGap();
        QCOMPARE(f.takeReports(), QStringList());
        f.deliver(1, 10);

        f.stream->markGap();
        f.stream->markGap();
        f.robot.lose();
        f.robot.establish();
        f.deliver(5, 50);

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10", "gap", "began", "A: 5=50"}));
    }

    void aWatcherThatFallsSilentIsAGap()
    {
        Fixture f;
        f.keys->setSamplingPeriod(200);
        QSignalSpy gap(f.stream, &SampleStream::gapBegan);
        f.deliver(1, 10);

        QVERIFY(gap.wait(60000));

        f.deliver(2, 20);
        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10", "gap", "began", "A: 2=20"}));
    }

    void theLossesAreThoseOfTheLink()
    {
        LossyLink link;
        SampleStream stream(&link);
        QSignalSpy recorded(&stream, &SampleStream::lossesRecorded);
        QCOMPARE(stream.losses(), SampleLosses());
        link.open();

        link.dropSamples(3);

        QCOMPARE(stream.losses().dropped, 3);
        QTRY_COMPARE(recorded.count(), 1);
    }

    void aConnectionThatCountsNoLossesHasNone()
    {
        Fixture f;

        QCOMPARE(f.stream->losses(), SampleLosses());
    }

    void theDisplayedKeysMayBeDeletedFirst()
    {
        Fixture f;

        delete f.keys;
        f.deliver(1, 10);
        f.robot.lose();

        QCOMPARE(f.takeReports(), QStringList({"began", "A: 1=10", "gap"}));
    }

    void theConnectionMayBeDeletedFirst()
    {
        auto robot = std::make_unique<FakeConnectionManager>();
        SampleStream stream(robot.get(), new DisplayedMemoryKeyListModel(robot.get()));
        QSignalSpy gap(&stream, &SampleStream::gapBegan);

        robot.reset();
        stream.markGap();

        QCOMPARE(gap.count(), 0);
        QCOMPARE(stream.losses(), SampleLosses());
    }

    void aSlotMayDeleteTheStream_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("when it begins") << 0;
        QTest::newRow("with a batch") << 1;
        QTest::newRow("with a gap") << 2;
    }

    void aSlotMayDeleteTheStream()
    {
        QFETCH(int, signal);
        Fixture f;
        const QPointer<SampleStream> stream = f.stream;
        const auto destroy = [stream] { delete stream; };
        if (signal == 0)
            connect(f.stream, &SampleStream::began, this, destroy);
        if (signal == 1)
            connect(f.stream, &SampleStream::batchReceived, this, destroy);
        if (signal == 2)
            connect(f.stream, &SampleStream::gapBegan, this, destroy);

        f.deliver(1, 10);
        f.robot.lose();
        f.robot.establish();

        QVERIFY(!stream);
    }
};

QTEST_GUILESS_MAIN(TestSampleStream)
#include "tst_sample_stream.moc"
