#include "redis_key_settler.h"

#include "redis_stream_entry.h"

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr std::size_t keysPerRound = 200;

bool isLaidOut(const RedisSource& source)
{
    return source.nature == RedisSource::Data || source.nature == RedisSource::Event ||
           source.nature == RedisSource::MicroEvent;
}

bool isAlwaysStream(const RedisSource& source)
{
    return source.nature == RedisSource::Event || source.nature == RedisSource::MicroEvent;
}

} // namespace

// A portion of the keys, and how many answers about them are due in the present phase.
struct RedisKeySettler::Round
{
    std::vector<RedisWatchedKeyPtr> keys;
    int outstanding = 0;
    std::function<void()> next;
    std::vector<std::pair<RedisSourceRef, QByteArray>> types;
};

RedisKeySettler::RedisKeySettler(RedisSession* session, RedisSampleQueue* queue, const RedisLayout& layout)
    : m_session(session)
    , m_queue(queue)
    , m_layout(layout)
{
    connect(session, &RedisSession::replaced, this, [this] {
        if (!m_round)
            return;
        const std::vector<RedisWatchedKeyPtr> keys = m_round->keys;
        m_round.reset();
        m_waiting.insert(m_waiting.begin(), keys.begin(), keys.end());
        startRound();
    });
}

void RedisKeySettler::settle(const std::vector<RedisWatchedKeyPtr>& keys)
{
    m_waiting.insert(m_waiting.end(), keys.begin(), keys.end());
    startRound();
}

void RedisKeySettler::clear()
{
    m_waiting.clear();
    m_round.reset();
}

