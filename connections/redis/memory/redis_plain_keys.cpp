#include "redis_plain_keys.h"

#include <utility>

namespace Velk {

namespace {

const QByteArray keysPerPortion = "1000";
constexpr char fieldSeparator = '#';

} // namespace

RedisPlainKeys::RedisPlainKeys(RedisSession* session, const QByteArray& pattern)
    : m_session(session)
    , m_pattern(pattern)
{
    connect(session, &RedisSession::replaced, this, [this] {
        if (m_isWalking)
            startWalk();
    });
}

RedisPlainKeys::~RedisPlainKeys()
{
    finishAll();
}

QFuture<QStringList> RedisPlainKeys::fetch(Promises* promises)
{
    promises->emplace_back();
    QPromise<QStringList>& promise = promises->back();
    promise.start();
    const QFuture<QStringList> future = promise.future();
    if (!m_isWalking)
        startWalk();
    return future;
}

void RedisPlainKeys::startWalk()
{
    m_isWalking = true;
    m_outstanding = 0;
    m_nextCursor.clear();
    m_seen.clear();
    m_data.clear();
    m_events.clear();
    scan("0");
}

void RedisPlainKeys::finishAll()
{
    m_data.clear();
    m_events.clear();
    finish();
}

void RedisPlainKeys::startCommand(const QByteArrayList& command, RedisSocket::Callback callback)
{
    ++m_outstanding;
    m_session->send(this, command, [this, callback = std::move(callback)](const RedisReply& reply) {
        callback(reply);
        if (--m_outstanding > 0 || !m_isWalking)
            return;
        // The next portion waits until the keys of this one are known: the server's other clients come in between.
        if (m_nextCursor.isEmpty())
            finish();
        else
            scan(std::exchange(m_nextCursor, QByteArray()));
    });
}

void RedisPlainKeys::scan(const QByteArray& cursor)
{
    startCommand({"SCAN", cursor, "MATCH", m_pattern, "COUNT", keysPerPortion},
                 [this](const RedisReply& reply) { onPortion(reply); });
}

void RedisPlainKeys::onPortion(const RedisReply& reply)
{
    const QByteArray next = reply.at(0).bytes();
    m_nextCursor = next == "0" ? QByteArray() : next;
    const RedisReply keys = reply.at(1);
    for (qsizetype i = 0; i < keys.size(); ++i) {
        // A key that is there during the whole walk can be named more than once.
        const QByteArray key = keys.at(i).bytes();
        if (!keys.at(i).isText() || m_seen.contains(key))
            continue;
        m_seen.insert(key);
        askType(key);
    }
}

void RedisPlainKeys::askType(const QByteArray& key)
{
    startCommand({"TYPE", key}, [this, key](const RedisReply& reply) {
        if (reply.view() == "string")
            addName(&m_data, key);
        else if (reply.view() == "stream")
            addName(&m_events, key);
        else if (reply.view() == "hash")
            scanFields(key, "0");
    });
}

void RedisPlainKeys::scanFields(const QByteArray& key, const QByteArray& cursor)
{
    startCommand({"HSCAN", key, cursor, "COUNT", keysPerPortion}, [this, key](const RedisReply& reply) {
        const RedisReply fields = reply.at(1);
        for (qsizetype i = 0; i + 1 < fields.size(); i += 2) {
            if (fields.at(i).isText())
                addName(&m_data, key + fieldSeparator + fields.at(i).bytes());
        }
        const QByteArray next = reply.at(0).bytes();
        if (!next.isEmpty() && next != "0")
            scanFields(key, next);
    });
}

void RedisPlainKeys::addName(QSet<QString>* names, const QByteArray& rawName)
{
    const QString name = QString::fromUtf8(rawName);
    if (name.toUtf8() != rawName)
        m_rawNames.insert(name, rawName);
    names->insert(name);
}

void RedisPlainKeys::finish()
{
    m_isWalking = false;
    m_seen.clear();
    Promises dataPromises = std::exchange(m_dataPromises, {});
    Promises eventPromises = std::exchange(m_eventPromises, {});
    answer(&dataPromises, std::exchange(m_data, {}));
    answer(&eventPromises, std::exchange(m_events, {}));
}

void RedisPlainKeys::answer(Promises* promises, const QSet<QString>& names)
{
    for (QPromise<QStringList>& promise : *promises) {
        promise.addResult(names.values());
        promise.finish();
    }
}

std::vector<RedisSource> RedisPlainKeys::sourcesOf(const QByteArray& rawName)
{
    std::vector<RedisSource> sources(1);
    sources[0].nature = RedisSource::PlainKey;
    sources[0].key = rawName;
    // Neither a key nor a field is free of the separator; most names have one at most.
    const qsizetype separator = rawName.indexOf(fieldSeparator);
    if (separator != -1) {
        sources.emplace_back();
        sources[1].nature = RedisSource::PlainField;
        sources[1].key = rawName.left(separator);
        sources[1].field = rawName.mid(separator + 1);
    }
    return sources;
}

} // namespace Velk
