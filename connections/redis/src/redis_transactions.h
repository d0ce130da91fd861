// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_TRANSACTIONS_H
#define CONNECTIONS_REDIS_SRC_REDIS_TRANSACTIONS_H

#include <connections/redis/client/redis_inquiry.h>

#include <QByteArrayList>
#include <QList>
#include <QObject>

#include <functional>
#include <vector>

namespace Velk {

/// One write to a robot's memory: commands that are run in one transaction.
struct RedisWrite
{
    enum Content
    {
        Declaration, ///< names of keys, and other things that are no loss
        Value,
        Occurrence
    };

    Content content = Declaration;
    QList<QByteArrayList> commands;
    std::function<void(const QString& error)> done;

    qint64 bytes() const;
};

/// Runs writes in transactions, and counts those that were not written. Viewers of the memory see all writes of a
/// transaction or none.
class RedisTransactions : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this object.
    explicit RedisTransactions(RedisSession* session);

    /// Runs the writes, in one transaction as long as they are not very many. Each one's `done` gets an empty text or
    /// an error; not when the connection is replaced before.
    void run(const std::vector<RedisWrite>& writes);

    /// Writes that the server has not answered yet, and their size.
    int outstanding() const { return m_outstanding; }
    qint64 outstandingBytes() const { return m_outstandingBytes; }
    /// Values and occurrences that the server refused, and occurrences that were outstanding when the connection was
    /// replaced.
    qint64 lostCount() const { return m_lostCount; }
    void resetLostCount() { m_lostCount = 0; }

Q_SIGNALS:
    /// A write without `done` was refused for the type of its key. Other errors are reported by the session.
    void refused(const QString& title, const QString& message);

private:
    void runTransaction(const std::vector<RedisWrite>& writes);
    void onReply(const std::vector<RedisWrite>& writes, const RedisReply& reply);
    void fail(const RedisWrite& write, const RedisReply& error);
    void onInterrupted();

    RedisSession* m_session;
    RedisInquiry m_inquiry;
    int m_outstanding = 0;
    int m_outstandingOccurrences = 0;
    qint64 m_outstandingBytes = 0;
    qint64 m_lostCount = 0;
};

} // namespace Velk

#endif
