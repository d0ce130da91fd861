// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_READER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_READER_H

#include "redis_sample_intake.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_inquiry.h>

#include <QHash>
#include <QObject>

#include <memory>
#include <vector>

namespace Velk {

/// Reads the new entries of streams. Entries for which the intake has no room stay on the server until there is.
class RedisStreamReader : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    RedisStreamReader(RedisSession* session, RedisSampleIntake* intake);

    void setSources(const std::vector<RedisSourceRef>& sources);
    /// Drops the sources, and the replies that are due for them.
    void clear();

    /// Fetches what is new. Nothing while an earlier fetch goes on.
    void read();

    /// Asks, for the streams that were read since the last time, what the server had discarded before.
    void countTrimmed();

private:
    struct Chunk
    {
        std::vector<RedisSourceRef> sources;
        QHash<QByteArray, std::size_t> indexOfKey;
    };

    void readChunk(const std::shared_ptr<Chunk>& chunk);
    void onReply(const std::shared_ptr<Chunk>& chunk, int count, const RedisReply& reply);
    bool takeEntries(const RedisSourceRef& ref, const RedisReply& entries, int count);

    RedisSession* m_session;
    RedisInquiry m_inquiry;
    RedisSampleIntake* m_intake;
    std::vector<std::shared_ptr<Chunk>> m_chunks;
    int m_maxCount;
};

} // namespace Velk

#endif
