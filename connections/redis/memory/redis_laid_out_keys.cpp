// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_laid_out_keys.h"

namespace Velk {

RedisLaidOutKeys::RedisLaidOutKeys(RedisSession* session, const RedisLayout& layout)
    : m_layout(layout)
    , m_lists(session)
{}

QFuture<QStringList> RedisLaidOutKeys::fetchNames(KeyKind kind)
{
    return m_lists.fetch(m_layout.index(kind));
}

std::vector<RedisSource> RedisLaidOutKeys::sourcesOf(const QByteArray& rawName) const
{
    std::vector<RedisSource> sources;
    for (const KeyKind kind : keyKinds) {
        RedisSource source;
        source.key = m_layout.key(kind, rawName);
        source.index = m_layout.index(kind);
        source.isAlwaysStream = kind != KeyKind::Data;
        sources.push_back(source);
    }
    return sources;
}

std::vector<QByteArrayList> RedisLaidOutKeys::neededCommands() const
{
    const QByteArray key = m_layout.key(KeyKind::Data, "velk");
    const QByteArray index = m_layout.index(KeyKind::Data);
    return {{"TYPE", key},
            {"MGET", key},
            {"XREAD", "COUNT", "1", "STREAMS", key, "0-0"},
            {"XINFO", "STREAM", key},
            {"SCARD", index},
            // On a hash: the server checks the permission before the type, and sends no names.
            {"SMEMBERS", m_layout.metadata()},
            {"SSCAN", index, "0"},
            {"SMISMEMBER", index, "velk"},
            {"HMGET", m_layout.metadata(), "name"}};
}

} // namespace Velk
