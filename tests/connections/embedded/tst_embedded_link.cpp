// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <connections/link/unix_time.h>
#include <robotconnection/memory_interface.h>

#include <QFuture>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;
constexpr int hoursMs = 9999990;

const QString data = QStringLiteral("Data");
const QString otherData = QStringLiteral("Other");
const QString anEvent = QStringLiteral("Event");

using Batch = QMap<QString, QMap<double, QVariant>>;

/// A link to a robot memory, connected, and what it has delivered.
struct Session
{
    explicit Session(int bufferCapacity = 4096)
        : memory(std::make_shared<RobotMemory>())
        , link(std::make_unique<EmbeddedLink>(memory))
    {
        link->setBufferCapacity(bufferCapacity);
        link->open();
        isConnected = QTest::qWaitFor([this] { return link->isConnected(); }, timeoutMs);
        service = link->memoryInterface();
        QObject::connect(service.get(), &MemoryInterface::dataGathered, service.get(), [this](const Batch& batch) {
            ++batches;
            for (auto key = batch.begin(); key != batch.end(); ++key) {
                for (auto sample = key->begin(); sample != key->end(); ++sample) {
                    stamps[key.key()] << sample.key();
                    values[key.key()] << sample.value().toString();
                }
            }
        });
    }

    std::shared_ptr<RobotMemory> memory;
    std::unique_ptr<EmbeddedLink> link;
    bool isConnected = false;
    boost::shared_ptr<MemoryInterface> service;
    int batches = 0;
    QMap<QString, QList<double>> stamps;
    QMap<QString, QStringList> values;
};

} // namespace

class RealTimeListener : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeListener(QStringList& answers)
        : m_answers(answers)
    {}

public Q_SLOTS:
    void gotAnswer(bool supported) { m_answers << (supported ? QStringLiteral("yes") : QStringLiteral("no")); }

private:
    QStringList& m_answers;
};

class TestEmbeddedLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLinkHasTheMemoryThatItWasGiven();
    void aLinkWithoutAMemoryMakesOne();
    void theRealTimeAnswerIsSetForTheNextConnection();

    void keysThatAreSampledTogetherShareATimeStamp();
    void keysOfSeveralPeriodsShareTheTimeStampsThatTheyHaveInCommon();
    void everyAppendedSampleIsDeliveredOnce();
    void aWatcherThatStartsLaterSamplesTheNewestAppendedSample();
    void ticksThatABusyEventLoopMissesAreCounted();
    void ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted_data();
    void ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted();
    void aKeyWithoutSamplesMissesNothing();
    void aTimeStampOfTheRobotIsDeliveredOnce();
    void aDeclaredKeyIsNotSampledBeforeItHasAValue();
    void whatIsRaisedWhileTheWatcherIsStoppedIsNotDelivered();
    void stoppingDiscardsWhatWasCollected();
    void anOverfullQueueKeepsTheNewestAndCountsTheRest();
    void lossesOutliveTheConnectionAndEndWithTheNextOpening();
    void nonsensicalPeriodsAreTheShortest();

    void listsFinishFromTheEventLoop();
    void aMillionNamesAreListed();
    void eventsOfManyThreadsAreAllDelivered();
    void writersMayGoOnWhileTheLinkComesAndGoes();
};

void TestEmbeddedLink::theLinkHasTheMemoryThatItWasGiven()
{
    const auto memory = std::make_shared<RobotMemory>();
    const EmbeddedLink link(memory);

    QCOMPARE(link.memory().get(), memory.get());
    QCOMPARE(link.url(), QStringLiteral("embedded:"));
    QVERIFY(link.isRealTimeSupported());
    QCOMPARE(link.bufferCapacity(), 4096);
}

void TestEmbeddedLink::aLinkWithoutAMemoryMakesOne()
{
    const EmbeddedLink link(std::shared_ptr<RobotMemory>(nullptr));

    QVERIFY(link.memory());
}

void TestEmbeddedLink::theRealTimeAnswerIsSetForTheNextConnection()
{
    EmbeddedLink link(std::make_shared<RobotMemory>());
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QStringList answers;
    RealTimeListener listener(answers);

    link.setRealTimeSupported(false);
    link.memoryInterface()->isRealTimeSupported(&listener, "gotAnswer");
    QTRY_COMPARE_WITH_TIMEOUT(answers, QStringList(QStringLiteral("yes")), timeoutMs);
    link.close();
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    link.memoryInterface()->isRealTimeSupported(&listener, "gotAnswer");

    QTRY_COMPARE_WITH_TIMEOUT(answers, QStringList({QStringLiteral("yes"), QStringLiteral("no")}), timeoutMs);
}

