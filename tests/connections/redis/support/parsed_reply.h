// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_PARSED_REPLY_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_PARSED_REPLY_H

#include <connections/redis/client/redis_reply.h>

#include <QByteArray>
#include <QByteArrayList>

#include <memory>

struct redisReply;

/// A reply, parsed from bytes of the protocol. Bytes that are no complete reply end the test program.
class ParsedReply
{
public:
    explicit ParsedReply(const QByteArray& bytes);

    Velk::RedisReply reply() const { return Velk::RedisReply(m_reply.get()); }

private:
    std::shared_ptr<redisReply> m_reply;
};

/// "$3\r\nabc\r\n": the protocol's form of a string.
QByteArray bulk(const QByteArray& text);
/// The protocol's form of a list of elements, which are in the protocol's form.
QByteArray list(const QByteArrayList& elements);

#endif
