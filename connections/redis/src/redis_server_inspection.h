// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_SERVER_INSPECTION_H
#define CONNECTIONS_REDIS_SRC_REDIS_SERVER_INSPECTION_H

#include <connections/redis/client/redis_inquiry.h>
#include <connections/redis/client/redis_round_trips.h>
#include <connections/redis/memory/redis_metadata.h>
#include <connections/redis/redis_server_report.h>

#include <QByteArrayList>
#include <QObject>

#include <functional>
#include <vector>

namespace Velk {

/// Finds out the server's version and role, the round trip, the clock offset and the user's permissions. Begins again
/// when the connection moves to another node. Deletes itself when it is done.
class RedisServerInspection : public QObject
{
    Q_OBJECT

public:
    RedisServerInspection(RedisSession* session, QObject* parent);

    /// `neededCommands` are those that a viewer runs, to be tried.
    void start(const RedisMetadata& metadata, std::vector<QByteArrayList> neededCommands,
               std::function<void(const RedisServerReport&)> done);

private:
    void measure();
    void askTime();
    void askServer();
    void askGrants();
    void finish();

    RedisSession* m_session;
    RedisRoundTrips m_roundTrips;
    RedisInquiry m_inquiry;
    std::vector<QByteArrayList> m_neededCommands;
    QString m_robotName;
    RedisServerReport m_report;
    std::function<void(const RedisServerReport&)> m_done;
};

} // namespace Velk

#endif
