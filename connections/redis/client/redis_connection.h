// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_CONNECTION_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_CONNECTION_H

#include "redis_connector.h"
#include "redis_session.h"
#include "redis_socket.h"
#include "redis_url.h"

#include <connections/network/back_off.h>

#include <QObject>
#include <QTimer>
#include <QVector>

#include <memory>

namespace Velk {

/// A connection that keeps itself up from open() to close(): it pings the server to check that it still
/// answers, connects again after a loss with growing, jittered pauses, and follows the robot's keys through a cluster
/// and the master through its sentinels' switches.
///
/// A slot of any signal may open, close or delete it.
class RedisConnection : public QObject
{
    Q_OBJECT

public:
    RedisConnection(const RedisUrl& url, const RedisHandshake& handshake, QObject* parent = nullptr);
    /// Closes without a signal.
    ~RedisConnection() override;

    const RedisUrl& url() const { return m_url; }

    /// Connects, from the event loop. Nothing when it is open.
    void open();
    /// Ends the connection at once, without a signal.
    void close();

    bool isOpen() const { return m_isOpen; }
    bool isEstablished() const { return m_isEstablished; }

    /// Up whenever the connection is established, except while it moves to another node of a cluster.
    RedisSession* session() { return &m_session; }

Q_SIGNALS:
    void established();
    /// The connection was lost; another attempt follows.
    void lost(const QString& title, const QString& message);
    /// An attempt to connect failed; there will be others.
    void attemptFailed(const QString& title, const QString& message);
    /// Something that the user should know and that does not end the connection. Emitted each time it happens.
    void reported(const QString& title, const QString& message);

private:
    void connectNow(const QVector<NetworkAddress>& addresses);
    void onConnected();
    void onAttemptFailed(const QString& title, const QString& message);
    void onRefused(const RedisError& error);
    void follow(const RedisError& redirection);
    void lose(const QString& title, const QString& message);
    void dropSocket();
    void retryLater();
    void ping();
    void onPongMissing();
    void askClusterNodes();
    void onClusterSlots(const RedisReply& reply);

    const RedisUrl m_url;
    const RedisHandshake m_handshake;
    bool m_isOpen = false;
    bool m_isEstablished = false;
    BackOff m_backOff;
    QVector<NetworkAddress> m_clusterNodes; // tried when the addresses of the URL do not answer
    std::unique_ptr<RedisConnector> m_connector;
    std::unique_ptr<RedisSocket> m_socket;
    RedisSession m_session;
    QTimer m_retryTimer;
    QTimer m_pingTimer;
    QTimer m_pongTimer;
};

} // namespace Velk

#endif