void TestEmbeddedLink::keysThatAreSampledTogetherShareATimeStamp()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.memory->setData(otherData, 2);
    session.service->watchKey(data, 20);
    session.service->watchKey(otherData, 20);

    session.service->startWatcher(200, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.stamps.value(data).size() >= 10, timeoutMs);
    QCOMPARE(session.stamps.value(otherData), session.stamps.value(data));
}

void TestEmbeddedLink::keysOfSeveralPeriodsShareTheTimeStampsThatTheyHaveInCommon()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.memory->setData(otherData, 2);
    session.service->watchKey(data, 10);
    session.service->watchKey(otherData, 20);

    session.service->startWatcher(100, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.stamps.value(otherData).size() >= 10, timeoutMs);
    for (const double stamp : session.stamps.value(otherData))
        QVERIFY(session.stamps.value(data).contains(stamp));
}

void TestEmbeddedLink::everyAppendedSampleIsDeliveredOnce()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->appendData(data, 0);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(data), QStringList(QStringLiteral("0")), timeoutMs);
    QStringList expected{QStringLiteral("0")};

    for (int i = 1; i <= 1000; ++i) {
        QVERIFY(session.memory->appendData(data, i));
        expected << QString::number(i);
    }

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(data), expected, timeoutMs);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 3, timeoutMs);
    QCOMPARE(session.values.value(data), expected);
    const QList<double> stamps = session.stamps.value(data);
    QVERIFY(std::adjacent_find(stamps.begin(), stamps.end(), std::greater_equal<double>()) == stamps.end());
}

void TestEmbeddedLink::aWatcherThatStartsLaterSamplesTheNewestAppendedSample()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->appendData(data, 1, 12.5);
    session.memory->appendData(data, 2, 13.5);
    session.service->watchKey(data, 10);

    session.service->startWatcher(50, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);
    QCOMPARE(session.values.value(data), QStringList(QStringLiteral("2")));
    QCOMPARE(session.stamps.value(data), QList<double>{13.5});
}

void TestEmbeddedLink::ticksThatABusyEventLoopMissesAreCounted()
{
    constexpr int periodMs = 10;
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, periodMs);
    session.service->watchKey(anEvent, periodMs);
    const double before = unixTime();
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 5, timeoutMs);
    QSignalSpy recorded(session.link.get(), &RobotLink::lossesRecorded);

    QThread::msleep(300);
    QTRY_VERIFY_WITH_TIMEOUT(recorded.count() > 0, timeoutMs);
    const qint64 rows = session.values.value(data).size();
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() > rows, timeoutMs);

    const qint64 missed = session.link->losses().missedTicks;
    QVERIFY2(missed >= 300 / periodMs - 2, qPrintable(QString::number(missed)));
    // Rows and missed ticks are together what was due until the newest row.
    const double newest = session.stamps.value(data).last();
    const double due = (newest - session.stamps.value(data).first()) * 1000 / periodMs + 1;
    const double counted = double(session.values.value(data).size() + session.link->losses().missedTicks);
    QVERIFY2(qAbs(counted - due) <= 2, qPrintable(QStringLiteral("%1 of %2").arg(counted).arg(due)));
    QCOMPARE(session.link->losses(data).missedTicks, session.link->losses().missedTicks);
    QCOMPARE(session.link->losses(anEvent), SampleLosses());
    const LossSpan span = session.link->lossLedger().total().span(LossCause::MissedTick);
    QVERIFY(span.from >= before - 0.1 && span.from <= span.to && span.to <= unixTime());
}

void TestEmbeddedLink::ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted_data()
{
    QTest::addColumn<QString>("change");
    for (const QString change : {"unwatched", "all unwatched", "another unwatched", "stopped", "closed"})
        QTest::newRow(qPrintable(change)) << change;
}

void TestEmbeddedLink::ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted()
{
    QFETCH(QString, change);
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, 10);
    session.service->watchKey(otherData, 10);
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 5, timeoutMs);
    const qint64 before = session.link->losses(data).missedTicks;

    QThread::msleep(300);
    if (change == "unwatched") {
        session.service->unwatchKey(data);
    } else if (change == "all unwatched") {
        session.service->unwatchAll();
    } else if (change == "another unwatched") {
        session.service->unwatchKey(otherData);
    } else if (change == "stopped") {
        session.service->stopWatcher();
    } else {
        session.link->close();
    }

    const qint64 missed = session.link->losses(data).missedTicks - before;
    QVERIFY2(missed >= 300 / 10 - 2, qPrintable(QString::number(missed)));
}

