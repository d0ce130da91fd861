// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_REDIS_FACTORY_H
#define CONNECTIONS_REDIS_REDIS_FACTORY_H

#include <connections/link/connection_factory.h>
#include <connections/redis/redis_export.h>

#include <QCoreApplication>

namespace Velk {

/// Opens robots whose memory is on a Redis server, by the URLs that RedisLink takes.
class REDIS_EXPORT RedisFactory : public ConnectionFactory
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RedisFactory)

public:
    QList<UrlScheme> schemes() const override;
    std::unique_ptr<RobotLink> createLink(const QString& url, QString* error) const override;
    bool canWrite() const override;
    std::unique_ptr<RobotWriter> createWriter(const QString& url, QString* error) const override;
};

} // namespace Velk

#endif
