#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_MEMORY_INTERFACE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_MEMORY_INTERFACE_H

#include "redis_key_lists.h"
#include "redis_layout.h"
#include "redis_metadata.h"
#include "redis_sampler.h"
#include "redis_sampling_history.h"

#include <connections/redis/client/redis_session.h>
#include <connections/redis/client/redis_url.h>
#include <robotconnection/memory_interface.h>

#include <QPointer>

#include <memory>
#include <optional>

namespace Velk {

class RedisPlainKeys;

/// The memory service of one connection. After end() it answers every call with what the contract allows of a service
/// that fails, so that whoever still holds it comes to no harm.
class RedisMemoryInterface : public MemoryInterface
{
    Q_OBJECT

public:
    /// The session outlives this object's use: end() comes before the session goes. `metadata` is what the robot says
    /// about itself.
    RedisMemoryInterface(RedisSession* session, const RedisUrl& url, const RedisMetadata& metadata,
                         std::shared_ptr<RedisSamplingHistory> history);
    ~RedisMemoryInterface() override;

    /// The connection is lost or closed. Unfinished lists finish empty. When it is to come back, what was gathered is
    /// delivered first, and streams will be read on where they are.
    void end(bool comesBack);

    QFuture<QStringList> getDataList() override;
    QFuture<QStringList> getEventList() override;
    QFuture<QStringList> getMicroEventList() override;
    void watchKey(const QString& name, int period) override;
    void unwatchKey(const QString& name) override;
    void unwatchAll() override;
    void startWatcher(int gatherPeriod, int samplingPeriod) override;
    void stopWatcher() override;
    void setGatherPeriod(int period) override;
    void setSamplingPeriod(int period) override;
    void isRealTimeSupported(QObject* receiver, const char* member) override;

Q_SIGNALS:
    /// isRealTimeSupported() has queued an answer.
    void realTimeAnswered(bool isSupported);

private:
    void answer(QObject* receiver, const QByteArray& member, bool isSupported);
    QByteArray rawName(const QString& name) const;
    std::vector<RedisSource> sourcesOf(const QByteArray& rawName) const;

    QPointer<RedisSession> m_session;
    RedisLayout m_layout;
    bool m_isPlain;
    RedisMetadata m_metadata;
    // All null after end().
    std::unique_ptr<RedisKeyLists> m_lists;
    std::unique_ptr<RedisPlainKeys> m_plainKeys;
    std::unique_ptr<RedisSampler> m_sampler;
};

} // namespace Velk

#endif
