// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "parsed_reply.h"

#include <hiredis/hiredis.h>

ParsedReply::ParsedReply(const QByteArray& bytes)
{
    const std::unique_ptr<redisReader, void (*)(redisReader*)> reader(redisReaderCreate(), redisReaderFree);
    redisReaderFeed(reader.get(), bytes.constData(), std::size_t(bytes.size()));
    void* reply = nullptr;
    if (redisReaderGetReply(reader.get(), &reply) != REDIS_OK || !reply)
        qFatal("no reply: %s", bytes.toPercentEncoding(" *$:+-").constData());
    m_reply.reset(static_cast<redisReply*>(reply), freeReplyObject);
}

QByteArray bulk(const QByteArray& text)
{
    return '$' + QByteArray::number(text.size()) + "\r\n" + text + "\r\n";
}

QByteArray list(const QByteArrayList& elements)
{
    return '*' + QByteArray::number(elements.size()) + "\r\n" + elements.join();
}
