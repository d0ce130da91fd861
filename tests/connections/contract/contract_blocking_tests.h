// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_BLOCKING_TESTS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_BLOCKING_TESTS_H

#include "contract_subject.h"

#include <QObject>

namespace Velk {

/// No call of a link, of its memory service or of a writer stalls the event loop, however slow the robot is.
class ContractBlockingTests : public QObject
{
    Q_OBJECT

public:
    explicit ContractBlockingTests(ContractSubjectFactory createSubject);

private Q_SLOTS:
    void noCallWaitsOrRunsTheEventLoop_data();
    void noCallWaitsOrRunsTheEventLoop();
    void aWaitingCallIsFound();

private:
    const ContractSubjectFactory m_createSubject;
};

} // namespace Velk

#endif
