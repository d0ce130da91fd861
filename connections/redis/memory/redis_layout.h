#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_LAYOUT_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_LAYOUT_H

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
/// Every kind has keys of its own, so one name may be of several kinds: whoever watches it gets the samples of all of
/// them. t is seconds since the epoch; where it is missing, the millisecond of the entry's id stands in.
class RedisLayout
{
public:
    explicit RedisLayout(const QString& robot)
        : m_prefix("mem:{" + robot.toUtf8() + "}:")
    {}

    QByteArray metadata() const { return m_prefix + "meta"; }
    QByteArray dataIndex() const { return m_prefix + "data"; }
    QByteArray eventIndex() const { return m_prefix + "event"; }
    QByteArray microEventIndex() const { return m_prefix + "microevent"; }

    QByteArray data(const QByteArray& name) const { return m_prefix + "v:" + name; }
    QByteArray event(const QByteArray& name) const { return m_prefix + "e:" + name; }
    QByteArray microEvent(const QByteArray& name) const { return m_prefix + "m:" + name; }

private:
    QByteArray m_prefix;
};

} // namespace Velk

#endif
