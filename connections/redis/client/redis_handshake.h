// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_HANDSHAKE_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_HANDSHAKE_H

#include "redis_reply.h"

#include <QByteArrayList>

#include <functional>

namespace Velk {

/// The command with which every handshake ends. The owner of the connection chooses it: it reads one of the keys that
/// the owner works with, and a cluster redirects it to the node that has them.
struct RedisHandshake
{
    QByteArrayList command; ///< empty: the keys are on any node, and a cluster is not followed
    /// Gets the reply: an error when the key may not be read or is of another type, which does not end the attempt.
    std::function<void(const RedisReply&)> onReply;
};

} // namespace Velk

#endif
