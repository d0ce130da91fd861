// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_VALUE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_VALUE_H

#include <QByteArrayView>
#include <QVariant>

namespace Velk {

/// The value that a robot's memory holds as bytes: that of the JSON (connections/link/json_value.h). Anything else is
/// text; bytes that are not UTF-8 are shown in it as U+FFFD.
QVariant redisValue(QByteArrayView bytes);

} // namespace Velk

#endif
