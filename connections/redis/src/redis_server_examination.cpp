#include "redis_server_examination.h"

#include <connections/redis/memory/redis_layout.h>

#include <QDateTime>

namespace Velk {

RedisServerExamination::RedisServerExamination(RedisSession* session, const RedisUrl& url, QObject* parent)
    : QObject(parent)
    , m_session(session)
    , m_url(url)
    , m_roundTrips(session)
{
    connect(session, &RedisSession::replaced, this, &QObject::deleteLater);
}

void RedisServerExamination::start(const RedisMetadata& metadata, std::function<void(const RedisServerReport&)> done)
{
    m_done = std::move(done);
    m_report.address = m_session->server();
    m_report.robotName = metadata.robotName;
    m_roundTrips.measure([this](const std::vector<double>& timesMs) {
        m_report.roundTripMedianMs = (timesMs[timesMs.size() / 2 - 1] + timesMs[timesMs.size() / 2]) / 2;
        m_report.roundTripMaximumMs = RedisRoundTrips::percentile99(timesMs);
        askTime();
    });
}

void RedisServerExamination::askTime()
{
    const double askedAt = double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
    m_session->ask(this, {"TIME"}, [this, askedAt](const RedisReply& reply) {
        const double answeredAt = double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
        const double serverTime = double(reply.at(0).integer()) + double(reply.at(1).integer()) / 1e6;
        if (reply.size() == 2)
            m_report.clockOffsetSeconds = serverTime - (askedAt + answeredAt) / 2;
        askServer();
    });
}

void RedisServerExamination::askServer()
{
    // One section at a time: servers before Redis 7 take no more.
    m_session->ask(this, {"INFO", "server"}, [this](const RedisReply& reply) {
        m_report.version = infoField(reply.bytes(), "redis_version");
        m_report.mode = infoField(reply.bytes(), "redis_mode");
    });
    m_session->ask(this, {"INFO", "replication"},
                   [this](const RedisReply& reply) { m_report.role = infoField(reply.bytes(), "role"); });
    m_session->ask(this, {"ACL", "WHOAMI"}, [this](const RedisReply& reply) {
        if (reply.isText())
            m_report.user = reply.text();
        askGrants();
    });
}

void RedisServerExamination::askGrants()
{
    // Asked by running them: what the permissions are is told to administrators only. Where the key is of another type
    // than the command expects, the server finds the permission first, and does no work.
    const RedisLayout layout(m_url.robot());
    const QByteArray key = m_url.isPlain() ? QByteArray("velk") : layout.data("velk");
    const QByteArray index = layout.dataIndex();
    std::vector<QByteArrayList> commands = {{"TIME"},
                                            {"TYPE", key},
                                            {"MGET", key},
                                            {"XREAD", "COUNT", "1", "STREAMS", key, "0-0"},
                                            {"XINFO", "STREAM", key}};
    if (m_url.isPlain())
        commands.insert(commands.end(), {{"SCAN", "0", "COUNT", "1"}, {"HSCAN", key, "0"}, {"HMGET", key, "field"}});
    else
        commands.insert(commands.end(), {{"SCARD", index},
                                         {"SMEMBERS", layout.metadata()},
                                         {"SSCAN", index, "0"},
                                         {"SMISMEMBER", index, "velk"},
                                         {"HMGET", layout.metadata(), "name"}});
    for (std::size_t i = 0; i < commands.size(); ++i) {
        const bool isLast = i + 1 == commands.size();
        m_session->ask(this, commands[i], [this, name = commands[i].front(), isLast](const RedisReply& reply) {
            const bool isRefused = reply.isError() && RedisError::of(reply.view()).kind == RedisError::Permission;
            (isRefused ? m_report.refused : m_report.granted).append(QString::fromLatin1(name));
            if (isLast)
                finish();
        });
    }
}

void RedisServerExamination::finish()
{
    deleteLater();
    // Last statement on purpose: whoever is told may delete the link, and this object with it.
    m_done(m_report);
}

QString RedisServerExamination::infoField(const QByteArray& info, const QByteArray& field) const
{
    for (const QByteArray& line : info.split('\n')) {
        if (line.startsWith(field + ':'))
            return QString::fromUtf8(line.mid(field.size() + 1).trimmed());
    }
    return QString();
}

} // namespace Velk
