// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_write_queue.h"

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

// Limits for values and occurrences that wait or are not answered. Above them the server does not keep up.
constexpr qint64 maxWrites = 20000;
constexpr qint64 maxBytes = 64 * 1024 * 1024;
const QByteArrayList streamLimit = {"MAXLEN", "~", "10000"};

} // namespace

RedisWriteQueue::RedisWriteQueue(RedisSession* session, const RedisLayout& layout)
    : m_session(session)
    , m_layout(layout)
    , m_transactions(session, &m_losses)
    , m_typeInquiry(session)
    , m_declarations(layout)
{
    m_flushTimer.setSingleShot(true);
    connect(&m_flushTimer, &QTimer::timeout, this, &RedisWriteQueue::flush);
    connect(&m_declarations, &RedisDeclarations::due, this, &RedisWriteQueue::scheduleFlush);
    connect(&m_transactions, &RedisTransactions::idle, this, &RedisWriteQueue::scheduleFlush);
    connect(&m_typeInquiry, &RedisInquiry::finished, this, &RedisWriteQueue::flush);
    connect(&m_transactions, &RedisTransactions::refused, this, &RedisWriteQueue::refused);
    connect(session, &RedisSession::replaced, this, &RedisWriteQueue::onReplaced);
}

void RedisWriteQueue::declare(const KeyNames& names)
{
    const RedisDeclarations::Changes changes = m_declarations.declare(names);
    for (const QSet<QString>& changed : {changes.gone, changes.moved})
        forgetValues(changed);
    dropWaiting(changes.gone);
    scheduleFlush();
}

void RedisWriteQueue::setRealTimeSupported(bool isSupported)
{
    m_declarations.setRealTimeSupported(isSupported);
    scheduleFlush();
}

void RedisWriteQueue::forgetValues(const QSet<QString>& names)
{
    for (const QString& name : names) {
        m_newestValues.remove(name);
        m_unwritten.remove(name);
    }
}

void RedisWriteQueue::keep(const QString& name, const QByteArray& value, std::optional<double> timeStamp)
{
    m_newestValues.insert(name, {value, timeStamp});
    keepForConnection(name);
}

void RedisWriteQueue::put(const QString& name, const QByteArray& value, std::optional<double> timeStamp,
                          const Done& done)
{
    m_newestValues.insert(name, {value, timeStamp});
    add({name, value, timeStamp, done});
}

void RedisWriteQueue::raise(const QString& name, const QByteArray& value, std::optional<double> timeStamp,
                            const Done& done)
{
    add({name, value, timeStamp, done, true});
}

void RedisWriteQueue::remove(const QStringList& names, const Done& done)
{
    const QSet<QString> removed(names.begin(), names.end());
    m_declarations.remove(names);
    forgetValues(removed);
    // What waits would be written after the removal.
    dropWaiting(removed);
    if (done)
        m_removalDones.push_back(done);
    scheduleFlush();
}

void RedisWriteQueue::dropWaiting(const QSet<QString>& names)
{
    if (names.isEmpty())
        return;
    std::vector<Waiting> rest;
    for (const Waiting& write : std::exchange(m_waiting, {})) {
        if (!names.contains(write.name)) {
            rest.push_back(write);
            continue;
        }
        m_waitingBytes -= write.bytes.size();
        answerLater(write.done, QString());
    }
    m_waiting = rest;
}

void RedisWriteQueue::clear()
{
    m_declarations.clear();
    m_removalDones.clear();
    m_newestValues.clear();
    m_losses.dropped += m_unwritten.size();
    m_unwritten.clear();
    m_waiting.clear();
    m_waitingBytes = 0;
}

void RedisWriteQueue::add(const Waiting& write)
{
    const bool hasRoom = qint64(m_waiting.size()) + m_transactions.openCount() < maxWrites &&
                         m_waitingBytes + m_transactions.outstandingBytes() < maxBytes;
    if (!hasRoom) {
        refuse(write, tr("The server does not keep up with what is written."), &m_losses.dropped);
        return;
    }
    m_waitingBytes += write.bytes.size();
    m_waiting.push_back(write);
    scheduleFlush();
}

void RedisWriteQueue::refuse(const Waiting& write, const QString& error, qint64* count)
{
    ++*count;
    answerLater(write.done, error);
}

void RedisWriteQueue::answerLater(const Done& done, const QString& error)
{
    if (done)
        QMetaObject::invokeMethod(
            this, [done, error] { done(error); }, Qt::QueuedConnection);
}

// Everything has to be written again: the server may have come back empty, or be another one.
void RedisWriteQueue::onReplaced()
{
    m_declarations.repeatAll();
    m_types.clear();
    m_typeErrors.clear();
    if (!m_session->isUp())
        return;
    std::vector<Waiting> repeated;
    for (auto value = m_newestValues.cbegin(); value != m_newestValues.cend(); ++value) {
        const int unwritten = m_unwritten.value(value.key());
        m_waitingBytes += value->bytes.size();
        repeated.push_back(
            {value.key(), value->bytes, value->timeStamp, {}, false, unwritten == 0, std::max(unwritten - 1, 0)});
    }
    m_unwritten.clear();
    m_waiting.insert(m_waiting.begin(), repeated.begin(), repeated.end());
    scheduleFlush();
}

