// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_transactions.h"

#include <QPointer>

#include <algorithm>

namespace Velk {

namespace {

// A server runs nothing else during a transaction.
constexpr std::size_t maxWritesPerTransaction = 10000;

qint64 bytesOf(const std::vector<RedisWrite>& writes)
{
    qint64 bytes = 0;
    for (const RedisWrite& write : writes)
        bytes += write.bytes();
    return bytes;
}

int occurrencesIn(const std::vector<RedisWrite>& writes)
{
    return int(std::count_if(writes.begin(), writes.end(),
                             [](const RedisWrite& write) { return write.content == RedisWrite::Occurrence; }));
}

} // namespace

qint64 RedisWrite::bytes() const
{
    qint64 bytes = 0;
    for (const QByteArrayList& command : commands) {
        for (const QByteArray& argument : command)
            bytes += argument.size();
    }
    return bytes;
}

RedisTransactions::RedisTransactions(RedisSession* session)
    : m_session(session)
    , m_inquiry(session)
{
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisTransactions::onInterrupted);
}

void RedisTransactions::run(const std::vector<RedisWrite>& writes)
{
    for (std::size_t first = 0; first < writes.size(); first += maxWritesPerTransaction) {
        const std::size_t end = std::min(first + maxWritesPerTransaction, writes.size());
        runTransaction({writes.begin() + std::ptrdiff_t(first), writes.begin() + std::ptrdiff_t(end)});
    }
}

void RedisTransactions::runTransaction(const std::vector<RedisWrite>& writes)
{
    const auto ignore = [](const RedisReply&) {}; // what EXEC answers is enough
    m_inquiry.ask({"MULTI"}, ignore);
    for (const RedisWrite& write : writes) {
        for (const QByteArrayList& command : write.commands)
            m_inquiry.ask(command, ignore);
    }
    m_outstanding += int(writes.size());
    m_outstandingOccurrences += occurrencesIn(writes);
    m_outstandingBytes += bytesOf(writes);
    m_inquiry.ask({"EXEC"}, [this, writes](const RedisReply& reply) { onReply(writes, reply); });
}

void RedisTransactions::onReply(const std::vector<RedisWrite>& writes, const RedisReply& reply)
{
    m_outstanding -= int(writes.size());
    m_outstandingOccurrences -= occurrencesIn(writes);
    m_outstandingBytes -= bytesOf(writes);
    const QPointer<RedisTransactions> self(this);
    qsizetype next = 0;
    for (const RedisWrite& write : writes) {
        RedisReply error = reply.isArray() ? RedisReply() : reply;
        for (qsizetype i = 0; i < write.commands.size(); ++i, ++next) {
            if (reply.at(next).isError())
                error = reply.at(next);
        }
        if (error.isError())
            fail(write, error);
        else if (write.done)
            write.done(QString());
        if (!self)
            return;
    }
}

void RedisTransactions::fail(const RedisWrite& write, const RedisReply& errorReply)
{
    if (write.content != RedisWrite::Declaration)
        ++m_lostCount;
    const RedisError error = RedisError::of(errorReply.view());
    const QString message = error.message(m_session->server());
    if (write.done)
        write.done(message);
    else if (error.kind == RedisError::WrongType)
        emit refused(error.title(), message);
}

// Values are written again with the next connection; occurrences are not, for they may have been written.
void RedisTransactions::onInterrupted()
{
    m_lostCount += m_outstandingOccurrences;
    m_outstanding = 0;
    m_outstandingOccurrences = 0;
    m_outstandingBytes = 0;
}

} // namespace Velk
