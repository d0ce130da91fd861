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
        send(asker);
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
    for (const Asker& asker : std::exchange(m_askers, {}))
        send(asker);
}

void RealTimeQuestion::send(const Asker& asker)
{
    if (asker.receiver)
        QMetaObject::invokeMethod(asker.receiver, asker.member.constData(), Qt::QueuedConnection,
                                  Q_ARG(bool, *m_answer));
    emit answered(*m_answer);
}

} // namespace Velk
