// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_plain_keys.h"

#include <utility>

namespace Velk {

namespace {

const QByteArray scanCount = "1000";
constexpr char fieldSeparator = '#';

} // namespace

RedisPlainKeys::RedisPlainKeys(RedisSession* session, const QByteArray& pattern)
    : m_inquiry(session)
    , m_pattern(pattern)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisPlainKeys::onPortionKnown);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisPlainKeys::startWalk);
}

RedisPlainKeys::~RedisPlainKeys()
{
    finishLists();
}

QFuture<QStringList> RedisPlainKeys::fetchNames(KeyKind kind)
{
    if (kind == KeyKind::MicroEvent)
        return ListFetch::finished();
    m_pending.push_back({kind, ListFetch()});
    const QFuture<QStringList> future = m_pending.back().list.future();
    if (!m_isWalking)
        startWalk();
    return future;
}

void RedisPlainKeys::finishLists()
{
    m_inquiry.cancel();
    finish(Walk());
}

void RedisPlainKeys::startWalk()
{
    m_isWalking = true;
    m_walk = Walk();
    scan("0");
}

// The next portion waits until the keys of this one are known: the server's other clients come in between.
void RedisPlainKeys::onPortionKnown()
{
    if (m_walk.nextCursor.isEmpty())
        finish(std::exchange(m_walk, {}));
    else
        scan(std::exchange(m_walk.nextCursor, QByteArray()));
}

void RedisPlainKeys::scan(const QByteArray& cursor)
{
    m_inquiry.ask({"SCAN", cursor, "MATCH", m_pattern, "COUNT", scanCount},
                  [this](const RedisReply& reply) { onPortion(reply); });
}

void RedisPlainKeys::onPortion(const RedisReply& reply)
{
    const QByteArray next = reply.at(0).bytes();
    m_walk.nextCursor = next == "0" ? QByteArray() : next;
    const RedisReply keys = reply.at(1);
    for (qsizetype i = 0; i < keys.size(); ++i) {
        // A key that is there during the whole walk can be named more than once.
        const QByteArray key = keys.at(i).bytes();
        if (!keys.at(i).isText() || m_walk.seen.contains(key))
            continue;
        m_walk.seen.insert(key);
        askType(key);
    }
}

void RedisPlainKeys::askType(const QByteArray& key)
{
    m_inquiry.ask({"TYPE", key}, [this, key](const RedisReply& reply) {
        if (reply.view() == "string")
            addName(&m_walk.data, key);
        else if (reply.view() == "stream")
            addName(&m_walk.events, key);
        else if (reply.view() == "hash")
            scanFields(key, "0");
    });
}

void RedisPlainKeys::scanFields(const QByteArray& key, const QByteArray& cursor)
{
    m_inquiry.ask({"HSCAN", key, cursor, "COUNT", scanCount}, [this, key](const RedisReply& reply) {
        const RedisReply fields = reply.at(1);
        for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
            if (fields.at(i).isText())
                addName(&m_walk.data, key + fieldSeparator + fields.at(i).bytes());
        }
        const QByteArray next = reply.at(0).bytes();
        if (!next.isEmpty() && next != "0")
            scanFields(key, next);
    });
}

void RedisPlainKeys::addName(QSet<QString>* names, const QByteArray& rawName)
{
    const QString name = QString::fromUtf8(rawName);
    if (name.toUtf8() != rawName)
        m_rawNames.insert(name, rawName);
    names->insert(name);
}

void RedisPlainKeys::finish(const Walk& walk)
{
    m_isWalking = false;
    std::vector<Pending> pending = std::exchange(m_pending, {});
    for (Pending& fetch : pending)
        fetch.list.finish(fetch.kind == KeyKind::Data ? walk.data.values() : walk.events.values());
}

std::vector<RedisSource> RedisPlainKeys::sourcesOf(const QByteArray& rawName) const
{
    std::vector<RedisSource> sources(1);
    sources[0].key = rawName;
    // Neither a key nor a field is free of the separator; most names have one at most.
    const qsizetype separator = rawName.indexOf(fieldSeparator);
    if (separator != -1) {
        sources.emplace_back();
        sources[1].isHashField = true;
        sources[1].key = rawName.left(separator);
        sources[1].field = rawName.mid(separator + 1);
    }
    return sources;
}

std::vector<QByteArrayList> RedisPlainKeys::neededCommands() const
{
    return {{"TYPE", "velk"},
            {"MGET", "velk"},
            {"XREAD", "COUNT", "1", "STREAMS", "velk", "0-0"},
            {"XINFO", "STREAM", "velk"},
            {"SCAN", "0", "COUNT", "1"},
            {"HSCAN", "velk", "0"},
            {"HMGET", "velk", "field"}};
}

} // namespace Velk
