// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_VALUE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_VALUE_H

#include <QByteArray>
#include <QByteArrayView>
#include <QVariant>

namespace Velk {

/// The value that a robot's memory holds as bytes. JSON becomes the matching variant: booleans, whole numbers (qint64),
/// other numbers, text, lists, maps; null becomes an invalid variant. Anything else is text; bytes that are not UTF-8
/// are shown in it as U+FFFD.
QVariant redisValue(QByteArrayView bytes);

/// The JSON of a value, in the form that redisValue() reads back: a floating-point number keeps its point. What JSON
/// has no form for is written as its text.
QByteArray redisBytes(const QVariant& value);

} // namespace Velk

#endif
