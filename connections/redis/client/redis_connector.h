// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_CONNECTOR_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_CONNECTOR_H

#include "redis_handshake.h"
#include "redis_socket.h"
#include "redis_url.h"

#include <QObject>
#include <QTimer>
#include <QVector>

#include <memory>

namespace Velk {

/// Makes one attempt to get from a URL to a connection on which commands can be run: asks the sentinels for the master,
/// tries the addresses in turn, authenticates, and follows a cluster to the node that has the keys of the handshake.
/// Success is a PING that came back.
///
/// Ends with succeeded() or failed(), one of them once.
class RedisConnector : public QObject
{
    Q_OBJECT

public:
    RedisConnector(const RedisUrl& url, const RedisHandshake& handshake, QObject* parent = nullptr);
    ~RedisConnector() override;

    /// Tries these addresses, of servers or of sentinels, as the URL has it. To be called once.
    void start(const QVector<NetworkAddress>& addresses);

    /// After succeeded(): the connection, the caller's from then on.
    std::unique_ptr<RedisSocket> takeSocket();

    /// How long one address may take, look-up, connection, TLS and authentication together.
    static constexpr int addressTimeoutMs = 5000;

    /// A socket that is on its way to the address, with the URL's TLS and authentication sent ahead of all commands.
    static std::unique_ptr<RedisSocket> socketTo(const RedisUrl& url, const NetworkAddress& address);

Q_SIGNALS:
    void succeeded();
    void failed(const QString& title, const QString& message);

private:
    enum Role
    {
        Sentinel,
        Server
    };

    void tryNextAddress();
    void tryAddress(const NetworkAddress& address, Role role);
    void onConnected();
    void onAuthenticated(const RedisReply& reply);
    void askSentinel();
    void startHandshake();
    void onHandshakeReply(const RedisReply& reply);
    void finishHandshake();
    void onAddressFailed(const QString& title, const QString& message);
    void onTimeout();
    void dropSocket();
    bool isRefused(const RedisReply& reply);

    const RedisUrl m_url;
    const RedisHandshake m_handshake;
    QVector<NetworkAddress> m_addresses;
    int m_nextAddress = 0;
    int m_redirections = 0;
    Role m_role = Server;
    std::unique_ptr<RedisSocket> m_socket;
    QTimer m_timeout;
    bool m_isDone = false;
};

} // namespace Velk

#endif
