// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_key_resolver.h"

#include "redis_stream_entry.h"

#include <connections/link/unix_time.h>

#include <QDateTime>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr std::size_t keysPerPortion = 200;

} // namespace

RedisKeyResolver::RedisKeyResolver(RedisSession* session, RedisSampleIntake* intake)
    : m_session(session)
    , m_intake(intake)
    , m_inquiry(session)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisKeyResolver::onAnswered);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisKeyResolver::onInterrupted);
}

void RedisKeyResolver::resolve(const std::vector<RedisWatchedKeyPtr>& keys)
{
    m_waiting.insert(m_waiting.end(), keys.begin(), keys.end());
    startPortion();
}

void RedisKeyResolver::clear()
{
    m_waiting.clear();
    m_portion.clear();
    m_olderNames.clear();
    m_inquiry.cancel();
}

bool RedisKeyResolver::isUnresolved(const RedisWatchedKey& key)
{
    const bool isListed =
        std::any_of(key.sources.begin(), key.sources.end(), [](const RedisSource& source) { return source.isListed; });
    return std::any_of(key.sources.begin(), key.sources.end(), [isListed](const RedisSource& source) {
        switch (source.type) {
        case RedisSource::Unresolved:
        case RedisSource::TooLong:
        case RedisSource::Unusable:
            return true;
        case RedisSource::Absent:
            return source.isListed || !isListed;
        default:
            return false;
        }
    });
}

void RedisKeyResolver::startPortion()
{
    if (!m_portion.empty())
        return;
    while (!m_waiting.empty() && m_portion.size() < keysPerPortion) {
        if (m_waiting.front()->isWatched)
            m_portion.push_back(m_waiting.front());
        m_waiting.pop_front();
    }
    if (!m_portion.empty())
        askTypes();
}

void RedisKeyResolver::onInterrupted()
{
    m_waiting.insert(m_waiting.begin(), m_portion.begin(), m_portion.end());
    m_portion.clear();
    startPortion();
}

void RedisKeyResolver::onAnswered()
{
    if (m_phase == AskingTypes)
        askDetails();
    else
        finishPortion();
}

void RedisKeyResolver::askTypes()
{
    m_phase = AskingTypes;
    m_types.clear();
    // Every key of a robot has the same sources in the same order.
    for (std::size_t i = 0; i < m_portion.front()->sources.size(); ++i) {
        if (m_portion.front()->sources[i].hasIndex())
            askIndex(i);
    }
    for (const RedisWatchedKeyPtr& key : m_portion) {
        for (std::size_t i = 0; i < key->sources.size(); ++i) {
            m_inquiry.ask({"TYPE", key->sources[i].key}, [this, ref = RedisSourceRef{key, i}](const RedisReply& reply) {
                if (!reply.isError())
                    m_types.emplace_back(ref, reply.bytes());
            });
        }
    }
}

// Asks which names of the portion are in the index set of these sources.
void RedisKeyResolver::askIndex(std::size_t sourceIndex)
{
    QByteArrayList command = {"SMISMEMBER", m_portion.front()->sources[sourceIndex].index};
    for (const RedisWatchedKeyPtr& key : m_portion)
        command.append(key->rawName);
    m_inquiry.ask(command, [this, sourceIndex](const RedisReply& reply) {
        for (std::size_t k = 0; k < m_portion.size(); ++k)
            m_portion[k]->sources[sourceIndex].isListed = reply.at(qsizetype(k)).integer() == 1;
    });
}

void RedisKeyResolver::askDetails()
{
    m_phase = AskingDetails;
    for (const auto& [ref, type] : m_types) {
        RedisSource& source = ref.source();
        const bool wasTooLong = source.type == RedisSource::TooLong;
        onType(*ref.key, source, type);
        if (type == "stream" && source.type == RedisSource::Stream) {
            m_inquiry.ask({"XINFO", "STREAM", source.key}, [this, ref = ref](const RedisReply& reply) {
                if (reply.isArray())
                    onStreamInfo(*ref.key, ref.source(), reply);
                else
                    ref.source().type = RedisSource::Unresolved;
            });
        } else if (source.type == RedisSource::Value) {
            const QByteArrayList command = source.isHashField ? QByteArrayList{"HSTRLEN", source.key, source.field}
                                                              : QByteArrayList{"STRLEN", source.key};
            m_inquiry.ask(command, [this, ref = ref, wasTooLong](const RedisReply& reply) {
                onLength(*ref.key, ref.source(), reply.integer(), wasTooLong);
            });
        }
    }
    if (!m_inquiry.isActive())
        finishPortion();
}

