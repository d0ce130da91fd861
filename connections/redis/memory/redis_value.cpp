// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_value.h"

#include <connections/link/json_value.h>

#include <optional>

namespace Velk {

QVariant redisValue(QByteArrayView bytes)
{
    const std::optional<QVariant> value = JsonValue::parse(QByteArray::fromRawData(bytes.data(), bytes.size()));
    return value ? *value : QString::fromUtf8(bytes);
}

} // namespace Velk
