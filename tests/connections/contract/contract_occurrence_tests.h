// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_OCCURRENCE_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_OCCURRENCE_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// What a memory service owes for events and micro-events, and for keys that come and go.
class ContractOccurrenceTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractOccurrenceTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void everyOccurrenceIsDeliveredOnce_data();
    void everyOccurrenceIsDeliveredOnce();
    void anOccurrenceIsNotSampled();
    void whatWasRaisedBeforeTheKeyWasWatchedIsNotDelivered();
    void aKeyThatDoesNotExistYetDeliversFromThenOn_data();
    void aKeyThatDoesNotExistYetDeliversFromThenOn();
    void aRemovedKeyDeliversNothingUntilItIsBack();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
