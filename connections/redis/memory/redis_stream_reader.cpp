// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_stream_reader.h"

#include "redis_key_resolver.h"
#include "redis_stream_entry.h"

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr std::size_t streamsPerCommand = 200;
// Entries of one stream in one reply: few enough that the server soon turns to others.
constexpr int maxEntries = 1000;

} // namespace

RedisStreamReader::RedisStreamReader(RedisSession* session, RedisSampleIntake* intake)
    : m_session(session)
    , m_inquiry(session)
    , m_intake(intake)
    , m_maxCount(maxEntries)
{}

void RedisStreamReader::setSources(const std::vector<RedisSourceRef>& sources)
{
    m_chunks.clear();
    for (const RedisSourceRef& ref : sources) {
        if (m_chunks.empty() || m_chunks.back()->sources.size() == streamsPerCommand)
            m_chunks.push_back(std::make_shared<Chunk>());
        Chunk& chunk = *m_chunks.back();
        chunk.indexOfKey.insert(ref.source().key, chunk.sources.size());
        chunk.sources.push_back(ref);
    }
}

void RedisStreamReader::clear()
{
    m_chunks.clear();
    m_inquiry.cancel();
}

void RedisStreamReader::read()
{
    if (m_inquiry.isActive())
        return;
    const std::vector<std::shared_ptr<Chunk>> chunks = m_chunks;
    for (const std::shared_ptr<Chunk>& chunk : chunks)
        readChunk(chunk);
}

void RedisStreamReader::readChunk(const std::shared_ptr<Chunk>& chunk)
{
    // Full replies to all chunks at once must fit.
    const int room = m_intake->room() / int(streamsPerCommand * std::max<std::size_t>(1, m_chunks.size()));
    const int count = m_chunks.size() == 1 ? std::min(m_maxCount, m_intake->room() / int(chunk->sources.size()))
                                           : std::min(m_maxCount, room);
    if (count == 0 || !m_session->isUp())
        return;
    QByteArrayList keys;
    QByteArrayList ids;
    for (const RedisSourceRef& ref : chunk->sources) {
        const RedisSource& source = ref.source();
        if (!ref.key->isWatched || source.type != RedisSource::Stream || !source.hasPosition)
            continue;
        keys.append(source.key);
        ids.append(source.position.id);
    }
    if (keys.isEmpty())
        return;
    m_inquiry.ask(QByteArrayList{"XREAD", "COUNT", QByteArray::number(count), "STREAMS"} + keys + ids,
                  [this, chunk, count](const RedisReply& reply) { onReply(chunk, count, reply); });
}

void RedisStreamReader::onReply(const std::shared_ptr<Chunk>& chunk, int count, const RedisReply& reply)
{
    if (reply.isError() && RedisError::of(reply.view()).kind == RedisError::WrongType) {
        // One of the keys is no stream any more. The reply does not name it: all are resolved again.
        for (const RedisSourceRef& ref : chunk->sources)
            ref.source().type = RedisSource::Unresolved;
        return;
    }
    bool hasMore = false;
    for (qsizetype i = 0; i < reply.size(); ++i) {
        const auto index = chunk->indexOfKey.constFind(reply.at(i).at(0).bytes());
        if (index == chunk->indexOfKey.constEnd())
            continue;
        const RedisSourceRef& ref = chunk->sources[*index];
        if (ref.key->isWatched)
            hasMore = takeEntries(ref, reply.at(i).at(1), count) || hasMore;
    }
    if (hasMore)
        readChunk(chunk);
}

// True when there may be more entries to read at once.
bool RedisStreamReader::takeEntries(const RedisSourceRef& ref, const RedisReply& entries, int count)
{
    RedisSource& source = ref.source();
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const RedisStreamEntry entry = RedisStreamEntry::of(entries.at(i));
        if (entry.cutBytes > 0 && entry.cutBytes <= RedisKeyResolver::maxValueBytes && count > 1) {
            // The reply was too long, not the value. The rest is read again in smaller replies.
            m_maxCount = std::max(1, m_maxCount / 2);
            return true;
        }
        source.position.id = entry.id;
        if (source.position.entriesAdded != -1)
            ++source.position.entriesAdded;
        source.hasUncountedEntries = true;
        if (entry.cutBytes > 0)
            m_intake->countDropped(*ref.key, entry.stamp);
        else
            m_intake->add(*ref.key, entry.stamp, entry.value, entry.bytes);
    }
    return entries.size() == count;
}

void RedisStreamReader::countTrimmed()
{
    for (const std::shared_ptr<Chunk>& chunk : m_chunks) {
        for (const RedisSourceRef& ref : chunk->sources) {
            if (!std::exchange(ref.source().hasUncountedEntries, false))
                continue;
            m_session->send(this, {"XINFO", "STREAM", ref.source().key}, [this, ref](const RedisReply& reply) {
                if (reply.isArray())
                    m_intake->countTrimmed(*ref.key, ref.source().position.countTrimmed(reply));
            });
        }
    }
}

} // namespace Velk
