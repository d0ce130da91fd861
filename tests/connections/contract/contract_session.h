// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_SESSION_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_SESSION_H

#include "contract_helpers.h"

#include <robotconnection/memory_interface.h>

#include <QString>

#include <memory>

namespace Velk {

constexpr int hoursMs = 9999990;

inline const QString data = QStringLiteral("Contract/Data");
inline const QString otherData = QStringLiteral("Contract/Other");
inline const QString anEvent = QStringLiteral("Contract/Event");
inline const QString aMicroEvent = QStringLiteral("Contract/MicroEvent");

/// A subject with a connected link and its memory service.
struct ContractSession
{
    explicit ContractSession(const ContractSubjectFactory& createSubject)
        : subject(createSubject())
        , link(subject->createLink())
        , isConnected(connectLink(*link))
        , memory(link->memoryInterface())
        , log(isConnected ? std::make_unique<BatchLog>(*memory) : nullptr)
    {}

    bool startWatching(const QStringList& names, int watchPeriod = 20, int gatherPeriod = 200, int samplingPeriod = 0)
    {
        return isConnected &&
               Velk::startWatching(*subject, *memory, *log, names, watchPeriod, gatherPeriod, samplingPeriod);
    }

    std::unique_ptr<ContractSubject> subject;
    std::unique_ptr<RobotLink> link;
    bool isConnected;
    boost::shared_ptr<MemoryInterface> memory;
    std::unique_ptr<BatchLog> log;
};

inline void raise(ContractSubject& subject, const QString& name, const QVariant& value)
{
    if (name == aMicroEvent)
        subject.raiseMicroEvent(name, value);
    else if (name == anEvent)
        subject.raiseEvent(name, value);
    else
        subject.setData(name, value);
}

inline QJsonArray numbers(int first, int last)
{
    QJsonArray numbers;
    for (int i = first; i <= last; ++i)
        numbers.append(i);
    return numbers;
}

} // namespace Velk

#endif
