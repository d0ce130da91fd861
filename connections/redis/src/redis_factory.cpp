// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/redis_factory.h>

#include <connections/redis/redis_link.h>
#include <connections/redis/redis_robot_writer.h>

namespace Velk {

QList<UrlScheme> RedisFactory::schemes() const
{
    return {
        {QStringLiteral("redis"), QStringLiteral("redis://[user[:password]@]host[:6379][/robot][?option=value&…]"),
         tr("a robot whose memory is on a Redis server, or in a cluster of them")},
        {QStringLiteral("rediss"), QStringLiteral("rediss://[user[:password]@]host[:6379][/robot][?option=value&…]"),
         tr("the same over TLS")},
        {QStringLiteral("redis+sentinel"),
         QStringLiteral("redis+sentinel://host[:26379][,host…]/service[/robot][?option=value&…]"),
         tr("the same on the master that sentinels name")},
        {QStringLiteral("rediss+sentinel"),
         QStringLiteral("rediss+sentinel://host[:26379][,host…]/service[/robot][?option=value&…]"),
         tr("the same over TLS, with the sentinels")},
    };
}

std::unique_ptr<RobotLink> RedisFactory::createLink(const QString& url, QString* error) const
{
    return RedisLink::fromUrl(url, error);
}

bool RedisFactory::canWrite() const
{
    return true;
}

std::unique_ptr<RobotWriter> RedisFactory::createWriter(const QString& url, QString* error) const
{
    return RedisRobotWriter::fromUrl(url, error);
}

} // namespace Velk
