// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_key_space.h"

#include "redis_laid_out_keys.h"
#include "redis_layout.h"
#include "redis_metadata.h"
#include "redis_plain_keys.h"

#include <connections/redis/client/redis_url.h>

namespace Velk {

std::unique_ptr<RedisKeySpace> RedisKeySpace::create(RedisSession* session, const RedisUrl& url)
{
    if (url.isPlain())
        return std::make_unique<RedisPlainKeys>(session, url.plainPattern().toUtf8());
    return std::make_unique<RedisLaidOutKeys>(session, RedisLayout(url.robot()));
}

QByteArrayList RedisKeySpace::handshakeCommand(const RedisUrl& url)
{
    return url.isPlain() ? QByteArrayList() : RedisMetadata::command(RedisLayout(url.robot()));
}

} // namespace Velk