void RedisWriteQueue::onConnectionLost()
{
    m_transactions.interrupt();
    for (const Waiting& write : std::exchange(m_waiting, {})) {
        // Every newest value is repeated with the next connection.
        if (write.isRepeated)
            continue;
        const bool isStream = !write.isOccurrence && m_types.value(write.name, String) == Stream;
        if (write.isOccurrence || isStream)
            m_losses.dropped += write.superseded + 1;
        else
            keepForConnection(write.name, write.superseded + 1);
    }
    m_waitingBytes = 0;
}

void RedisWriteQueue::scheduleFlush()
{
    if (m_session->isUp() && !m_flushTimer.isActive())
        m_flushTimer.start(0);
}

// True when the types of all keys that wait for a value are known. What is a stream on the server stays one: others
// count on every sample of it.
bool RedisWriteQueue::askTypes()
{
    QSet<QString> unknown;
    for (const Waiting& write : m_waiting) {
        if (!write.isOccurrence && !m_types.contains(write.name))
            unknown.insert(write.name);
    }
    for (const QString& name : std::as_const(unknown))
        m_typeInquiry.ask({"TYPE", m_layout.key(KeyKind::Data, name.toUtf8())},
                          [this, name](const RedisReply& reply) { onType(name, reply); });
    return unknown.isEmpty();
}

void RedisWriteQueue::onType(const QString& name, const RedisReply& reply)
{
    const QByteArray type = reply.bytes();
    if (type == "none" || type == "string" || type == "stream") {
        m_types.insert(name, type == "stream" ? Stream : String);
        return;
    }
    m_types.insert(name, Unusable);
    m_typeErrors.insert(
        name, reply.isError()
                  ? RedisError::of(reply.view()).message(m_session->server())
                  : tr("The key %1 on the server holds a %2, which no data key is. Check which program writes it.")
                        .arg(QString::fromUtf8(m_layout.key(KeyKind::Data, name.toUtf8())), reply.text()));
}

void RedisWriteQueue::flush()
{
    if (!m_session->isUp() || m_typeInquiry.isActive() || m_transactions.outstanding() > 0 || !askTypes())
        return;
    std::vector<RedisWrite> writes = declarations();
    m_waitingBytes = 0;
    for (const Waiting& write : std::exchange(m_waiting, {})) {
        const KeyType type = m_types.value(write.name, String);
        if (write.isOccurrence) {
            writes.push_back(occurrenceWrite(write));
        } else if (type == Unusable) {
            const QString error = m_typeErrors.value(write.name);
            refuse(write, error, &m_losses.refused);
            if (!write.done)
                emit refused(tr("Redis: key cannot be written"), error);
        } else if (!write.isRepeated || type == String) {
            m_losses.dropped += type == Stream ? write.superseded : 0;
            writes.push_back(valueWrite(write));
        }
    }
    // An unusable key may have become usable when it is next written.
    for (auto error = m_typeErrors.cbegin(); error != m_typeErrors.cend(); ++error)
        m_types.remove(error.key());
    m_typeErrors.clear();
    m_transactions.run(writes);
    if (isIdle())
        emit idle();
}

std::vector<RedisWrite> RedisWriteQueue::declarations()
{
    const QSet<QString> removedData = m_declarations.removedData();
    for (const QString& name : removedData)
        m_types.remove(name);
    const std::vector<Done> dones = std::exchange(m_removalDones, {});
    if (dones.empty())
        return m_declarations.write();
    const Done removed = [dones](const QString& error) {
        for (const Done& done : dones)
            done(error);
    };
    if (!m_declarations.hasRemovals())
        answerLater(removed, QString());
    return m_declarations.write(removed);
}

RedisWrite RedisWriteQueue::valueWrite(const Waiting& value)
{
    RedisWrite write;
    // Every sample of a stream counts, as an occurrence does.
    const bool isStream = m_types.value(value.name) == Stream;
    write.content = isStream ? RedisWrite::Occurrence : RedisWrite::Value;
    write.done = value.done;
    if (!isStream && !value.isRepeated)
        write.unanswered = [this, name = value.name] { keepForConnection(name); };
    m_declarations.addListing(&write, KeyKind::Data, value.name);
    if (isStream)
        write.commands.append(streamEntry(KeyKind::Data, value));
    else
        write.commands.append({"SET", m_layout.key(KeyKind::Data, value.name.toUtf8()), value.bytes});
    return write;
}

RedisWrite RedisWriteQueue::occurrenceWrite(const Waiting& occurrence)
{
    const bool isMicroEvent = m_declarations.kindOf(occurrence.name) == KeyKind::MicroEvent;
    const KeyKind kind = isMicroEvent ? KeyKind::MicroEvent : KeyKind::Event;
    RedisWrite write;
    write.content = RedisWrite::Occurrence;
    write.done = occurrence.done;
    m_declarations.addListing(&write, kind, occurrence.name);
    write.commands.append(streamEntry(kind, occurrence));
    return write;
}

QByteArrayList RedisWriteQueue::streamEntry(KeyKind kind, const Waiting& sample) const
{
    QByteArrayList command = {"XADD", m_layout.key(kind, sample.name.toUtf8())};
    command << streamLimit << "*";
    if (sample.timeStamp)
        command << "t" << QByteArray::number(*sample.timeStamp, 'f', 6);
    return command << "v" << sample.bytes;
}

} // namespace Velk
