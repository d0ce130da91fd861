#ifndef CONNECTIONS_REDIS_REDIS_SERVER_EXAMINATION_H
#define CONNECTIONS_REDIS_REDIS_SERVER_EXAMINATION_H

#include <connections/redis/client/redis_round_trips.h>
#include <connections/redis/client/redis_session.h>
#include <connections/redis/client/redis_url.h>
#include <connections/redis/memory/redis_metadata.h>
#include <connections/redis/redis_server_report.h>

#include <QObject>

#include <functional>

namespace Velk {

/// Finds out what the server is, how far away it is, what its clock says and what it grants the user. Deletes itself
/// when it is done.
class RedisServerExamination : public QObject
{
    Q_OBJECT

public:
    RedisServerExamination(RedisSession* session, const RedisUrl& url, QObject* parent);

    void start(const RedisMetadata& metadata, std::function<void(const RedisServerReport&)> done);

private:
    void askTime();
    void askServer();
    void askGrants();
    void finish();
    QString infoField(const QByteArray& info, const QByteArray& field) const;

    RedisSession* m_session;
    RedisUrl m_url;
    RedisRoundTrips m_roundTrips;
    RedisServerReport m_report;
    std::function<void(const RedisServerReport&)> m_done;
};

} // namespace Velk

#endif
