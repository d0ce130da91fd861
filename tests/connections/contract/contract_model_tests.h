// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_MODEL_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_MODEL_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// The core's models on a connection, from end to end.
class ContractModelTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractModelTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void theCatalogueKnowsTheNatures();
    void theCatalogueIsReadyAlsoWhenTheConnectionGoesAwayMeanwhile_data();
    void theCatalogueIsReadyAlsoWhenTheConnectionGoesAwayMeanwhile();
    void displayedKeysGetTheirValues();
    void theSamplingLimitIsTheRobots();
    void aNewSamplingPeriodIsInForceAtOnce();
    void aRecordingHoldsEverySample();
    void aLossEndsTheRecordingAndKeepsTheKeys();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
