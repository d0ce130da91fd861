// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_stream_position.h"

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

std::pair<quint64, quint64> numbers(QByteArrayView id)
{
    const QByteArray text = id.toByteArray();
    const qsizetype dash = text.indexOf('-');
    return dash == -1 ? std::make_pair(text.toULongLong(), quint64(0))
                      : std::make_pair(text.left(dash).toULongLong(), text.mid(dash + 1).toULongLong());
}

// More than any stream ever has, and far from where counting overflows.
constexpr qint64 maxEntriesAdded = qint64(1) << 60;

// How many entries were ever added: servers before Redis 7 do not say.
qint64 entriesAddedTo(const RedisReply& streamInfo)
{
    const RedisReply added = streamInfo.field("entries-added");
    const bool isCount = !added.isNull() && added.integer() >= 0 && added.integer() <= maxEntriesAdded;
    return isCount ? added.integer() : -1;
}

} // namespace

RedisStreamPosition RedisStreamPosition::endOf(const RedisReply& streamInfo)
{
    RedisStreamPosition position;
    position.id = streamInfo.field("last-generated-id").bytes();
    position.entriesAdded = entriesAddedTo(streamInfo);
    return position;
}

qint64 RedisStreamPosition::countTrimmed(const RedisReply& streamInfo)
{
    const QByteArray newestId = streamInfo.field("last-generated-id").bytes();
    const qint64 added = entriesAddedTo(streamInfo);
    if (isOlderStreamId(newestId, id)) {
        id = "0-0";
        entriesAdded = added == -1 ? -1 : 0;
    }
    if (added == -1 || entriesAdded == -1)
        return 0;
    if (added < entriesAdded)
        entriesAdded = newestId == id ? added : 0;

    // At the end of the stream all entries are behind us, read or discarded. Before it, those are certainly discarded
    // that were added before the oldest one that is still there.
    const qint64 length = std::clamp<qint64>(streamInfo.field("length").integer(), 0, added);
    const qint64 behind = newestId == id ? added : added - length;
    if (behind <= entriesAdded)
        return 0;
    return behind - std::exchange(entriesAdded, behind);
}

bool isOlderStreamId(QByteArrayView a, QByteArrayView b)
{
    return numbers(a) < numbers(b);
}

double streamIdSeconds(QByteArrayView id)
{
    return double(numbers(id).first) / 1000.0;
}

} // namespace Velk