void TestEmbeddedLink::aKeyWithoutSamplesMissesNothing()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->declareData(data);
    session.memory->appendData(otherData, 1);
    for (const QString& name : {data, otherData, anEvent})
        session.service->watchKey(name, 5);
    session.service->startWatcher(20, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 2, timeoutMs);

    QThread::msleep(50);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 2, timeoutMs);

    QCOMPARE(session.link->losses(), SampleLosses());
}

void TestEmbeddedLink::aTimeStampOfTheRobotIsDeliveredOnce()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1, 12.5);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_COMPARE_WITH_TIMEOUT(session.stamps.value(data), QList<double>{12.5}, timeoutMs);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 3, timeoutMs);
    QCOMPARE(session.stamps.value(data), QList<double>{12.5});

    session.memory->setData(data, 2, 13.5);

    QTRY_COMPARE_WITH_TIMEOUT(session.stamps.value(data), (QList<double>{12.5, 13.5}), timeoutMs);
    QCOMPARE(session.values.value(data), QStringList({QStringLiteral("1"), QStringLiteral("2")}));
}

void TestEmbeddedLink::aDeclaredKeyIsNotSampledBeforeItHasAValue()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->declareData(data);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);
    QCOMPARE(session.values.size(), 0);

    session.memory->setData(data, QVariant());

    QTRY_VERIFY_WITH_TIMEOUT(!session.values.value(data).isEmpty(), timeoutMs);
}

void TestEmbeddedLink::whatIsRaisedWhileTheWatcherIsStoppedIsNotDelivered()
{
    Session session;
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.memory->raiseEvent(anEvent, QStringLiteral("before"));
    session.service->startWatcher(50, 0);
    session.memory->raiseEvent(anEvent, QStringLiteral("running"));
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent), QStringList(QStringLiteral("running")), timeoutMs);
    session.service->stopWatcher();
    session.memory->raiseEvent(anEvent, QStringLiteral("stopped"));

    session.service->startWatcher(50, 0);
    session.memory->raiseEvent(anEvent, QStringLiteral("running again"));

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent),
                              QStringList({QStringLiteral("running"), QStringLiteral("running again")}), timeoutMs);
}

void TestEmbeddedLink::stoppingDiscardsWhatWasCollected()
{
    Session session;
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->startWatcher(hoursMs, 0);
    session.memory->raiseEvent(anEvent, 1);

    session.service->stopWatcher();
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);

    QCOMPARE(session.values.size(), 0);
    // Nobody was listening any more: that is not a loss.
    QCOMPARE(session.link->losses().dropped, 0);
}

void TestEmbeddedLink::anOverfullQueueKeepsTheNewestAndCountsTheRest()
{
    Session session(3);
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->watchKey(data, 100);
    session.service->startWatcher(200, 0);

    for (int i = 1; i <= 10; ++i)
        session.memory->raiseEvent(anEvent, i);

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent),
                              QStringList({QStringLiteral("8"), QStringLiteral("9"), QStringLiteral("10")}), timeoutMs);
    QCOMPARE(session.link->losses(anEvent).dropped, 7);
    QCOMPARE(session.link->losses(data).dropped, 0);
    QCOMPARE(session.link->losses(QStringLiteral("Nowhere")), SampleLosses());
    QCOMPARE(session.link->losses().dropped, 7);
}

void TestEmbeddedLink::lossesOutliveTheConnectionAndEndWithTheNextOpening()
{
    Session session(1);
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->startWatcher(200, 0);
    session.memory->raiseEvent(anEvent, 1);
    session.memory->raiseEvent(anEvent, 2);
    QCOMPARE(session.link->losses().dropped, 1);

    session.service->unwatchAll();
    session.link->feed().outOfReach();
    QTRY_COMPARE_WITH_TIMEOUT(session.link->state(), RobotLink::Lost, timeoutMs);
    session.link->feed().inReach();
    QTRY_VERIFY_WITH_TIMEOUT(session.link->isConnected(), timeoutMs);
    QCOMPARE(session.link->losses(anEvent).dropped, 1);
    session.link->close();
    QCOMPARE(session.link->losses(anEvent).dropped, 1);

    session.link->open();
    QCOMPARE(session.link->losses(anEvent).dropped, 0);
}

