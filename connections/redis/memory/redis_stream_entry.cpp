// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_stream_entry.h"

#include "redis_stream_position.h"
#include "redis_value.h"

#include <connections/redis/client/redis_error.h>

#include <QVariantMap>

#include <algorithm>
#include <cmath>

namespace Velk {

RedisStreamEntry RedisStreamEntry::of(const RedisReply& entry)
{
    RedisStreamEntry result;
    result.id = entry.at(0).bytes();
    const RedisReply fields = entry.at(1);
    for (qsizetype i = 0; i < fields.size(); ++i) {
        const RedisReply field = fields.at(i);
        result.bytes += field.view().size();
        if (field.isError())
            result.cutBytes = std::max<qint64>(1, RedisError::of(field.view()).valueBytes);
    }

    bool isNumber = false;
    result.stamp = fields.field("t").bytes().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(result.stamp))
        result.stamp = streamIdSeconds(result.id);

    const RedisReply value = fields.field("v");
    if (!value.isNull()) {
        result.value = redisValue(value.view());
        return result;
    }
    QVariantMap map;
    for (qsizetype i = 0; i + 1 < fields.size(); i += 2)
        map.insert(fields.at(i).text(), redisValue(fields.at(i + 1).view()));
    result.value = map;
    return result;
}

} // namespace Velk
