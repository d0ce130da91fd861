// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_LIST_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_LIST_TESTS_H

#include "contract_subject.h"

#include <QObject>

#include <atomic>

namespace Velk {

/// What a memory service owes when it is asked for names, and for real-time sampling.
class ContractListTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractListTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void eachListNamesTheKeysOfItsKind();
    void aNameIsListedOnce();
    void aRemovedKeyIsNotListed();
    void aKeyThatComesLaterIsListedByTheNextFetch();
    void namesArriveAsTheyAreSpelt_data();
    void namesArriveAsTheyAreSpelt();
    void aListIsAStartedOperationWithOneResult();
    void thousandsOfNamesAreListed();
    void aListEndsWithOneResultWhateverHappens_data();
    void aListEndsWithOneResultWhateverHappens();
    void aServiceWithoutConnectionGivesEmptyLists();

    void theRealTimeAnswerComesFromTheEventLoopOnce();
    void theRealTimeAnswerComesOnTheReceiversThread();
    void aReceiverMayBeGoneBeforeTheRealTimeAnswer();
    void theRealTimeAnswerMayOutliveTheConnection();

private:
    const ContractSubjectFactory m_createSubject;
};

/// Asks whether real-time sampling is supported.
class RealTimeAsker : public QObject
{
    Q_OBJECT

public:
    int answers = 0;
    bool isSupported = false;
    std::atomic<const QThread*> thread = nullptr;

public Q_SLOTS:
    void gotAnswer(bool supported);
};

} // namespace Velk

#endif
