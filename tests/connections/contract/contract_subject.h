// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_SUBJECT_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_SUBJECT_H

#include <connections/link/robot_link.h>
#include <connections/link/robot_writer.h>

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

namespace Velk {

/// One robot under the test's hand, and the links to it that an implementation of the contract makes. Every test gets a
/// fresh one.
class ContractSubject
{
public:
    virtual ~ContractSubject() = default;

    /// A closed link to this robot. A test may make several, and destroy them in any order, before the subject.
    virtual std::unique_ptr<RobotLink> createLink() = 0;
    /// A closed writer to this robot; null where the connection offers none.
    virtual std::unique_ptr<RobotWriter> createWriter() { return nullptr; }

    /// As the robot's own code does it: what is written is in the robot's memory when the call returns, whether a link
    /// is connected or not. The values are those that JSON knows.
    virtual void setData(const QString& name, const QVariant& value) = 0;
    virtual void raiseEvent(const QString& name, const QVariant& value) = 0;
    virtual void raiseMicroEvent(const QString& name, const QVariant& value) = 0;
    virtual void removeKey(const QString& name) = 0;
    /// What the robot answers when it is asked for real-time sampling.
    virtual bool isRealTimeSupported() const = 0;

    /// Breaks the connections of all links without closing them, and lets them be made again.
    virtual void loseConnection() = 0;
    virtual void restoreConnection() = 0;
};

using ContractSubjectFactory = std::function<std::unique_ptr<ContractSubject>()>;

/// Runs every test of the contract on subjects of the factory; for the main() of a test program, whose arguments it
/// takes as QTest::qExec() does. Returns the number of failures.
int runContractSuite(int argc, char** argv, const ContractSubjectFactory& createSubject);

} // namespace Velk

#endif
