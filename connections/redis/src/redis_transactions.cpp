// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_transactions.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

// A server runs nothing else during a transaction.
constexpr std::size_t maxWritesPerTransaction = 10000;
// Of a transaction that a server queues and then redirects.
constexpr int maxRepetitions = 5;

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

void RedisTransactions::Counts::add(const RedisWrite& write, int times)
{
    writes += times;
    values += write.content == RedisWrite::Value ? times : 0;
    occurrences += write.content == RedisWrite::Occurrence ? times : 0;
    bytes += times * write.bytes();
}

RedisTransactions::RedisTransactions(RedisSession* session, WriteLosses* losses)
    : m_session(session)
    , m_losses(losses)
    , m_inquiry(session)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisTransactions::onFinished);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisTransactions::onInterrupted);
}

void RedisTransactions::run(const std::vector<RedisWrite>& writes)
{
    for (std::size_t first = 0; first < writes.size(); first += maxWritesPerTransaction) {
        const std::size_t end = std::min(first + maxWritesPerTransaction, writes.size());
        m_transactions.emplace_back(writes.begin() + std::ptrdiff_t(first), writes.begin() + std::ptrdiff_t(end));
    }
    for (const RedisWrite& write : writes)
        m_outstanding.add(write, 1);
    runNext();
}

void RedisTransactions::runNext()
{
    if (m_inquiry.isActive() || m_transactions.empty())
        return;
    m_answers.clear();
    m_executionError.clear();
    m_inquiry.ask({"MULTI"}, [](const RedisReply&) {}); // an error shows in the answer to EXEC
    for (const RedisWrite& write : m_transactions.front()) {
        for (const QByteArrayList& command : write.commands) {
            const std::size_t index = m_answers.size();
            m_answers.emplace_back();
            m_inquiry.ask(command, [this, index](const RedisReply& reply) { onQueued(index, reply); });
        }
    }
    m_inquiry.ask({"EXEC"}, [this](const RedisReply& reply) { onExecuted(reply); });
}

void RedisTransactions::onQueued(std::size_t command, const RedisReply& reply)
{
    if (reply.isError())
        m_answers[command] = {Refused, reply.bytes()};
    else if (reply.bytes() != "QUEUED")
        m_answers[command].answer = Executed;
}

void RedisTransactions::onExecuted(const RedisReply& reply)
{
    if (!reply.isArray()) {
        // EXEC was redirected to another node, which has not queued the commands.
        m_isToBeRepeated = reply.view() == "ERR EXEC without MULTI" && m_repetitions < maxRepetitions;
        m_executionError = reply.isError() ? reply.bytes() : QByteArrayLiteral("ERR the transaction was not run");
        return;
    }
    for (std::size_t i = 0; i < m_answers.size(); ++i) {
        const RedisReply result = reply.at(qsizetype(i));
        m_answers[i] = result.isError() ? CommandAnswer{Refused, result.bytes()} : CommandAnswer{Executed, {}};
    }
}

// All answers to the first transaction are here, also those that came from the node of a redirection after EXEC.
void RedisTransactions::onFinished()
{
    const std::vector<RedisWrite> writes = std::move(m_transactions.front());
    m_transactions.pop_front();
    const std::vector<CommandAnswer> answers = std::exchange(m_answers, {});
    const bool isToBeRepeated = std::exchange(m_isToBeRepeated, false);
    m_repetitions = isToBeRepeated ? m_repetitions + 1 : 0;
    const bool isRunAgain =
        isToBeRepeated || std::any_of(answers.begin(), answers.end(),
                                      [](const CommandAnswer& answer) { return answer.answer != Queued; });
    std::vector<RedisWrite> again;
    std::vector<std::pair<RedisWrite, QByteArray>> ended;
    auto answer = answers.begin();
    for (const RedisWrite& write : writes) {
        QList<QByteArrayList> missing;
        QByteArray error;
        for (const QByteArrayList& command : write.commands) {
            if (answer->answer == Refused)
                error = answer->error;
            else if (answer->answer == Queued)
                missing.append(command);
            ++answer;
        }
        m_outstanding.add(write, -1);
        if (error.isEmpty() && !missing.isEmpty() && isRunAgain) {
            again.push_back(write);
            again.back().commands = missing;
            m_outstanding.add(again.back(), 1);
            continue;
        }
        if (error.isEmpty() && !missing.isEmpty())
            error = m_executionError;
        if (!error.isEmpty() && write.content != RedisWrite::Declaration)
            ++m_losses->refused;
        ended.emplace_back(write, error);
    }
    // Before anything that comes later, and before the callbacks, which may write more.
    if (!again.empty())
        m_transactions.push_front(again);
    const QPointer<RedisTransactions> self(this);
    for (const auto& [write, error] : ended) {
        reportEnd(write, error);
        if (!self)
            return;
    }
    runNext();
    if (m_transactions.empty())
        emit idle();
}

void RedisTransactions::reportEnd(const RedisWrite& write, const QByteArray& errorText)
{
    if (errorText.isEmpty()) {
        if (write.done)
            write.done(QString());
        return;
    }
    if (write.refused)
        write.refused();
    const RedisError error = RedisError::of(errorText);
    const QString message = error.message(m_session->server());
    if (write.done)
        write.done(message);
    else if (error.kind == RedisError::WrongType)
        emit refused(error.title(), message);
}

void RedisTransactions::interrupt()
{
    m_inquiry.cancel();
    onInterrupted();
}

// Values are written again with the next connection. Occurrences are not: those that were sent may have been written.
void RedisTransactions::onInterrupted()
{
    Counts sent;
    if (!m_answers.empty()) {
        endExecuted();
        for (const RedisWrite& write : m_transactions.front())
            sent.add(write, 1);
    }
    m_losses->unknown += sent.occurrences;
    m_losses->dropped += m_outstanding.occurrences - sent.occurrences;
    m_answers.clear();
    m_isToBeRepeated = false;
    m_repetitions = 0;
    m_outstanding = {};
    for (const std::vector<RedisWrite>& writes : std::exchange(m_transactions, {})) {
        for (const RedisWrite& write : writes) {
            if (write.unanswered)
                write.unanswered();
        }
    }
}

// What another node has run already is written.
void RedisTransactions::endExecuted()
{
    std::vector<RedisWrite>& writes = m_transactions.front();
    std::vector<RedisWrite> rest;
    auto answer = m_answers.cbegin();
    for (const RedisWrite& write : writes) {
        const auto end = answer + write.commands.size();
        const bool isExecuted =
            std::all_of(answer, end, [](const CommandAnswer& command) { return command.answer == Executed; });
        answer = end;
        if (!isExecuted) {
            rest.push_back(write);
            continue;
        }
        m_outstanding.add(write, -1);
        if (write.done)
            QMetaObject::invokeMethod(
                this, [done = write.done] { done(QString()); }, Qt::QueuedConnection);
    }
    writes = rest;
}

} // namespace Velk
