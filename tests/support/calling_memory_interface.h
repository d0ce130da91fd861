// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_CALLING_MEMORY_INTERFACE_H
#define TESTS_SUPPORT_CALLING_MEMORY_INTERFACE_H

#include "fake_robot.h"

#include <functional>

namespace Velk {

/// A memory service that calls the test back inside some of its operations, as a service may that is a part of the
/// application.
class CallingMemoryInterface : public FakeMemoryInterface
{
public:
    /// Receives the name of the operation, and for isRealTimeSupported() the object that asked.
    using Callback = std::function<void(const QString& operation, QObject* receiver)>;

    CallingMemoryInterface(QStringList* log, const Callback& callback)
        : FakeMemoryInterface(log)
        , m_callback(callback)
    {}

    void watchKey(const QString& name, int period) override
    {
        FakeMemoryInterface::watchKey(name, period);
        m_callback(QStringLiteral("watchKey"), nullptr);
    }
    void unwatchKey(const QString& name) override
    {
        FakeMemoryInterface::unwatchKey(name);
        m_callback(QStringLiteral("unwatchKey"), nullptr);
    }
    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        FakeMemoryInterface::isRealTimeSupported(receiver, member);
        m_callback(QStringLiteral("isRealTimeSupported"), receiver);
    }

private:
    Callback m_callback;
};

} // namespace Velk

#endif
