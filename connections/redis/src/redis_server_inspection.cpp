// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_server_inspection.h"

#include <connections/link/unix_time.h>

#include <utility>

namespace Velk {

namespace {

QString infoField(const QByteArray& info, const QByteArray& field)
{
    const QByteArrayList lines = info.split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(field + ':'))
            return QString::fromUtf8(line.mid(field.size() + 1).trimmed());
    }
    return QString();
}

} // namespace

RedisServerInspection::RedisServerInspection(RedisSession* session, QObject* parent)
    : QObject(parent)
    , m_session(session)
    , m_roundTrips(session)
    , m_inquiry(session, RedisSession::ProbeGranted)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisServerInspection::finish);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisServerInspection::measure);
}

void RedisServerInspection::start(const RedisMetadata& metadata, std::vector<QByteArrayList> neededCommands,
                                  std::function<void(const RedisServerReport&)> done)
{
    m_neededCommands = std::move(neededCommands);
    m_neededCommands.insert(m_neededCommands.begin(), {"TIME"});
    m_done = std::move(done);
    m_robotName = metadata.robotName;
    measure();
}

void RedisServerInspection::measure()
{
    m_roundTrips.measure([this](const std::vector<double>& timesMs) {
        m_report = RedisServerReport();
        m_report.address = m_session->server();
        m_report.robotName = m_robotName;
        m_report.roundTripMedianMs = (timesMs[timesMs.size() / 2 - 1] + timesMs[timesMs.size() / 2]) / 2;
        m_report.roundTripLongestMs = timesMs.back();
        askTime();
        askServer();
        askGrants();
    });
}

void RedisServerInspection::askTime()
{
    m_inquiry.ask({"TIME"}, [this, askedAt = unixTime()](const RedisReply& reply) {
        const double serverTime = double(reply.at(0).integer()) + double(reply.at(1).integer()) / 1e6;
        if (reply.size() == 2)
            m_report.clockOffsetSeconds = serverTime - (askedAt + unixTime()) / 2;
    });
}

void RedisServerInspection::askServer()
{
    // One section at a time: servers before Redis 7 take no more.
    m_inquiry.ask({"INFO", "server"}, [this](const RedisReply& reply) {
        m_report.version = infoField(reply.bytes(), "redis_version");
        m_report.mode = infoField(reply.bytes(), "redis_mode");
    });
    m_inquiry.ask({"INFO", "replication"},
                  [this](const RedisReply& reply) { m_report.role = infoField(reply.bytes(), "role"); });
    m_inquiry.ask({"ACL", "WHOAMI"}, [this](const RedisReply& reply) {
        if (reply.isText())
            m_report.user = reply.text();
    });
}

void RedisServerInspection::askGrants()
{
    // The commands are tried: only administrators may list permissions. Where the key is of another type than the
    // command expects, the server finds the permission first, and does no work.
    for (const QByteArrayList& command : m_neededCommands) {
        m_inquiry.ask(command, [this, name = command.front()](const RedisReply& reply) {
            const bool isRefused = reply.isError() && RedisError::of(reply.view()).kind == RedisError::Permission;
            (isRefused ? m_report.refused : m_report.granted).append(QString::fromLatin1(name));
        });
    }
}

void RedisServerInspection::finish()
{
    deleteLater();
    const auto done = std::move(m_done);
    const RedisServerReport report = m_report;
    // Last statement on purpose: the receiver may close or delete the link, and this object with it.
    done(report);
}

} // namespace Velk
