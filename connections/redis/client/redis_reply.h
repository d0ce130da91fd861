// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_REPLY_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_REPLY_H

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

struct redisReply;

namespace Velk {

/// A view of one reply, or of an element of one. Valid while the callback that gets it runs; nothing is copied. Every
/// function may be called for every reply: it returns nothing, zero or null when the reply is of another type.
class RedisReply
{
public:
    RedisReply() = default;
    explicit RedisReply(const redisReply* reply)
        : m_reply(reply)
    {}

    bool isNull() const;
    bool isError() const;
    bool isArray() const;
    /// A bulk string or a status.
    bool isText() const;

    /// The bytes of a text or of an error.
    QByteArrayView view() const;
    QByteArray bytes() const { return view().toByteArray(); }
    QString text() const { return QString::fromUtf8(view()); }
    /// An integer, also one that is written as text.
    qint64 integer() const;

    qsizetype size() const;
    /// A null reply when there is no such element.
    RedisReply at(qsizetype index) const;
    /// The value after `field` in a list of fields and values.
    RedisReply field(QByteArrayView field) const;

private:
    const redisReply* m_reply = nullptr;
};

} // namespace Velk

#endif
