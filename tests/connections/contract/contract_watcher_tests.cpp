// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_watcher_tests.h"

#include "contract_helpers.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <utility>

namespace Velk {

namespace {

constexpr int hoursMs = 9999990;

const QString data = QStringLiteral("Contract/Data");
const QString otherData = QStringLiteral("Contract/Other");
const QString anEvent = QStringLiteral("Contract/Event");
const QString aMicroEvent = QStringLiteral("Contract/MicroEvent");
const QString probe = QStringLiteral("Contract/Probe");

/// A subject with a connected link and its memory service.
struct Session
{
    explicit Session(const ContractSubjectFactory& createSubject)
        : subject(createSubject())
        , link(subject->createLink())
        , isConnected(connectLink(*link))
        , memory(link->memoryInterface())
        , log(isConnected ? std::make_unique<BatchLog>(*memory) : nullptr)
    {}

    bool startWatching(const QStringList& names, int watchPeriod = 20, int gatherPeriod = 200, int samplingPeriod = 0)
    {
        return isConnected &&
               Velk::startWatching(*subject, *memory, *log, names, watchPeriod, gatherPeriod, samplingPeriod);
    }

    std::unique_ptr<ContractSubject> subject;
    std::unique_ptr<RobotLink> link;
    bool isConnected;
    boost::shared_ptr<MemoryInterface> memory;
    std::unique_ptr<BatchLog> log;
};

void raise(ContractSubject& subject, const QString& name, const QVariant& value)
{
    if (name == aMicroEvent)
        subject.raiseMicroEvent(name, value);
    else if (name == anEvent)
        subject.raiseEvent(name, value);
    else
        subject.setData(name, value);
}

QJsonArray numbers(int first, int last)
{
    QJsonArray numbers;
    for (int i = first; i <= last; ++i)
        numbers.append(i);
    return numbers;
}

} // namespace

ContractWatcherTests::ContractWatcherTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractWatcherTests::watchedKeysAreDeliveredAndNoOthers()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 2);

    QVERIFY(session.startWatching({data}));

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
    QCOMPARE(session.log->values(data).first().toInt(), 1);
    QCOMPARE(session.log->names(), QStringList({data, probe}));
}

void ContractWatcherTests::nothingIsDeliveredUnlessTheWatcherRuns()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);

    session.memory->watchKey(data, 20);
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->count(), 0);

    QVERIFY(session.startWatching({data}));
    session.memory->stopWatcher();
    const int delivered = session.log->count();
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->count(), delivered);
}

void ContractWatcherTests::batchesComeAlsoWhenThereIsNothingToDeliver()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);

    session.memory->startWatcher(200, 0);

    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->names(), QStringList());
}

void ContractWatcherTests::batchesArriveOnTheModelsThread()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));

    CONTRACT_TRY_VERIFY(session.log->count() >= 3);
    QVERIFY(session.log->wasAlwaysOnThread(thread()));
}

void ContractWatcherTests::valuesKeepTheirType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("true") << QVariant(true) << QStringLiteral("true");
    QTest::newRow("false") << QVariant(false) << QStringLiteral("false");
    QTest::newRow("whole number") << QVariant(-42) << QStringLiteral("-42");
    QTest::newRow("fraction") << QVariant(0.1) << QStringLiteral("0.1");
    QTest::newRow("large number") << QVariant(1.5e300) << QStringLiteral("1.5e+300");
    QTest::newRow("text") << QVariant(QStringLiteral("grün; \"ja\"\n関節")) << QStringLiteral("grün; \"ja\"\n関節");
    QTest::newRow("empty text") << QVariant(QStringLiteral("")) << QString();
    QTest::newRow("text that looks like a number") << QVariant(QStringLiteral("1.50")) << QStringLiteral("1.50");
    QTest::newRow("list") << QVariant(QVariantList{1, QStringLiteral("a"), false}) << QString();
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("x"), 1.5}, {QStringLiteral("y"), QVariantList{}}})
                         << QString();
}

void ContractWatcherTests::valuesKeepTheirType()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    Session session(m_createSubject);
    session.subject->setData(data, value);
    session.subject->raiseEvent(anEvent, false);
    QVERIFY(session.startWatching({data, anEvent}));

    session.subject->raiseEvent(anEvent, value);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(anEvent) > 0);
    QCOMPARE(session.log->values(data).first(), QJsonValue::fromVariant(value));
    QCOMPARE(session.log->values(anEvent).first(), QJsonValue::fromVariant(value));
    QCOMPARE(session.log->lastValue(data).toString(), text);
    QCOMPARE(session.log->lastValue(anEvent).toString(), text);
}

