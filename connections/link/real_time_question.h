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

/// The answer to MemoryInterface::isRealTimeSupported() of one connection: the same for all askers, before it is
/// known and after.
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
    /// Emitted at the first question without an answer. The connection then measures or looks it up.
    void asked();
    /// The answer was queued to an asker. Emitted once, after it was queued to all askers so far. A slot may delete
    /// this object.
    void answered(bool isSupported);

private:
    struct Asker
    {
        QPointer<QObject> receiver;
        QByteArray member;
    };

    bool send(const Asker& asker);
    void report();

    std::optional<bool> m_answer;
    std::vector<Asker> m_askers;
    bool m_isReported = false;
};

} // namespace Velk

#endif
