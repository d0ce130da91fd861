// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_reply.h"

#include <hiredis/hiredis.h>

namespace Velk {

bool RedisReply::isNull() const
{
    return !m_reply || m_reply->type == REDIS_REPLY_NIL;
}

bool RedisReply::isError() const
{
    return m_reply && m_reply->type == REDIS_REPLY_ERROR;
}

bool RedisReply::isArray() const
{
    return m_reply && m_reply->type == REDIS_REPLY_ARRAY;
}

bool RedisReply::isText() const
{
    return m_reply && (m_reply->type == REDIS_REPLY_STRING || m_reply->type == REDIS_REPLY_STATUS);
}

QByteArrayView RedisReply::view() const
{
    if (!isText() && !isError())
        return QByteArrayView();
    return QByteArrayView(m_reply->str, qsizetype(m_reply->len));
}

qint64 RedisReply::integer() const
{
    if (m_reply && m_reply->type == REDIS_REPLY_INTEGER)
        return m_reply->integer;
    return isText() ? bytes().toLongLong() : 0;
}

qsizetype RedisReply::size() const
{
    return isArray() ? qsizetype(m_reply->elements) : 0;
}

RedisReply RedisReply::at(qsizetype index) const
{
    return index >= 0 && index < size() ? RedisReply(m_reply->element[index]) : RedisReply();
}

RedisReply RedisReply::field(QByteArrayView field) const
{
    for (qsizetype i = 0; i + 1 < size(); i += 2) {
        if (at(i).view() == field)
            return at(i + 1);
    }
    return RedisReply();
}

} // namespace Velk
