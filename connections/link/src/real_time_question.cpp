// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/real_time_question.h>

#include <QMetaObject>

#include <utility>

namespace Velk {

RealTimeQuestion::RealTimeQuestion(QObject* parent)
    : QObject(parent)
{}

void RealTimeQuestion::ask(QObject* receiver, const char* member)
{
    if (!receiver || !member)
        return;
    const Asker asker{receiver, member};
    if (m_answer) {
        if (send(asker))
            report();
        return;
    }
    m_askers.push_back(asker);
    if (m_askers.size() == 1)
        emit asked();
}

void RealTimeQuestion::answer(bool isSupported)
{
    if (m_answer)
        return;
    m_answer = isSupported;
    bool isSent = false;
    for (const Asker& asker : std::exchange(m_askers, {}))
        isSent = send(asker) || isSent;
    if (isSent)
        report();
}

// False when the asker is gone.
bool RealTimeQuestion::send(const Asker& asker)
{
    if (!asker.receiver)
        return false;
    QMetaObject::invokeMethod(asker.receiver, asker.member.constData(), Qt::QueuedConnection, Q_ARG(bool, *m_answer));
    return true;
}

void RealTimeQuestion::report()
{
    if (!std::exchange(m_isReported, true))
        emit answered(*m_answer);
}

} // namespace Velk
