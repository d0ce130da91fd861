// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_inquiry.h"

#include <QPointer>

#include <utility>

namespace Velk {

RedisInquiry::RedisInquiry(RedisSession* session, RedisSession::Permissions permissions)
    : m_session(session)
    , m_permissions(permissions)
{
    connect(session, &RedisSession::replaced, this, &RedisInquiry::onReplaced);
}

void RedisInquiry::ask(const QByteArrayList& command, RedisSocket::Callback callback)
{
    askFormatted(RedisSocket::formatted(command), std::move(callback));
}

void RedisInquiry::askFormatted(const QByteArray& command, RedisSocket::Callback callback)
{
    ++m_due;
    m_session->sendFormatted(
        this, command,
        [this, generation = m_generation, callback = std::move(callback)](const RedisReply& reply) {
            if (generation != m_generation)
                return;
            const QPointer<RedisInquiry> self(this);
            callback(reply);
            if (self && generation == m_generation && --m_due == 0)
                emit finished();
        },
        m_permissions);
}

void RedisInquiry::cancel()
{
    ++m_generation;
    m_due = 0;
}

void RedisInquiry::onReplaced()
{
    const int due = m_due;
    cancel();
    if (due > 0)
        emit interrupted(due);
}

} // namespace Velk
