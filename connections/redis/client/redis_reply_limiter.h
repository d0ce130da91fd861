// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_REPLY_LIMITER_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_REPLY_LIMITER_H

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <vector>

namespace Velk {

/// Limits the memory that a reply takes: a filter between the socket and the protocol reader, since the reader keeps a
/// reply until it is complete. A value that is too long is taken out of the stream while it arrives. The reader gets
/// the error "OVERSIZE <length>" in its place, so that the rest of the reply can be used.
class RedisReplyLimiter
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RedisReplyLimiter)

public:
    struct Limits
    {
        qint64 valueBytes = 16 * 1024 * 1024; ///< of one value
        qint64 replyBytes = 64 * 1024 * 1024; ///< of one reply, with some for every element
        qint64 elements = 4 * 1024 * 1024;    ///< of one list within a reply
    };

    RedisReplyLimiter()
        : RedisReplyLimiter(Limits())
    {}
    explicit RedisReplyLimiter(const Limits& limits)
        : m_limits(limits)
    {}

    /// Takes the next bytes of the stream and appends to *output what the reader may see of them. False when the
    /// stream is not the protocol, or a list is longer than the limit; errorString() has the reason, and nothing more
    /// can be filtered.
    bool filter(const char* input, qint64 size, QByteArray* output);
    QString errorString() const { return m_errorString; }

private:
    enum State
    {
        Line,
        Value,
        DroppedValue
    };

    bool takeLine(QByteArray* output);
    bool takeValueLength(QByteArray* output);
    bool takeListLength(QByteArray* output);
    bool fail(const QString& reason);
    void elementDone();

    Limits m_limits;
    State m_state = Line;
    QByteArray m_line;
    qint64 m_valueBytesLeft = 0;
    qint64 m_replyBytes = 0;
    std::vector<qint64> m_openLists; // for each open list, outermost first: how many elements are still to come
    QString m_errorString;
};

} // namespace Velk

#endif