void ContractWatcherTests::aSampleIsTheValueOfItsMoment()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);

    session.subject->setData(data, 2);

    CONTRACT_TRY_COMPARE(session.log->lastValue(data).toInt(), 2);
    const int delivered = session.log->sampleCount(data);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
    // Once the new value was seen, the old one does not come back.
    const QJsonArray values = session.log->values(data);
    QCOMPARE(values.first().toInt(), 1);
    for (int i = delivered; i < values.size(); ++i)
        QCOMPARE(values.at(i).toInt(), 2);
}

void ContractWatcherTests::aBatchHoldsSeveralSamplesOfAKey()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);

    QVERIFY(session.startWatching({data}, 20, 400));

    CONTRACT_TRY_VERIFY(session.log->largestBatchOf(data) >= 2);
}

void ContractWatcherTests::timeStampsAscendStrictly()
{
    Session session(m_createSubject);
    session.subject->setData(data, 0);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({data, anEvent}, 10));

    for (int i = 1; i <= 200; ++i) {
        session.subject->raiseEvent(anEvent, i);
        session.subject->setData(data, i);
    }

    CONTRACT_TRY_COMPARE(session.log->sampleCount(anEvent), 200);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 20);
    QCOMPARE(session.log->misplacedTimeStamp(), QString());
}

void ContractWatcherTests::timeStampsAscendAcrossStopAndStart()
{
    Session session(m_createSubject);
    session.subject->setData(data, 0);
    QVERIFY(session.startWatching({data}));
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);
    session.memory->stopWatcher();
    session.memory->unwatchAll();
    const int delivered = session.log->sampleCount(data);

    session.memory->watchKey(data, 20);
    session.memory->startWatcher(200, 0);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
    QCOMPARE(session.log->misplacedTimeStamp(), QString());
}

void ContractWatcherTests::withoutASamplingPeriodEachKeyHasItsOwn()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 1);

    session.memory->watchKey(data, 20);
    session.memory->watchKey(otherData, hoursMs);
    session.memory->startWatcher(200, 0);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 20);
    QCOMPARE(session.log->sampleCount(otherData), 0);
}

void ContractWatcherTests::aSamplingPeriodHoldsForEveryKey()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 1);

    session.memory->watchKey(data, 20);
    session.memory->watchKey(otherData, hoursMs);
    session.memory->startWatcher(200, 20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(otherData) >= 5);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractWatcherTests::aShorterSamplingPeriodTakesEffectAtOnce()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.memory->watchKey(data, 20);
    session.memory->startWatcher(200, hoursMs);
    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->sampleCount(data), 0);

    session.memory->setSamplingPeriod(20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractWatcherTests::aShorterGatherPeriodTakesEffectAtOnce()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.memory->watchKey(data, 20);
    session.memory->startWatcher(hoursMs, 0);
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->count(), 0);

    session.memory->setGatherPeriod(200);

    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QVERIFY(session.log->sampleCount(data) > 0);
}

void ContractWatcherTests::aShorterWatchPeriodTakesEffectAtOnce()
{
    Session session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.memory->watchKey(data, hoursMs);
    session.memory->startWatcher(200, 0);
    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->sampleCount(data), 0);

    session.memory->watchKey(data, 20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractWatcherTests::periodsMayChangeTogetherAndRepeatedly()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({data, anEvent}, 20, 200, 20));

    // More often than either period, for a while: neither sampling nor delivering may be put off for ever by it.
    QTimer changes;
    bool isSlower = false;
    connect(&changes, &QTimer::timeout, this, [&session, &isSlower] {
        isSlower = !isSlower;
        session.memory->setGatherPeriod(isSlower ? 400 : 200);
        session.memory->setSamplingPeriod(isSlower ? 40 : 30);
    });
    changes.start(10);
    session.subject->raiseEvent(anEvent, 1);
    const int delivered = session.log->sampleCount(data);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
    CONTRACT_TRY_COMPARE(session.log->values(anEvent), QJsonArray{1});
    QCOMPARE(session.log->misplacedTimeStamp(), QString());
}

void ContractWatcherTests::startingARunningWatcherDeliversNothingTwice()
{
    Session session(m_createSubject);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({anEvent}));

    session.memory->startWatcher(200, 0);
    for (int i = 1; i <= 10; ++i)
        session.subject->raiseEvent(anEvent, i);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(anEvent) >= 10);
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->values(anEvent), numbers(1, 10));
}

void ContractWatcherTests::everyOccurrenceIsDeliveredOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("event") << anEvent;
    QTest::newRow("micro-event") << aMicroEvent;
}

