// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_CONNECTION_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_CONNECTION_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// What a link owes: its states, its signals and their order, and when there is a memory service.
class ContractConnectionTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractConnectionTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void aNewLinkIsDisconnectedAndWithoutAMemoryService();
    void openingConnectsFromTheEventLoop();
    void theStateIsNewWhenASignalTellsIt_data();
    void theStateIsNewWhenASignalTellsIt();
    void openingAnOpenLinkDoesNothing();
    void closingEndsTheConnectionAtOnce();
    void closingAClosedLinkDoesNothing();
    void closingBeforeTheConnectionStandsTellsNoDisconnection();
    void aLostConnectionIsToldWithWhatToDo();
    void aLostConnectionComesBackByItself();
    void aLinkThatWasClosedWhileLostStaysClosed();
    void aClosedLinkCanBeOpenedAgain();
    void everyConnectionHasAWorkingMemoryService();
    void aSlotMayEndTheConnection_data();
    void aSlotMayEndTheConnection();
    void losingNothingIsNoLoss();
    void linksAreIndependentOfEachOther();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
