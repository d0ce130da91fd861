// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_test_client.h"

#include <hiredis/hiredis.h>

#include <sys/time.h>
#include <vector>

namespace {

constexpr timeval replyTimeout = {30, 0};

struct ReplyDeleter
{
    void operator()(redisReply* reply) const { freeReplyObject(reply); }
};
using Reply = std::unique_ptr<redisReply, ReplyDeleter>;

QByteArray text(const redisReply* reply)
{
    QByteArrayList parts;
    switch (reply->type) {
    case REDIS_REPLY_NIL:
        return "(nil)";
    case REDIS_REPLY_INTEGER:
        return QByteArray::number(reply->integer);
    case REDIS_REPLY_ERROR:
        return "(error) " + QByteArray(reply->str, int(reply->len));
    case REDIS_REPLY_ARRAY:
        for (std::size_t i = 0; i < reply->elements; ++i)
            parts << text(reply->element[i]);
        return parts.join('\n');
    default:
        return QByteArray(reply->str, int(reply->len));
    }
}

Reply nextReply(redisContext* context)
{
    void* reply = nullptr;
    return redisGetReply(context, &reply) == REDIS_OK ? Reply(static_cast<redisReply*>(reply)) : nullptr;
}

} // namespace

void RedisTestClient::ContextDeleter::operator()(redisContext* context) const
{
    redisFree(context);
}

RedisTestClient::RedisTestClient(quint16 port, const QByteArray& password)
    : m_port(port)
    , m_password(password)
{}

RedisTestClient::~RedisTestClient() = default;

bool RedisTestClient::connect()
{
    if (m_context && m_context->err == 0)
        return true;
    m_context.reset(redisConnectWithTimeout("127.0.0.1", m_port, replyTimeout));
    if (!m_context || m_context->err != 0 || redisSetTimeout(m_context.get(), replyTimeout) != REDIS_OK)
        return false;
    return m_password.isEmpty() || command({"AUTH", m_password}) == "OK";
}

bool RedisTestClient::append(const QByteArrayList& arguments)
{
    std::vector<const char*> texts;
    std::vector<std::size_t> lengths;
    for (const QByteArray& argument : arguments) {
        texts.push_back(argument.constData());
        lengths.push_back(std::size_t(argument.size()));
    }
    return redisAppendCommandArgv(m_context.get(), int(texts.size()), texts.data(), lengths.data()) == REDIS_OK;
}

QByteArray RedisTestClient::command(const QByteArrayList& arguments)
{
    if (!connect() || !append(arguments))
        return "(no connection)";
    const Reply reply = nextReply(m_context.get());
    return reply ? text(reply.get()) : QByteArray("(no connection)");
}

QByteArrayList RedisTestClient::list(const QByteArrayList& arguments)
{
    QByteArrayList result;
    const Reply reply = connect() && append(arguments) ? nextReply(m_context.get()) : nullptr;
    for (std::size_t i = 0; reply && i < reply->elements; ++i)
        result << text(reply->element[i]);
    return result;
}

int RedisTestClient::pipeline(const QList<QByteArrayList>& commands)
{
    if (!connect())
        return 0;
    for (const QByteArrayList& arguments : commands)
        append(arguments);
    int successes = 0;
    for (int i = 0; i < commands.size(); ++i) {
        const Reply reply = nextReply(m_context.get());
        if (!reply)
            break;
        successes += int(reply->type != REDIS_REPLY_ERROR);
    }
    return successes;
}
