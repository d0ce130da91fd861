// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_METADATA_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_METADATA_H

#include <connections/redis/client/redis_reply.h>

#include <QByteArrayList>
#include <QString>

#include <optional>

namespace Velk {

class RedisLayout;

/// The facts in a robot's metadata.
struct RedisMetadata
{
    QString robotName;                       ///< for people; empty if not given
    std::optional<bool> isRealTimeSupported; ///< no value if not given

    /// The command that reads the metadata.
    static QByteArrayList command(const RedisLayout& layout);
    /// The metadata in the reply to command(). An error contains none.
    static RedisMetadata of(const RedisReply& reply);
};

} // namespace Velk

#endif
