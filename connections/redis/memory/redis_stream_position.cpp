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

// More than any stream has; sums of such numbers do not overflow.
constexpr qint64 maxEntriesAdded = qint64(1) << 60;

// How many entries were ever added: servers before Redis 7 do not say.
qint64 entriesAddedTo(const RedisReply& streamInfo)
{
    const RedisReply added = streamInfo.field("entries-added");
    const bool isCount = !added.isNull() && added.integer() >= 0 && added.integer() <= maxEntriesAdded;
    return isCount ? added.integer() : -1;
}

// Ids are made from the clock unless a producer chooses its own: milliseconds since 1970, here later than 2001.
bool isMadeFromClock(QByteArrayView id)
{
    return numbers(id).first >= 1000000000000;
}

} // namespace

RedisStreamPosition RedisStreamPosition::endOf(const RedisReply& streamInfo)
{
    RedisStreamPosition position;
    position.id = streamInfo.field("last-generated-id").bytes();
    position.entriesAdded = entriesAddedTo(streamInfo);
    return position;
}

bool RedisStreamPosition::isAheadOf(const RedisReply& streamInfo) const
{
    const QByteArray newestId = streamInfo.field("last-generated-id").bytes();
    // A stream that was created later has newer ids, if they are made from the clock.
    if (isOlderStreamId(newestId, id))
        return isMadeFromClock(newestId);
    const qint64 added = entriesAddedTo(streamInfo);
    const QByteArray oldestId = streamInfo.field("first-entry").at(0).bytes();
    return newestId != id && added != -1 && added < entriesAdded && !oldestId.isEmpty() && isMadeFromClock(oldestId) &&
           !isOlderStreamId(id, oldestId);
}

qint64 RedisStreamPosition::countTrimmed(const RedisReply& streamInfo)
{
    const QByteArray newestId = streamInfo.field("last-generated-id").bytes();
    const qint64 added = entriesAddedTo(streamInfo);
    if (isAheadOf(streamInfo)) {
        const bool isAtEnd = isOlderStreamId(newestId, id);
        id = isAtEnd ? newestId : id;
        entriesAdded = isAtEnd ? added : -1;
        return 0;
    }
    if (isOlderStreamId(newestId, id)) {
        id = "0-0";
        entriesAdded = added == -1 ? -1 : 0;
    }
    if (added == -1)
        return 0;
    // If everything was read, all other entries were discarded. Otherwise those older than the oldest remaining entry
    // were.
    if (newestId == id) {
        const qint64 before = std::exchange(entriesAdded, added);
        return before == -1 ? 0 : std::max<qint64>(0, added - before);
    }
    if (entriesAdded == -1)
        return 0;
    if (added < entriesAdded)
        entriesAdded = 0;
    const qint64 length = std::clamp<qint64>(streamInfo.field("length").integer(), 0, added);
    const qint64 behind = added - length;
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
