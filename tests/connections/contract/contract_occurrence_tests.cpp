// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_occurrence_tests.h"

#include "contract_session.h"

#include <QTest>

#include <utility>

namespace Velk {

ContractOccurrenceTests::ContractOccurrenceTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractOccurrenceTests::everyOccurrenceIsDeliveredOnce_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("event") << anEvent;
    QTest::newRow("micro-event") << aMicroEvent;
}

void ContractOccurrenceTests::everyOccurrenceIsDeliveredOnce()
{
    QFETCH(QString, name);
    ContractSession session(m_createSubject);
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

void ContractOccurrenceTests::anOccurrenceIsNotSampled()
{
    ContractSession session(m_createSubject);
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

void ContractOccurrenceTests::whatWasRaisedBeforeTheKeyWasWatchedIsNotDelivered()
{
    ContractSession session(m_createSubject);
    session.subject->raiseEvent(anEvent, 1);
    QVERIFY(session.startWatching({}));
    session.subject->raiseEvent(anEvent, 2);

    QVERIFY(session.startWatching({anEvent}));
    QVERIFY(waitForSomeBatches(*session.subject));
    session.subject->raiseEvent(anEvent, 3);

    CONTRACT_TRY_COMPARE(session.log->sampleCount(anEvent), 1);
    QCOMPARE(session.log->values(anEvent), QJsonArray{3});
}

void ContractOccurrenceTests::aKeyThatDoesNotExistYetDeliversFromThenOn_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("data") << data;
    QTest::newRow("event") << anEvent;
    QTest::newRow("micro-event") << aMicroEvent;
}

void ContractOccurrenceTests::aKeyThatDoesNotExistYetDeliversFromThenOn()
{
    QFETCH(QString, name);
    ContractSession session(m_createSubject);
    QVERIFY(session.startWatching({name}));
    QVERIFY(waitForSomeBatches(*session.subject));
    QCOMPARE(session.log->sampleCount(name), 0);

    raise(*session.subject, name, 1);

    CONTRACT_TRY_VERIFY(session.log->sampleCount(name) > 0);
    QCOMPARE(session.log->values(name).first().toInt(), 1);
}

void ContractOccurrenceTests::aRemovedKeyDeliversNothingUntilItIsBack()
{
    ContractSession session(m_createSubject);
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

} // namespace Velk
