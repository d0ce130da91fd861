// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_KEY_RESOLVER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_KEY_RESOLVER_H

#include "redis_sample_intake.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_inquiry.h>

#include <QObject>
#include <QStringList>

#include <deque>
#include <utility>
#include <vector>

namespace Velk {

/// Resolves the sources of watched keys: whether the robot lists the name, which type the server has there, how long a
/// value is, and where a stream is to be read from. Works through its keys in portions, so that many of them do not
/// keep the server from its other clients.
class RedisKeyResolver : public QObject
{
    Q_OBJECT

public:
    /// Both outlive this object.
    RedisKeyResolver(RedisSession* session, RedisSampleIntake* intake);

    /// Resolves the keys; their sources may change at any time until resolved().
    void resolve(const std::vector<RedisWatchedKeyPtr>& keys);
    /// Forgets the keys that are not resolved yet.
    void clear();

    /// Whether the key has to be resolved again sooner or later: it can appear, or become usable.
    static bool isUnresolved(const RedisWatchedKey& key);

    /// Longest value that is fetched, in bytes.
    static constexpr qint64 maxValueBytes = RedisReplyLimiter::Limits().valueBytes;

Q_SIGNALS:
    /// A portion of the keys is resolved.
    void resolved();

private:
    enum Phase
    {
        AskingTypes,
        AskingDetails
    };

    void startPortion();
    void onAnswered();
    void onInterrupted();
    void askTypes();
    void askIndex(std::size_t sourceIndex);
    void askDetails();
    void finishPortion();
    void onType(RedisWatchedKey& key, RedisSource& source, const QByteArray& type);
    void onStreamInfo(RedisWatchedKey& key, RedisSource& source, const RedisReply& info);
    void onLength(RedisWatchedKey& key, RedisSource& source, qint64 length, bool isKnown);
    void reportUnusable(const RedisSource& source, const QByteArray& type);
    void reportOlderStreams();

    RedisSession* m_session;
    RedisSampleIntake* m_intake;
    RedisInquiry m_inquiry;
    std::deque<RedisWatchedKeyPtr> m_waiting;
    std::vector<RedisWatchedKeyPtr> m_portion; // empty: nothing is asked at present
    Phase m_phase = AskingTypes;
    std::vector<std::pair<RedisSourceRef, QByteArray>> m_types; // of the portion's sources
    QStringList m_olderNames;                                   // of the portion's streams that came back older
    double m_olderSince = 0.0;                                  // what was read before is not missing
};

} // namespace Velk

#endif
