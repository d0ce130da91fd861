// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_SAMPLING_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_SAMPLING_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// What a memory service owes for samples: their values, their time stamps, and the periods at which they are taken.
class ContractSamplingTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractSamplingTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void valuesKeepTheirType_data();
    void valuesKeepTheirType();
    void aSampleIsTheValueOfItsMoment();
    void aBatchHoldsSeveralSamplesOfAKey();
    void timeStampsAscendStrictly();
    void timeStampsAscendAcrossStopAndStart();
    void withoutASamplingPeriodEachKeyHasItsOwn();
    void aSamplingPeriodHoldsForEveryKey();
    void aShorterSamplingPeriodTakesEffectAtOnce();
    void aShorterGatherPeriodTakesEffectAtOnce();
    void aShorterWatchPeriodTakesEffectAtOnce();
    void periodsMayChangeTogetherAndRepeatedly();
    void startingARunningWatcherDeliversNothingTwice();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
