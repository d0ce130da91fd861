// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_metadata.h"

#include "redis_layout.h"

namespace Velk {

namespace {

std::optional<bool> flag(const QByteArray& text)
{
    const QByteArray lower = text.toLower();
    if (lower == "1" || lower == "true")
        return true;
    if (lower == "0" || lower == "false")
        return false;
    return std::nullopt;
}

} // namespace

QByteArrayList RedisMetadata::command(const RedisLayout& layout)
{
    return {"HMGET", layout.metadata(), "realtime", "name"};
}

RedisMetadata RedisMetadata::of(const RedisReply& reply)
{
    RedisMetadata metadata;
    metadata.isRealTimeSupported = flag(reply.at(0).bytes());
    if (reply.at(1).isText())
        metadata.robotName = reply.at(1).text();
    return metadata;
}

} // namespace Velk