void TestEmbeddedLink::nonsensicalPeriodsAreTheShortest()
{
    Session session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, -5);

    session.service->startWatcher(0, -1);

    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 10, timeoutMs);
    session.service->setGatherPeriod(-1);
    session.service->watchKey(data, 0);
    const auto delivered = session.values.value(data).size();
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= delivered + 10, timeoutMs);
}

void TestEmbeddedLink::listsFinishFromTheEventLoop()
{
    Session session;
    QVERIFY(session.isConnected);

    const QFuture<QStringList> list = session.service->getDataList();

    QVERIFY(list.isStarted());
    QVERIFY(!list.isFinished());
    QTRY_VERIFY_WITH_TIMEOUT(list.isFinished(), timeoutMs);
}

void TestEmbeddedLink::aMillionNamesAreListed()
{
    constexpr int count = 1000000;
    Session session;
    QVERIFY(session.isConnected);
    for (int i = 0; i < count; ++i)
        session.memory->declareData(QString::number(i));

    const QFuture<QStringList> list = session.service->getDataList();
    // The robot's code goes on meanwhile; the list is that of the moment of the question.
    session.memory->declareData(QStringLiteral("late"));

    QTRY_VERIFY_WITH_TIMEOUT(list.isFinished(), timeoutMs);
    QCOMPARE(list.result().size(), count);
    QCOMPARE(session.memory->dataNames().size(), count + 1);
}

void TestEmbeddedLink::eventsOfManyThreadsAreAllDelivered()
{
    constexpr int threadCount = 4;
    constexpr int occurrences = 1000;
    Session session;
    QVERIFY(session.isConnected);
    QStringList expected;
    for (int i = 0; i < occurrences; ++i)
        expected << QString::number(i);
    for (int t = 0; t < threadCount; ++t)
        session.service->watchKey(QString::number(t), 100);
    session.service->watchKey(QStringLiteral("shared"), 100);
    session.service->startWatcher(20, 10);

    std::vector<std::thread> robot;
    for (int t = 0; t < threadCount; ++t) {
        robot.emplace_back([&session, t] {
            for (int i = 0; i < occurrences; ++i) {
                session.memory->raiseEvent(QString::number(t), i);
                session.memory->raiseMicroEvent(QStringLiteral("shared"), i);
            }
        });
    }
    for (std::thread& thread : robot)
        thread.join();

    for (int t = 0; t < threadCount; ++t)
        QTRY_COMPARE_WITH_TIMEOUT(session.values.value(QString::number(t)), expected, timeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(QStringLiteral("shared")).size(), threadCount * occurrences,
                              timeoutMs);
    QList<double> stamps = session.stamps.value(QStringLiteral("shared"));
    QVERIFY(std::adjacent_find(stamps.begin(), stamps.end(), std::greater_equal<double>()) == stamps.end());
}

void TestEmbeddedLink::writersMayGoOnWhileTheLinkComesAndGoes()
{
    const auto memory = std::make_shared<RobotMemory>();
    std::atomic<bool> isStopping{false};
    std::vector<std::thread> robot;
    for (int t = 0; t < 2; ++t) {
        robot.emplace_back([&memory, &isStopping] {
            for (int i = 0; !isStopping; ++i) {
                memory->setData(QString::number(i % 10), i);
                memory->raiseEvent(anEvent, i);
                memory->removeKey(QString::number((i + 5) % 10));
            }
        });
    }

    int batches = 0;
    bool isConnected = true;
    for (int round = 0; round < 5 && isConnected; ++round) {
        EmbeddedLink link(memory);
        link.open();
        isConnected = QTest::qWaitFor([&link] { return link.isConnected(); }, timeoutMs);
        const boost::shared_ptr<MemoryInterface> service = link.memoryInterface();
        connect(service.get(), &MemoryInterface::dataGathered, this, [&batches] { ++batches; });
        for (int i = 0; i < 10; ++i)
            service->watchKey(QString::number(i), 1);
        service->watchKey(anEvent, 1);
        service->startWatcher(5, 0);
        const int before = batches;
        isConnected = isConnected && QTest::qWaitFor([&] { return batches >= before + 3; }, timeoutMs);
        service->unwatchKey(QString::number(round));
    }
    isStopping = true;
    for (std::thread& thread : robot)
        thread.join();

    QVERIFY(isConnected);
    QVERIFY(batches >= 15);
}

QTEST_GUILESS_MAIN(TestEmbeddedLink)
#include "tst_embedded_link.moc"
