// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_sampling_group.h"

#include "redis_key_resolver.h"
#include "redis_value.h"

#include <connections/link/unix_time.h>

#include <QSet>

#include <algorithm>
#include <map>
#include <utility>

namespace Velk {

namespace {

// A server runs one command at a time: many short ones let its other clients in between.
constexpr std::size_t maxKeysPerCommand = 500;

bool isFetched(const RedisSource& source)
{
    // What a listed data key does not have yet can be there at the next tick.
    const bool isListedValue = source.hasIndex() && !source.isAlwaysStream && source.isListed;
    return source.type == RedisSource::Value || (source.type == RedisSource::Absent && isListedValue);
}

} // namespace

RedisSamplingGroup::RedisSamplingGroup(RedisSession* session, RedisSampleIntake* intake,
                                       std::shared_ptr<RedisCarryOver> carryOver)
    : m_session(session)
    , m_inquiry(session)
    , m_intake(intake)
    , m_carryOver(std::move(carryOver))
    , m_keysPerCommand(maxKeysPerCommand)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisSamplingGroup::endTick);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisSamplingGroup::endTick);
}

void RedisSamplingGroup::setKeys(const std::vector<RedisWatchedKeyPtr>& keys)
{
    m_keys = keys;
    buildChunks();
}

void RedisSamplingGroup::buildChunks()
{
    m_chunks.clear();
    m_sampledKeys.clear();
    std::map<QByteArray, std::shared_ptr<Chunk>> hashes;
    std::map<QByteArray, QByteArrayList> hashCommands;
    QByteArrayList command;
    std::shared_ptr<Chunk> chunk;
    const auto finishChunk = [&] {
        if (!chunk)
            return;
        chunk->command = RedisSocket::formatted(command);
        m_chunks.push_back(std::move(chunk));
        chunk.reset();
    };

    for (const RedisWatchedKeyPtr& key : m_keys) {
        if (std::any_of(key->sources.begin(), key->sources.end(), isFetched))
            m_sampledKeys.append(key->carried->losses);
        for (std::size_t i = 0; i < key->sources.size(); ++i) {
            const RedisSource& source = key->sources[i];
            if (isFetched(source) && source.isHashField) {
                std::shared_ptr<Chunk>& hash = hashes[source.key];
                if (!hash) {
                    hash = std::make_shared<Chunk>();
                    hashCommands[source.key] = {"HMGET", source.key};
                }
                hash->sources.push_back({key, i});
                hashCommands[source.key].append(source.field);
            } else if (isFetched(source)) {
                if (!chunk) {
                    chunk = std::make_shared<Chunk>();
                    command = {"MGET"};
                }
                chunk->sources.push_back({key, i});
                command.append(source.key);
                if (chunk->sources.size() >= m_keysPerCommand)
                    finishChunk();
            }
        }
    }
    finishChunk();
    for (auto& [key, hash] : hashes) {
        hash->command = RedisSocket::formatted(hashCommands[key]);
        m_chunks.push_back(hash);
    }
}

void RedisSamplingGroup::tick(int periodMs, qint64 missed)
{
    if (m_chunks.empty())
        return;
    countMissedTicks(periodMs, missed);
    if (m_inquiry.isActive() || !m_session->isUp()) {
        const double now = unixTime();
        countTicks(LossCause::SkippedTick, 1, now, now);
    } else {
        sample();
    }
}

void RedisSamplingGroup::countMissedTicks(int periodMs, qint64 count)
{
    if (count == 0 || m_chunks.empty())
        return;
    const double now = unixTime();
    const double period = periodMs / 1000.0;
    countTicks(LossCause::MissedTick, count, now - double(count) * period, now - period);
}

void RedisSamplingGroup::countTicks(LossCause cause, qint64 count, double from, double to)
{
    m_carryOver->ledger->recordTicks(m_sampledKeys, cause, count, from, to);
}

void RedisSamplingGroup::sample()
{
    m_tick = {0.0, m_chunks};
    m_inquiry.ask({"TIME"}, [this](const RedisReply& reply) { onTime(reply); });
    for (const std::shared_ptr<Chunk>& chunk : m_tick.unanswered)
        m_inquiry.askFormatted(chunk->command, [this, chunk](const RedisReply& reply) { onValues(chunk, reply); });
}

void RedisSamplingGroup::onTime(const RedisReply& reply)
{
    if (reply.size() == 2)
        m_tick.stamp = double(reply.at(0).integer()) + double(reply.at(1).integer()) / 1e6;
}

void RedisSamplingGroup::onValues(const std::shared_ptr<Chunk>& sampled, const RedisReply& reply)
{
    const Chunk& chunk = *sampled;
    if (m_tick.stamp == 0.0)
        return; // without the server's time there is no sample, and the refusal has been reported
    const bool isOfAnotherType = reply.isError() && RedisError::of(reply.view()).kind == RedisError::WrongType;
    if (reply.isError() && !isOfAnotherType)
        return;
    m_tick.unanswered.erase(std::remove(m_tick.unanswered.begin(), m_tick.unanswered.end(), sampled),
                            m_tick.unanswered.end());
    if (isOfAnotherType) {
        for (const RedisSourceRef& ref : chunk.sources)
            ref.source().type = RedisSource::Unresolved;
        return;
    }
    bool wasCut = false;
    for (std::size_t i = 0; i < chunk.sources.size(); ++i) {
        const RedisSourceRef& ref = chunk.sources[i];
        if (!ref.key->isWatched)
            continue;
        const RedisReply value = reply.at(qsizetype(i));
        if (value.isError()) {
            m_intake->countDropped(*ref.key, m_tick.stamp);
            // A value that is too long is resolved again before it is fetched again. Otherwise the reply was too long.
            if (RedisError::of(value.view()).valueBytes > RedisKeyResolver::maxValueBytes)
                ref.source().type = RedisSource::Unresolved;
            else
                wasCut = true;
        } else {
            takeValue(ref, value);
        }
    }
    if (wasCut && m_keysPerCommand > 1) {
        m_keysPerCommand = std::max<std::size_t>(1, m_keysPerCommand / 2);
        buildChunks();
    }
}

void RedisSamplingGroup::takeValue(const RedisSourceRef& ref, const RedisReply& reply)
{
    RedisSource& source = ref.source();
    if (reply.isNull()) {
        // Deleted, or of another type now, which MGET answers alike.
        if (source.type == RedisSource::Value)
            source.type = RedisSource::Absent;
        return;
    }
    source.type = RedisSource::Value;
    const bool isSame = source.newestValue.isValid() && reply.view() == source.newestBytes;
    if (!isSame) {
        source.newestBytes = reply.bytes();
        source.newestValue = redisValue(reply.view());
    }
    m_intake->add(*ref.key, m_tick.stamp, source.newestValue, isSame ? 0 : source.newestBytes.size());
}

// All replies are in, or those that are missing do not come.
void RedisSamplingGroup::endTick()
{
    QSet<LossAccount*> keys;
    for (const std::shared_ptr<Chunk>& chunk : std::exchange(m_tick.unanswered, {})) {
        for (const RedisSourceRef& ref : chunk->sources) {
            if (ref.key->isWatched)
                keys.insert(ref.key->carried->losses);
        }
    }
    if (keys.isEmpty())
        return;
    const double now = unixTime();
    m_carryOver->ledger->recordTicks(keys.values().toVector(), LossCause::SkippedTick, 1, now, now);
}

} // namespace Velk
