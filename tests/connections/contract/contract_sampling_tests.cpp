// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_sampling_tests.h"

#include "contract_session.h"

#include <QTest>
#include <QTimer>

#include <utility>

namespace Velk {

ContractSamplingTests::ContractSamplingTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractSamplingTests::valuesKeepTheirType_data()
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

void ContractSamplingTests::valuesKeepTheirType()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::aSampleIsTheValueOfItsMoment()
{
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::aBatchHoldsSeveralSamplesOfAKey()
{
    ContractSession session(m_createSubject);
    session.subject->setData(data, 1);

    QVERIFY(session.startWatching({data}, 20, 400));

    CONTRACT_TRY_VERIFY(session.log->largestBatchOf(data) >= 2);
}

void ContractSamplingTests::timeStampsAscendStrictly()
{
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::timeStampsAscendAcrossStopAndStart()
{
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::withoutASamplingPeriodEachKeyHasItsOwn()
{
    ContractSession session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 1);

    session.memory->watchKey(data, 20);
    session.memory->watchKey(otherData, hoursMs);
    session.memory->startWatcher(200, 0);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 20);
    QCOMPARE(session.log->sampleCount(otherData), 0);
}

void ContractSamplingTests::aSamplingPeriodHoldsForEveryKey()
{
    ContractSession session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.subject->setData(otherData, 1);

    session.memory->watchKey(data, 20);
    session.memory->watchKey(otherData, hoursMs);
    session.memory->startWatcher(200, 20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(otherData) >= 5);
    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractSamplingTests::aShorterSamplingPeriodTakesEffectAtOnce()
{
    ContractSession session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.memory->watchKey(data, 20);
    session.memory->startWatcher(200, hoursMs);
    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->sampleCount(data), 0);

    session.memory->setSamplingPeriod(20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractSamplingTests::aShorterGatherPeriodTakesEffectAtOnce()
{
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::aShorterWatchPeriodTakesEffectAtOnce()
{
    ContractSession session(m_createSubject);
    QVERIFY(session.isConnected);
    session.subject->setData(data, 1);
    session.memory->watchKey(data, hoursMs);
    session.memory->startWatcher(200, 0);
    CONTRACT_TRY_VERIFY(session.log->count() >= 2);
    QCOMPARE(session.log->sampleCount(data), 0);

    session.memory->watchKey(data, 20);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(data) >= 5);
}

void ContractSamplingTests::periodsMayChangeTogetherAndRepeatedly()
{
    ContractSession session(m_createSubject);
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

void ContractSamplingTests::startingARunningWatcherDeliversNothingTwice()
{
    ContractSession session(m_createSubject);
    session.subject->raiseEvent(anEvent, 0);
    QVERIFY(session.startWatching({anEvent}));

    session.memory->startWatcher(200, 0);
    for (int i = 1; i <= 10; ++i)
        session.subject->raiseEvent(anEvent, i);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(anEvent) >= 10);
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->values(anEvent), numbers(1, 10));
}

} // namespace Velk