bool RedisKeySettler::isOpen(const RedisWatchedKey& key)
{
    const bool isListed =
        std::any_of(key.sources.begin(), key.sources.end(), [](const RedisSource& source) { return source.isListed; });
    return std::any_of(key.sources.begin(), key.sources.end(), [isListed](const RedisSource& source) {
        switch (source.type) {
        case RedisSource::Unasked:
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

void RedisKeySettler::startRound()
{
    if (m_round || m_waiting.empty() || !m_session->isUp())
        return;
    m_round = std::make_shared<Round>();
    while (!m_waiting.empty() && m_round->keys.size() < keysPerRound) {
        if (m_waiting.front()->isWatched)
            m_round->keys.push_back(m_waiting.front());
        m_waiting.pop_front();
    }
    if (m_round->keys.empty()) {
        m_round.reset();
        return;
    }
    m_round->next = [this, round = std::weak_ptr<Round>(m_round)] { askDetails(round.lock()); };
    askTypes(m_round);
}

void RedisKeySettler::ask(const std::shared_ptr<Round>& round, const QByteArrayList& command,
                          RedisSocket::Callback answer)
{
    ++round->outstanding;
    m_session->send(this, command, [this, round, answer = std::move(answer)](const RedisReply& reply) {
        if (round != m_round)
            return;
        answer(reply);
        if (--round->outstanding == 0 && round == m_round)
            startNextPhase(round);
    });
}

void RedisKeySettler::askTypes(const std::shared_ptr<Round>& round)
{
    const std::vector<RedisSource>& first = round->keys.front()->sources;
    for (std::size_t i = 0; i < first.size(); ++i) {
        if (!isLaidOut(first[i]))
            break;
        const RedisSource::Nature nature = first[i].nature;
        QByteArrayList command = {"SMISMEMBER", nature == RedisSource::Data    ? m_layout.dataIndex()
                                                : nature == RedisSource::Event ? m_layout.eventIndex()
                                                                               : m_layout.microEventIndex()};
        for (const RedisWatchedKeyPtr& key : round->keys)
            command.append(key->rawName);
        ask(round, command, [round, i](const RedisReply& reply) {
            for (std::size_t k = 0; k < round->keys.size(); ++k)
                round->keys[k]->sources[i].isListed = reply.at(qsizetype(k)).integer() == 1;
        });
    }
    for (const RedisWatchedKeyPtr& key : round->keys) {
        for (std::size_t i = 0; i < key->sources.size(); ++i) {
            ask(round, {"TYPE", key->sources[i].key},
                [round, source = RedisSourceRef{key, i}](const RedisReply& reply) {
                    if (!reply.isError())
                        round->types.emplace_back(source, reply.bytes());
                });
        }
    }
}

void RedisKeySettler::askDetails(const std::shared_ptr<Round>& round)
{
    round->next = [this, weak = std::weak_ptr<Round>(round)] {
        const std::shared_ptr<Round> finished = weak.lock();
        m_round.reset();
        for (const RedisWatchedKeyPtr& key : finished->keys)
            key->wasSettled = true;
        const QPointer<RedisKeySettler> self(this);
        settled(finished->keys);
        if (self)
            startRound();
    };
    ++round->outstanding;
    for (const auto& [ref, type] : round->types) {
        RedisSource& source = ref.source();
        const bool wasTooLong = source.type == RedisSource::TooLong;
        onType(*ref.key, source, type);
        if (type == "stream" && source.type == RedisSource::Stream) {
            ask(round, {"XINFO", "STREAM", source.key}, [this, ref = ref](const RedisReply& reply) {
                if (reply.isArray())
                    onStreamInfo(*ref.key, ref.source(), reply);
                else
                    ref.source().type = RedisSource::Unasked;
            });
        } else if (type == "string" && source.type == RedisSource::Value) {
            ask(round, {"STRLEN", source.key}, [this, ref = ref, wasTooLong](const RedisReply& reply) {
                onLength(*ref.key, ref.source(), reply.integer(), wasTooLong);
            });
        } else if (type == "hash" && source.type == RedisSource::Value) {
            ask(round, {"HSTRLEN", source.key, source.field}, [this, ref = ref, wasTooLong](const RedisReply& reply) {
                onLength(*ref.key, ref.source(), reply.integer(), wasTooLong);
            });
        }
    }
    if (--round->outstanding == 0)
        startNextPhase(round);
}

void RedisKeySettler::startNextPhase(const std::shared_ptr<Round>& round)
{
    const std::function<void()> next = std::exchange(round->next, nullptr);
    next();
}

void RedisKeySettler::onType(RedisWatchedKey& key, RedisSource& source, const QByteArray& type)
{
    if (type != "stream") {
        // Whatever stream appears here later is new from its first entry on.
        source.position = RedisStreamPosition();
        source.hasPosition = true;
        key.history->positions.remove(source.key);
    }
    if (type == "none") {
        source.type = isAlwaysStream(source) && source.isListed ? RedisSource::Stream : RedisSource::Absent;
        return;
    }
    if (source.nature == RedisSource::PlainField) {
        source.isListed = type == "hash";
        source.type = source.isListed ? RedisSource::Value : RedisSource::Absent;
        return;
    }
    if (type == "stream") {
        source.type = RedisSource::Stream;
        source.isListed = source.isListed || !isLaidOut(source);
        return;
    }
    if (type == "string" && !isAlwaysStream(source)) {
        source.type = RedisSource::Value;
        source.isListed = source.isListed || !isLaidOut(source);
        return;
    }
    if (source.type != RedisSource::Unusable && isLaidOut(source))
        reportUnusable(source, type);
    source.type = RedisSource::Unusable;
}

void RedisKeySettler::onStreamInfo(RedisWatchedKey& key, RedisSource& source, const RedisReply& info)
{
    const auto lost = key.history->positions.constFind(source.key);
    if (!source.hasPosition && lost != key.history->positions.constEnd()) {
        source.position = *lost;
        source.hasPosition = true;
        key.history->positions.erase(lost);
    }
    if (source.hasPosition) {
        m_queue->countTrimmed(key, source.position.countTrimmed(info));
        return;
    }
    source.position = RedisStreamPosition::endOf(info);
    source.hasPosition = true;
    // A data key has a value before anything changes; an event is only what happens from now on.
    const RedisStreamEntry newest = RedisStreamEntry::of(info.field("last-entry"));
    if (source.nature == RedisSource::Data && !newest.id.isEmpty() && newest.cutBytes == 0)
        m_queue->add(key, newest.stamp, newest.value, newest.bytes);
}

void RedisKeySettler::onLength(RedisWatchedKey& key, RedisSource& source, qint64 length, bool isKnown)
{
    if (length <= maxValueBytes)
        return;
    source.type = RedisSource::TooLong;
    if (!isKnown)
        m_session->report(
            tr("Redis: value too long"),
            tr("The value of \"%1\" on %2 is %3 MiB long and is not fetched; at most %4 MiB are. It is looked at "
               "again from time to time.")
                .arg(key.name, m_session->server())
                .arg(length / (1024 * 1024))
                .arg(maxValueBytes / (1024 * 1024)));
}

void RedisKeySettler::reportUnusable(const RedisSource& source, const QByteArray& type)
{
    m_session->report(
        tr("Redis: key of another type"),
        (isAlwaysStream(source)
             ? tr("The key %1 on %2 holds a %3; an event's key is a stream. Check which program writes it.")
             : tr("The key %1 on %2 holds a %3; a data key's is a string or a stream. Check which program writes it."))
            .arg(QString::fromUtf8(source.key), m_session->server(), QString::fromUtf8(type)));
}

} // namespace Velk
