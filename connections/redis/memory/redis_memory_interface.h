// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_MEMORY_INTERFACE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_MEMORY_INTERFACE_H

#include "redis_carry_over.h"
#include "redis_key_space.h"
#include "redis_metadata.h"
#include "redis_sampler.h"

#include <connections/link/real_time_question.h>
#include <connections/redis/client/redis_round_trips.h>
#include <connections/redis/client/redis_url.h>
#include <robotconnection/memory_interface.h>

#include <memory>

namespace Velk {

/// The memory service of one connection. After end() every call is safe and has no effect; lists are empty, and
/// sampling in real time is not supported.
class RedisMemoryInterface : public MemoryInterface
{
    Q_OBJECT

public:
    /// end() has to be called before the session is deleted. `metadata` is what the robot says
    /// about itself.
    RedisMemoryInterface(RedisSession* session, const RedisUrl& url, const RedisMetadata& metadata,
                         std::shared_ptr<RedisCarryOver> carryOver);
    ~RedisMemoryInterface() override;

    /// The connection is lost or closed. Unfinished lists finish empty. If the link will reconnect, what was gathered
    /// is delivered first, and streams will be read on where they are.
    void end(bool comesBack);

    /// As RedisKeySpace::neededCommands(); none after end().
    std::vector<QByteArrayList> neededCommands() const;

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
    /// An answer to isRealTimeSupported() is queued. All are the same.
    void realTimeAnswered(bool isSupported);

private:
    QFuture<QStringList> fetchNames(KeyKind kind);
    void measureRealTime();

    std::unique_ptr<RealTimeQuestion> m_realTime;
    // All null after end().
    std::unique_ptr<RedisRoundTrips> m_roundTrips;
    std::unique_ptr<RedisKeySpace> m_keySpace;
    std::unique_ptr<RedisSampler> m_sampler;
};

} // namespace Velk

#endif
