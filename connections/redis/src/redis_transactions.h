// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_TRANSACTIONS_H
#define CONNECTIONS_REDIS_SRC_REDIS_TRANSACTIONS_H

#include <connections/link/write_losses.h>
#include <connections/redis/client/redis_inquiry.h>

#include <QByteArrayList>
#include <QList>
#include <QObject>

#include <deque>
#include <functional>
#include <vector>

namespace Velk {

/// One write to a robot's memory: commands that are run in one transaction.
struct RedisWrite
{
    enum Content
    {
        Declaration, ///< names of keys and metadata: not counted as lost
        Value,
        Occurrence
    };

    Content content = Declaration;
    QList<QByteArrayList> commands;
    std::function<void(const QString& error)> done;
    std::function<void()> refused;    ///< called when the server refused the write, before `done`
    std::function<void()> unanswered; ///< called when the connection was lost before the server answered

    qint64 bytes() const;
};

/// Runs writes in transactions, one after the other, and counts those that were not written. Viewers of the memory see
/// all writes of a transaction or none.
///
/// A server runs no command of a transaction when it refuses one of them. The writes that it did not refuse are then
/// run again without the refused ones. Commands whose keys are on another node of a cluster are run there at once,
/// without a transaction.
class RedisTransactions : public QObject
{
    Q_OBJECT

public:
    /// Counts in `losses` the values and occurrences that the server refused, and the occurrences that were sent and
    /// not answered, or not sent yet, when the connection was replaced. The session and the counts outlive this object.
    RedisTransactions(RedisSession* session, WriteLosses* losses);

    /// Runs the writes, up to 10 000 per transaction. Each one's `done` gets an empty text or an error; not when the
    /// connection is replaced before the server has answered. Transactions that run already come first.
    void run(const std::vector<RedisWrite>& writes);

    /// The connection is lost: no answer comes any more. As when the session is replaced.
    void interrupt();

    /// Writes that the server has not answered yet, and their size.
    int outstanding() const { return m_outstanding.writes; }
    qint64 outstandingBytes() const { return m_outstanding.bytes; }
    /// Values and occurrences among them.
    qint64 openCount() const { return m_outstanding.values + m_outstanding.occurrences; }

Q_SIGNALS:
    /// All writes are answered.
    void idle();
    /// A write without `done` was refused for the type of its key. Other errors are reported by the session.
    void refused(const QString& title, const QString& message);

private:
    enum Answer
    {
        Queued,   ///< run with the transaction
        Executed, ///< run at once, by the node of a redirection
        Refused
    };
    struct CommandAnswer
    {
        Answer answer = Queued;
        QByteArray error; ///< the server's text, of a refused command
    };

    // How many writes there are, and their size.
    struct Counts
    {
        void add(const RedisWrite& write, int times);

        int writes = 0;
        int values = 0;
        int occurrences = 0;
        qint64 bytes = 0;
    };

    void runNext();
    void onQueued(std::size_t command, const RedisReply& reply);
    void onExecuted(const RedisReply& reply);
    void onFinished();
    void reportEnd(const RedisWrite& write, const QByteArray& errorText);
    void onInterrupted();
    void endExecuted();

    RedisSession* m_session;
    WriteLosses* m_losses;
    RedisInquiry m_inquiry;
    std::deque<std::vector<RedisWrite>> m_transactions; // the first one runs if m_inquiry is active
    std::vector<CommandAnswer> m_answers;               // to all commands of the first one, if it runs
    QByteArray m_executionError;                        // why it was not run; empty when it was
    bool m_isToBeRepeated = false;                      // the keys of the first one were moved after it was queued
    int m_repetitions = 0;                              // of the first one, for that reason
    Counts m_outstanding;
};

} // namespace Velk

#endif
