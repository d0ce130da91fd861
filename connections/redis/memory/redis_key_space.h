// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_KEY_SPACE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_KEY_SPACE_H

#include "redis_source.h"

#include <connections/link/key_kind.h>

#include <QByteArrayList>
#include <QFuture>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace Velk {

class RedisSession;
class RedisUrl;

/// Which keys of a server are the keys of a robot, by name and by list.
class RedisKeySpace
{
public:
    virtual ~RedisKeySpace() = default;

    /// The key space that the URL asks for. The session outlives it.
    static std::unique_ptr<RedisKeySpace> create(RedisSession* session, const RedisUrl& url);
    /// The command on one of its keys that ends the handshake; empty when the keys are on any node.
    static QByteArrayList handshakeCommand(const RedisUrl& url);

    /// The names of one kind. The future gets its one result and finishes, whatever happens: an empty list when the
    /// names cannot be read.
    virtual QFuture<QStringList> fetchNames(KeyKind kind) = 0;
    /// Finishes the lists that are being fetched, with empty ones: the connection is lost.
    virtual void finishLists() = 0;

    /// The bytes of a name of the lists.
    virtual QByteArray rawName(const QString& name) const { return name.toUtf8(); }
    /// Where the samples of a key come from. The same number for every name that a robot lists, in the same order.
    virtual std::vector<RedisSource> sourcesOf(const QByteArray& rawName) const = 0;

    /// One example of each command that a viewer runs, on keys that need not exist, beside those that touch no key.
    virtual std::vector<QByteArrayList> neededCommands() const = 0;
};

} // namespace Velk

#endif
