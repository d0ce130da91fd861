// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_watcher_tests.h"

#include "contract_session.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <utility>

namespace Velk {

ContractWatcherTests::ContractWatcherTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractWatcherTests::watchedKeysAreDeliveredAndNoOthers()
{
    ContractSession session(m_createSubject);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 2);

    QVERIFY(session.startWatching({data}));

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
    QCOMPARE(session.log->values(data).first().toInt(), 1);
    QCOMPARE(session.log->names(), QStringList({data, probe}));
}

void ContractWatcherTests::nothingIsDeliveredUnlessTheWatcherRuns()
{
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
    QVERIFY(session.isConnected);

    session.memory->startWatcher(200, 0);

    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->names(), QStringList());
}

void ContractWatcherTests::batchesArriveOnTheModelsThread()
{
    ContractSession session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));

    CONTRACT_TRY_VERIFY(session.log->count() >= 3);
    QVERIFY(session.log->wasAlwaysOnThread(thread()));
}

void ContractWatcherTests::anUnwatchedKeyIsNotDelivered()
{
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
    session.subject->setData(data, 1);
    QVERIFY(session.startWatching({data}));

    session.memory->unwatchKey(otherData);
    session.memory->unwatchKey(QStringLiteral("Contract/Nowhere"));

    const int delivered = session.log->sampleCount(data);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) > delivered + 5);
}

void ContractWatcherTests::aKeyCanBeWatchedAgain()
{
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
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
    ContractSession session(m_createSubject);
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
