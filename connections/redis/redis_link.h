// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_REDIS_LINK_H
#define CONNECTIONS_REDIS_REDIS_LINK_H

#include <connections/link/robot_link.h>
#include <connections/redis/redis_export.h>
#include <connections/redis/redis_server_report.h>

#include <QString>

#include <functional>
#include <memory>

namespace Velk {

class RedisUrl;

/// The link to a robot whose memory is kept on a Redis server, by a group of servers under sentinels, or in a cluster
/// (docs/redis-robot-memory.md says how).
///
/// Data keys are sampled at the watcher's sampling period. If that period is 0, each key is sampled at the period of
/// its watchKey(). Events, and data keys that are streams, are read on from where they were, across a reconnection too.
/// Time stamps are seconds since the Unix epoch, by the producer's clock or else by the server's, strictly ascending
/// for each key. One batch is delivered per gather period while the watcher runs, an empty one if there is nothing to
/// deliver. When the connection is lost, what was gathered is delivered first. Stopping the watcher discards it.
///
/// The connection counts as established when the server has answered a PING after the authentication, and as lost on
/// an error of the socket or when one of the link's own PINGs is not answered within the pong-timeout of the
/// URL. Nothing here blocks.
class REDIS_EXPORT RedisLink : public RobotLink
{
    Q_OBJECT

public:
    /// The link that a URL "redis://…", "rediss://…", "redis+sentinel://…" or "rediss+sentinel://…" names; null when
    /// the URL is not valid, with *error, if given, set to a sentence that says what is wrong and what is possible. The
    /// sentence holds no password.
    static std::unique_ptr<RedisLink> fromUrl(const QString& url, QString* error);
    /// Closes without a signal.
    ~RedisLink() override;

    QString url() const override;

    /// Finds out about the server and calls `done`, once, from the event loop; nothing when the link is not connected,
    /// or when the connection is lost meanwhile. When a cluster moves the connection to another node meanwhile, the
    /// report is about that node.
    void requestServerReport(std::function<void(const RedisServerReport&)> done);
    /// requestServerReport() as printable lines.
    void requestReport(std::function<void(const LinkReport&)> done) override;

protected:
    void startConnecting() override;
    void stopConnecting() override;
    void endService(MemoryInterface& service, Ending ending) override;

private:
    explicit RedisLink(const RedisUrl& url);

    void onEstablished();

    struct Private;
    const std::unique_ptr<Private> d; // keeps the socket's and the protocol reader's headers out of this one
};

} // namespace Velk

#endif
