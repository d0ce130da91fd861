// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_LAID_OUT_KEYS_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_LAID_OUT_KEYS_H

#include "redis_key_lists.h"
#include "redis_key_space.h"
#include "redis_layout.h"

namespace Velk {

/// The keys of a memory that is laid out for robots: each name has an index set, and a key, of each kind.
class RedisLaidOutKeys : public RedisKeySpace
{
public:
    /// The session outlives this object.
    RedisLaidOutKeys(RedisSession* session, const RedisLayout& layout);

    QFuture<QStringList> fetchNames(KeyKind kind) override;
    void finishLists() override { m_lists.finishAll(); }
    std::vector<RedisSource> sourcesOf(const QByteArray& rawName) const override;
    std::vector<QByteArrayList> neededCommands() const override;

private:
    RedisLayout m_layout;
    RedisKeyLists m_lists;
};

} // namespace Velk

#endif
