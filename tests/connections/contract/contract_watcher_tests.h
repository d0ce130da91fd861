// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_WATCHER_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_WATCHER_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// What a memory service owes to a watcher: batches while it runs, of the keys that are watched, and safety in its
/// slots.
class ContractWatcherTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractWatcherTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void watchedKeysAreDeliveredAndNoOthers();
    void nothingIsDeliveredUnlessTheWatcherRuns();
    void batchesComeAlsoWhenThereIsNothingToDeliver();
    void batchesArriveOnTheModelsThread();
    void anUnwatchedKeyIsNotDelivered();
    void unwatchingAllLeavesNothingToDeliver();
    void unwatchingWhatIsNotWatchedDoesNothing();
    void aKeyCanBeWatchedAgain();
    void blockedSignalsAreNotDelivered();
    void aSlotMayActOnItsSource_data();
    void aSlotMayActOnItsSource();
    void aServiceWithoutConnectionDoesNothing_data();
    void aServiceWithoutConnectionDoesNothing();
    void aCompleteDeliveryLosesNothing();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
