// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_REAL_TIME_QUESTION_H
#define CONNECTIONS_LINK_REAL_TIME_QUESTION_H

#include <connections/link/link_export.h>

#include <QByteArray>
#include <QObject>
#include <QPointer>

#include <optional>
#include <vector>

namespace Velk {

/// The answer to MemoryInterface::isRealTimeSupported() of one connection: the same for everyone who asks, whether they
/// ask before it is known or after.
class LINK_EXPORT RealTimeQuestion : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeQuestion(QObject* parent = nullptr);

    /// Answers from the receiver's event loop, in its thread: soon, or when the answer is known. Nothing for a receiver
    /// or a member that is null.
    void ask(QObject* receiver, const char* member);
    /// The first answer counts.
    void answer(bool isSupported);
    std::optional<bool> answer() const { return m_answer; }

Q_SIGNALS:
    /// Someone asks, and there is no answer yet. Once: for the connection to find out.
    void asked();
    /// An answer was queued to the one who asked.
    void answered(bool isSupported);

private:
    struct Asker
    {
        QPointer<QObject> receiver;
        QByteArray member;
    };

    void send(const Asker& asker);

    std::optional<bool> m_answer;
    std::vector<Asker> m_askers;
};

} // namespace Velk

#endif