void ContractWatcherTests::everyOccurrenceIsDeliveredOnce()
{
    QFETCH(QString, name);
    Session session(m_createSubject);
    raise(*session.subject, name, 0);
    // A watch period of hours: occurrences do not depend on sampling.
    session.memory->watchKey(name, hoursMs);
    QVERIFY(session.startWatching({}));
    const int batchesBefore = session.log->count();

    for (int i = 1; i <= 50; ++i)
        raise(*session.subject, name, i);
    CONTRACT_TRY_COMPARE(session.log->sampleCount(name), 50);
    for (int i = 51; i <= 100; ++i)
        raise(*session.subject, name, i);
    CONTRACT_TRY_COMPARE(session.log->sampleCount(name), 100);
    QVERIFY(waitForSomeBatches(*session.subject));

    QCOMPARE(session.log->values(name), numbers(1, 100));
    QVERIFY(session.log->largestBatchOf(name) >= 2);
    QVERIFY(session.log->count() > batchesBefore);
    QCOMPARE(session.log->misplacedTimeStamp(), QString());
}

void ContractWatcherTests::anOccurrenceIsNotSampled()
{
    Session session(m_createSubject);
    session.subject->raiseEvent(anEvent, 0);
    session.subject->raiseMicroEvent(aMicroEvent, 0);
    QVERIFY(session.startWatching({anEvent, aMicroEvent}, 20, 200, 20));

    session.subject->raiseEvent(anEvent, 1);
    session.subject->raiseMicroEvent(aMicroEvent, 2);
    CONTRACT_TRY_COMPARE(session.log->values(anEvent), QJsonArray{1});
    CONTRACT_TRY_COMPARE(session.log->values(aMicroEvent), QJsonArray{2});
    QVERIFY(waitForSomeBatches(*session.subject));

    QCOMPARE(session.log->values(anEvent), QJsonArray{1});
    QCOMPARE(session.log->values(aMicroEvent), QJsonArray{2});
}

void ContractWatcherTests::whatWasRaisedBeforeTheKeyWasWatchedIsNotDelivered()
{
    Session session(m_createSubject);
    session.subject->raiseEvent(anEvent, 1);
    QVERIFY(session.startWatching({}));
    session.subject->raiseEvent(anEvent, 2);

    QVERIFY(session.startWatching({anEvent}));
    QVERIFY(waitForSomeBatches(*session.subject));
    session.subject->raiseEvent(anEvent, 3);

    CONTRACT_TRY_COMPARE(session.log->sampleCount(anEvent), 1);
    QCOMPARE(session.log->values(anEvent), QJsonArray{3});
}

void ContractWatcherTests::aKeyThatDoesNotExistYetDeliversFromThenOn_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("data") << data;
    QTest::newRow("event") << anEvent;
    QTest::newRow("micro-event") << aMicroEvent;
}

void ContractWatcherTests::aKeyThatDoesNotExistYetDeliversFromThenOn()
{
    QFETCH(QString, name);
    Session session(m_createSubject);
    QVERIFY(session.startWatching({name}));
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->sampleCount(name), 0);

    raise(*session.subject, name, 1);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(name) > 0);
    QCOMPARE(session.log->values(name).first().toInt(), 1);
}

void ContractWatcherTests::aRemovedKeyDeliversNothingUntilItIsBack()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);

    session.subject->removeKey(data);
    QVERIFY(waitForSomeBatches(*session.subject));
    const int delivered = session.log->sampleCount(data);
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->sampleCount(data), delivered);

    session.subject->setData(data, 2);
    CONTRACT_TRY_COMPARE(session.log->lastValue(data).toInt(), 2);
    QCOMPARE(session.log->misplacedTimeStamp(), QString());
}

void ContractWatcherTests::anUnwatchedKeyIsNotDelivered()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({data, anEvent}));
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);

    session.memory->unwatchKey(data);
    session.memory->unwatchKey(anEvent);
    session.subject->raiseEvent(anEvent, 1);
    const int delivered = session.log->sampleCount(data);
    const int probes = session.log->sampleCount(probe);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(probe) > probes + 20);

    QCOMPARE(session.log->sampleCount(data), delivered);
    QCOMPARE(session.log->sampleCount(anEvent), 0);
}

void ContractWatcherTests::unwatchingAllLeavesNothingToDeliver()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({data, anEvent}));
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > 0);

    session.memory->unwatchAll();
    session.subject->raiseEvent(anEvent, 1);
    const int delivered = session.log->sampleCount(data);
    const int probes = session.log->sampleCount(probe);
    const int batches = session.log->count();
    CONTRACT_TRY_VERIFY(session.log->count() >= batches + 3);

    QCOMPARE(session.log->sampleCount(data), delivered);
    QCOMPARE(session.log->sampleCount(probe), probes);
    QCOMPARE(session.log->sampleCount(anEvent), 0);
}

void ContractWatcherTests::unwatchingWhatIsNotWatchedDoesNothing()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));

    session.memory->unwatchKey(otherData);
    session.memory->unwatchKey(QStringLiteral("Contract/Nowhere"));

    const int delivered = session.log->sampleCount(data);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
}

