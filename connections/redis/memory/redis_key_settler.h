#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_KEY_SETTLER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_KEY_SETTLER_H

#include "redis_layout.h"
#include "redis_sample_queue.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_session.h>

#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace Velk {

/// Finds out what the sources of watched keys are: of what natures the robot lists the name, what the server holds
/// there, how long it is, and where a stream is to be read from. Works through its keys in portions, so that many of
/// them do not keep the server from its other clients.
class RedisKeySettler : public QObject
{
    Q_OBJECT

public:
    /// All three outlive this object.
    RedisKeySettler(RedisSession* session, RedisSampleQueue* queue, const RedisLayout& layout);

    /// Settles the keys; their sources may change at any time until settled() names them.
    void settle(const std::vector<RedisWatchedKeyPtr>& keys);
    /// Forgets the keys that are not settled yet.
    void clear();

    /// Whether the key has to be settled again sooner or later: it can appear, or become usable.
    static bool isOpen(const RedisWatchedKey& key);

    /// Longest value that is fetched, in bytes.
    static constexpr qint64 maxValueBytes = RedisReplyLimiter::Limits().valueBytes;

    /// Is given each portion when it is done.
    std::function<void(const std::vector<RedisWatchedKeyPtr>&)> settled;

private:
    struct Round;

    void startRound();
    static void startNextPhase(const std::shared_ptr<Round>& round);
    void ask(const std::shared_ptr<Round>& round, const QByteArrayList& command, RedisSocket::Callback answer);
    void askTypes(const std::shared_ptr<Round>& round);
    void askDetails(const std::shared_ptr<Round>& round);
    void onType(RedisWatchedKey& key, RedisSource& source, const QByteArray& type);
    void onStreamInfo(RedisWatchedKey& key, RedisSource& source, const RedisReply& info);
    void onLength(RedisWatchedKey& key, RedisSource& source, qint64 length, bool isKnown);
    void reportUnusable(const RedisSource& source, const QByteArray& type);

    RedisSession* m_session;
    RedisSampleQueue* m_queue;
    RedisLayout m_layout;
    std::deque<RedisWatchedKeyPtr> m_waiting;
    std::shared_ptr<Round> m_round; // null: nothing is asked at present
};

} // namespace Velk

#endif
