// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_LAYOUT_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_LAYOUT_H

#include <connections/link/key_kind.h>

#include <QByteArray>
#include <QString>

namespace Velk {

/// The keys of one robot's memory on a Redis server. For a robot r, everything starts with "mem:{r}:", the braces
/// keeping the robot on one node of a cluster:
///
///     mem:{r}:data, mem:{r}:event, mem:{r}:microevent   sets: the names of the keys of each kind
///     mem:{r}:v:NAME   a data key: a string that holds JSON, or a stream whose entries have the fields t and v
///     mem:{r}:e:NAME   an event key: a stream with the fields t and v
///     mem:{r}:m:NAME   a micro-event key: a stream with the fields t and v
///     mem:{r}:meta     a hash about the robot: realtime (0 or 1), name, started
///
/// Every kind has keys of its own, so one name may be of several kinds: viewers of it get the samples of all of them.
/// t is seconds since the Unix epoch; where it is missing, the millisecond of the entry's id is the time.
class RedisLayout
{
public:
    explicit RedisLayout(const QString& robot)
        : m_prefix("mem:{" + robot.toUtf8() + "}:")
    {}

    QByteArray metadata() const { return m_prefix + "meta"; }
    /// The set of the names of a kind.
    QByteArray index(KeyKind kind) const
    {
        return m_prefix + (kind == KeyKind::Data ? "data" : kind == KeyKind::Event ? "event" : "microevent");
    }
    /// The key that holds the value or the occurrences of a name.
    QByteArray key(KeyKind kind, const QByteArray& name) const
    {
        return m_prefix + (kind == KeyKind::Data ? "v:" : kind == KeyKind::Event ? "e:" : "m:") + name;
    }

private:
    QByteArray m_prefix;
};

} // namespace Velk

#endif