void ContractWatcherTests::aKeyCanBeWatchedAgain()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({data, anEvent}));
    session.memory->unwatchAll();

    const int probes = session.log->sampleCount(probe);
    session.memory->watchKey(data, 20);
    session.memory->watchKey(anEvent, 20);
    session.memory->watchKey(probe, 20);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(probe) > probes + 5);
    session.subject->raiseEvent(anEvent, 1);

    CONTRACT_TRY_COMPARE(session.log->values(anEvent), QJsonArray{1});
    const int delivered = session.log->sampleCount(data);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
}

void ContractWatcherTests::blockedSignalsAreNotDelivered()
{
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));

    session.memory->blockSignals(true);
    const int batches = session.log->count();
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->count(), batches);

    session.memory->blockSignals(false);
    CONTRACT_TRY_VERIFY(session.log->count() > batches);
}

void ContractWatcherTests::aSlotMayActOnItsSource_data()
{
    QTest::addColumn<QString>("action");
    for (const char* action : {"stop", "restart", "unwatch", "unwatch all", "watch", "event loop", "close", "destroy"})
        QTest::newRow(action) << QString::fromLatin1(action);
}

void ContractWatcherTests::aSlotMayActOnItsSource()
{
    QFETCH(QString, action);
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 1);
    QVERIFY(session.startWatching({data}));
    int calls = 0;
    QMap<QString, std::function<void()>> actions;
    MemoryInterface* memory = session.memory.get();
    actions[QStringLiteral("stop")] = [memory] { memory->stopWatcher(); };
    actions[QStringLiteral("restart")] = [memory] {
        memory->stopWatcher();
        memory->startWatcher(200, 20);
    };
    actions[QStringLiteral("unwatch")] = [memory] { memory->unwatchKey(data); };
    actions[QStringLiteral("unwatch all")] = [memory] { memory->unwatchAll(); };
    actions[QStringLiteral("watch")] = [memory] { memory->watchKey(otherData, 10); };
    actions[QStringLiteral("event loop")] = [&session] {
        const int batches = session.log->count();
        QEventLoop loop;
        QTimer poll;
        connect(&poll, &QTimer::timeout, &loop, [&loop, &session, batches] {
            if (session.log->count() > batches)
                loop.quit();
        });
        poll.start(10);
        loop.exec();
    };
    actions[QStringLiteral("close")] = [&session] { session.link->close(); };
    actions[QStringLiteral("destroy")] = [&session] { session.link.reset(); };
    connect(memory, &MemoryInterface::dataGathered, this, [&calls, &actions, &action] {
        if (++calls == 1)
            actions.value(action)();
    });

    // The test holds the service no more than an application does: only the link keeps it.
    session.memory.reset();

    CONTRACT_TRY_VERIFY(calls > 0);
    QVERIFY(waitForSomeBatches(*session.subject));
    if (action == QLatin1String("stop") || action == QLatin1String("close") || action == QLatin1String("destroy"))
        QCOMPARE(calls, 1);
    else
        QVERIFY(calls > 1);
}

void ContractWatcherTests::aServiceWithoutConnectionDoesNothing_data()
{
    QTest::addColumn<QString>("end");
    QTest::newRow("closed") << QStringLiteral("close");
    QTest::newRow("lost") << QStringLiteral("lose");
    QTest::newRow("link destroyed") << QStringLiteral("destroy");
}

void ContractWatcherTests::aServiceWithoutConnectionDoesNothing()
{
    QFETCH(QString, end);
    Session session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));
    if (end == QLatin1String("close")) {
        session.link->close();
    } else if (end == QLatin1String("lose")) {
        session.subject->loseConnection();
        CONTRACT_TRY_COMPARE(session.link->state(), RobotLink::Lost);
        session.subject->restoreConnection();
    } else {
        session.link.reset();
    }
    const int batches = session.log->count();

    session.memory->watchKey(data, 20);
    session.memory->setGatherPeriod(200);
    session.memory->setSamplingPeriod(20);
    session.memory->startWatcher(200, 20);
    session.memory->unwatchKey(data);
    QVERIFY(waitForSomeBatches(*session.subject));
    session.memory->unwatchAll();
    session.memory->stopWatcher();

    QCOMPARE(session.log->count(), batches);
}

void ContractWatcherTests::aCompleteDeliveryLosesNothing()
{
    Session session(m_createSubject);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({anEvent}));
    for (int i = 1; i <= 20; ++i)
        session.subject->raiseEvent(anEvent, i);
    CONTRACT_TRY_COMPARE(session.log->sampleCount(anEvent), 20);

    QCOMPARE(session.link->losses(anEvent), SampleLosses());
    QCOMPARE(session.link->losses().dropped, 0);
    QCOMPARE(session.link->losses().trimmed, 0);
}

} // namespace Velk
