// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_WRITE_QUEUE_H
#define CONNECTIONS_REDIS_SRC_REDIS_WRITE_QUEUE_H

#include "redis_declarations.h"
#include "redis_transactions.h"

#include <connections/link/robot_writer.h>
#include <connections/redis/memory/redis_layout.h>

#include <QHash>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <optional>
#include <vector>

namespace Velk {

/// What waits to be written to a robot's memory. All that comes in one turn of the event loop, and while a transaction
/// runs, is written in one transaction: removals and declarations first, then the writes in their order.
class RedisWriteQueue : public QObject
{
    Q_OBJECT

public:
    using Done = RobotWriter::Done;

    /// The session outlives this object.
    RedisWriteQueue(RedisSession* session, const RedisLayout& layout);

    void declare(const KeyNames& names);
    void setRealTimeSupported(bool isSupported);
    /// Without a connection: keeps the newest value for the next one.
    void keep(const QString& name, const QByteArray& value, std::optional<double> timeStamp);
    void put(const QString& name, const QByteArray& value, std::optional<double> timeStamp, const Done& done);
    void raise(const QString& name, const QByteArray& value, std::optional<double> timeStamp, const Done& done);
    void remove(const QStringList& names, const Done& done);

    /// The connection is lost: values are written again with the next one, occurrences are counted as lost.
    void onConnectionLost();
    /// Forgets everything. Values that are not written are counted as lost.
    void clear();

    void countDropped() { ++m_losses.dropped; }
    const WriteLosses& losses() const { return m_losses; }
    void resetLosses() { m_losses = {}; }
    /// Values and occurrences that are neither written nor lost.
    qint64 openCount() const { return qint64(m_waiting.size()) + m_unwritten.size() + m_transactions.openCount(); }
    /// Whether nothing is open, waits or is unanswered, declarations and removals included. What was refused and is to
    /// be written again does not count.
    bool isIdle() const
    {
        return openCount() == 0 && m_transactions.outstanding() == 0 && !m_flushTimer.isActive() &&
               !m_typeInquiry.isActive() && !m_declarations.hasUntried();
    }
    /// Whether the server has accepted all declarations and removals; false while writes are not answered.
    bool areDeclarationsWritten() const { return m_transactions.outstanding() == 0 && m_declarations.areWritten(); }

Q_SIGNALS:
    /// A write was refused for the type of its key.
    void refused(const QString& title, const QString& message);
    /// isIdle() is true after a write.
    void idle();

private:
    enum KeyType
    {
        String,
        Stream,
        Unusable
    };
    // A value or an occurrence.
    struct Waiting
    {
        QString name;
        QByteArray bytes;
        std::optional<double> timeStamp;
        Done done;
        bool isOccurrence = false;
        bool isRepeated = false; // a value that was written on an earlier connection
        int superseded = 0;      // older values that are not kept: samples that are lost if the key is a stream
    };

    struct NewestValue
    {
        QByteArray bytes;
        std::optional<double> timeStamp;
    };

    void onReplaced();
    void add(const Waiting& write);
    void refuse(const Waiting& write, const QString& error, qint64* count);
    void answerLater(const Done& done, const QString& error);
    void forgetValues(const QSet<QString>& names);
    void dropWaiting(const QSet<QString>& names);
    // The newest of so many values of the key is written with the next connection, unless the key was removed.
    void keepForConnection(const QString& name, int values = 1)
    {
        if (m_newestValues.contains(name))
            m_unwritten[name] += values;
    }
    void scheduleFlush();
    bool askTypes();
    void onType(const QString& name, const RedisReply& reply);
    void flush();
    std::vector<RedisWrite> declarations();
    RedisWrite valueWrite(const Waiting& value);
    RedisWrite occurrenceWrite(const Waiting& occurrence);
    QByteArrayList streamEntry(KeyKind kind, const Waiting& sample) const;

    RedisSession* m_session;
    RedisLayout m_layout;
    WriteLosses m_losses; // before the transactions, which count in it
    RedisTransactions m_transactions;
    RedisInquiry m_typeInquiry;
    QTimer m_flushTimer;

    RedisDeclarations m_declarations;
    std::vector<Done> m_removalDones;
    QHash<QString, NewestValue> m_newestValues;
    QHash<QString, int> m_unwritten; // how many values of those keys wait for a connection, the newest included
    std::vector<Waiting> m_waiting;
    qint64 m_waitingBytes = 0;

    // Of the present connection.
    QHash<QString, KeyType> m_types;      // of data keys
    QHash<QString, QString> m_typeErrors; // why a key is unusable
};

} // namespace Velk

#endif