void RedisKeyResolver::finishPortion()
{
    for (const RedisWatchedKeyPtr& key : m_portion)
        key->wasResolved = true;
    m_portion.clear();
    reportOlderStreams();
    emit resolved();
    startPortion();
}

void RedisKeyResolver::onType(RedisWatchedKey& key, RedisSource& source, const QByteArray& type)
{
    if (type != "stream") {
        // Whatever stream appears here later is new from its first entry on.
        source.position = RedisStreamPosition();
        source.hasPosition = true;
        key.carried->positions.remove(source.key);
    }
    if (type == "none") {
        source.type = source.isAlwaysStream && source.isListed ? RedisSource::Stream : RedisSource::Absent;
        return;
    }
    const bool isUsable =
        source.isHashField ? type == "hash" : type == "stream" || (type == "string" && !source.isAlwaysStream);
    if (!source.hasIndex())
        source.isListed = isUsable;
    if (isUsable) {
        source.type = type == "stream" ? RedisSource::Stream : RedisSource::Value;
        return;
    }
    if (source.isHashField) {
        source.type = RedisSource::Absent;
        return;
    }
    // A key without an index may be of any type.
    if (source.type != RedisSource::Unusable && source.hasIndex())
        reportUnusable(source, type);
    source.type = RedisSource::Unusable;
}

void RedisKeyResolver::onStreamInfo(RedisWatchedKey& key, RedisSource& source, const RedisReply& info)
{
    const auto carried = key.carried->positions.constFind(source.key);
    if (!source.hasPosition && carried != key.carried->positions.constEnd()) {
        source.position = *carried;
        source.hasPosition = true;
        key.carried->positions.erase(carried);
    }
    if (source.hasPosition) {
        if (source.position.isAheadOf(info)) {
            const double readUntil = streamIdSeconds(source.position.id);
            m_olderSince = m_olderNames.isEmpty() ? readUntil : std::min(m_olderSince, readUntil);
            m_olderNames.append(key.name);
        }
        m_intake->countTrimmed(key, source.position.countTrimmed(info));
        return;
    }
    source.position = RedisStreamPosition::endOf(info);
    source.hasPosition = true;
    // A data key has a value before anything changes; an event is only what happens from now on.
    const RedisStreamEntry newest = RedisStreamEntry::of(info.field("last-entry"));
    if (key.isWatched && source.hasIndex() && !source.isAlwaysStream && !newest.id.isEmpty() && newest.cutBytes == 0)
        m_intake->add(key, newest.stamp, newest.value, newest.bytes);
}

void RedisKeyResolver::onLength(RedisWatchedKey& key, RedisSource& source, qint64 length, bool isKnown)
{
    if (length <= maxValueBytes)
        return;
    source.type = RedisSource::TooLong;
    if (!isKnown)
        m_session->report(
            tr("Redis: value too long"),
            tr("The value of \"%1\" on %2 is %3 MiB long and is not fetched; at most %4 MiB are. It is looked at "
               "again from time to time.")
                .arg(key.name, m_session->server(), QString::number(length / (1024 * 1024)),
                     QString::number(maxValueBytes / (1024 * 1024))));
}

void RedisKeyResolver::reportUnusable(const RedisSource& source, const QByteArray& type)
{
    m_session->report(
        tr("Redis: key of another type"),
        (source.isAlwaysStream
             ? tr("The key %1 on %2 holds a %3; an event's key is a stream. Check which program writes it.")
             : tr("The key %1 on %2 holds a %3; a data key's is a string or a stream. Check which program writes it."))
            .arg(QString::fromUtf8(source.key), m_session->server(), QString::fromUtf8(type)));
}

void RedisKeyResolver::reportOlderStreams()
{
    const QStringList names = std::exchange(m_olderNames, {});
    if (names.isEmpty())
        return;
    const auto timeText = [](double seconds) {
        return QDateTime::fromMSecsSinceEpoch(qint64(seconds * 1000)).toString(Qt::ISODateWithMs);
    };
    m_session->report(
        tr("Redis: older data"),
        tr("%1 has come back with older data: of %2, occurrences and samples from %3 to %4 may be missing.")
            .arg(m_session->server(),
                 names.size() == 1 ? QLatin1Char('"') + names.first() + QLatin1Char('"')
                                   : tr("%1 keys").arg(names.size()),
                 timeText(m_olderSince), timeText(unixTime())));
}

} // namespace Velk
