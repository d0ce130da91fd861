// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_connection.h"

#include <QPointer>

#include <utility>

namespace Velk {

namespace {

constexpr int pingPeriodMs = 1000;
// While replies are waiting to be read, the PONG can be among them: the fault is on this side then.
constexpr int backlogPauseMs = 50;

} // namespace

RedisConnection::RedisConnection(const RedisUrl& url, const RedisHandshake& handshake, QObject* parent)
    : QObject(parent)
    , m_url(url)
    , m_handshake(handshake)
{
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, [this] { connectNow(m_url.addresses() + m_clusterNodes); });
    m_pingTimer.setInterval(pingPeriodMs);
    connect(&m_pingTimer, &QTimer::timeout, this, &RedisConnection::ping);
    m_pongTimer.setSingleShot(true);
    connect(&m_pongTimer, &QTimer::timeout, this, &RedisConnection::onPongMissing);
    m_session.setRedirectionTimeout(m_url.pongTimeoutMs());
    m_session.openNode = [this](const NetworkAddress& address) { return RedisConnector::socketTo(m_url, address); };
    connect(&m_session, &RedisSession::refused, this, &RedisConnection::onRefused);
    connect(&m_session, &RedisSession::reported, this, &RedisConnection::reported);
}

RedisConnection::~RedisConnection()
{
    m_session.disconnect();
}

void RedisConnection::open()
{
    if (m_isOpen)
        return;
    m_isOpen = true;
    m_backOff.reset();
    m_retryTimer.start(0);
}

void RedisConnection::close()
{
    m_isOpen = false;
    m_isEstablished = false;
    m_clusterNodes.clear();
    m_retryTimer.stop();
    m_connector.reset();
    dropSocket();
}

void RedisConnection::connectNow(const QVector<NetworkAddress>& addresses)
{
    m_connector = std::make_unique<RedisConnector>(m_url, m_handshake, this);
    connect(m_connector.get(), &RedisConnector::succeeded, this, &RedisConnection::onConnected);
    connect(m_connector.get(), &RedisConnector::failed, this, &RedisConnection::onAttemptFailed);
    m_connector->start(addresses);
}

void RedisConnection::onConnected()
{
    m_socket = m_connector->takeSocket();
    m_connector.release()->deleteLater(); // it is emitting
    m_backOff.reset();
    connect(m_socket.get(), &RedisSocket::failed, this, &RedisConnection::lose);
    m_pingTimer.start();
    askClusterNodes();
    const bool hasMoved = m_isEstablished;
    m_isEstablished = true;
    m_session.setSocket(m_socket.get());
    if (!hasMoved)
        emit established();
}

void RedisConnection::onAttemptFailed(const QString& title, const QString& message)
{
    m_connector.release()->deleteLater(); // it is emitting
    if (m_isEstablished) {
        lose(title, message); // it was following a redirection
        return;
    }
    retryLater();
    emit attemptFailed(title, message);
}

void RedisConnection::retryLater()
{
    m_retryTimer.start(m_backOff.nextPauseMs());
}

void RedisConnection::onRefused(const RedisError& error)
{
    switch (error.kind) {
    case RedisError::Moved:
        follow(error);
        return;
    case RedisError::Ask:
    case RedisError::TryAgain:
        return; // the keys are being moved: callers run their commands again
    case RedisError::Password:
    case RedisError::Unavailable:
        lose(error.title(), error.message(m_session.server()));
        return;
    default:
        emit reported(error.title(), error.message(m_session.server()));
    }
}

void RedisConnection::follow(const RedisError& redirection)
{
    const NetworkAddress target = {redirection.host.isEmpty() ? m_socket->address().host : redirection.host,
                                   redirection.port};
    dropSocket();
    QVector<NetworkAddress> addresses = {target};
    addresses += m_url.addresses() + m_clusterNodes;
    connectNow(addresses);
}

void RedisConnection::lose(const QString& title, const QString& message)
{
    if (!m_isEstablished)
        return;
    m_isEstablished = false;
    m_connector.reset();
    // Receivers of lost() still find the session that they know.
    const QPointer<RedisConnection> self(this);
    const QString titleText = title;
    const QString messageText = message;
    emit lost(titleText, messageText);
    if (!self || m_isEstablished)
        return;
    dropSocket();
    if (m_isOpen && !m_connector && !m_retryTimer.isActive())
        retryLater();
}

void RedisConnection::dropSocket()
{
    m_pingTimer.stop();
    m_pongTimer.stop();
    if (!m_socket)
        return;
    const std::unique_ptr<RedisSocket> socket = std::move(m_socket);
    socket->disconnect(this);
    m_session.setSocket(nullptr);
}

void RedisConnection::ping()
{
    if (m_pongTimer.isActive())
        return;
    m_pongTimer.start(m_url.pongTimeoutMs());
    m_session.send(this, {"PING"}, [this](const RedisReply&) { m_pongTimer.stop(); });
    if (!m_url.isSentinel())
        return;
    m_session.send(this, {"ROLE"}, [this](const RedisReply& reply) {
        if (reply.isArray() && reply.at(0).view() != "master")
            lose(tr("Redis: master switched"),
                 tr("%1 is not the master of \"%2\" any more. The sentinels are asked for the new one.")
                     .arg(m_session.server(), m_url.serviceName()));
    });
}

void RedisConnection::onPongMissing()
{
    if (m_socket->hasUnreadReplies()) {
        m_pongTimer.start(backlogPauseMs);
        return;
    }
    lose(tr("Redis: no answer"), tr("%1 has not answered for %2 seconds. Check the server and the network.")
                                     .arg(m_session.server())
                                     .arg(double(m_url.pongTimeoutMs()) / 1000.0));
}

void RedisConnection::askClusterNodes()
{
    if (m_url.isSentinel() || m_handshake.command.isEmpty())
        return;
    // A server that is no cluster answers with an error.
    m_socket->send({"CLUSTER", "SLOTS"}, [this](const RedisReply& reply) { onClusterSlots(reply); });
}

void RedisConnection::onClusterSlots(const RedisReply& reply)
{
    if (!reply.isArray())
        return;
    m_clusterNodes.clear();
    const QVector<NetworkAddress> known = m_url.addresses();
    for (qsizetype range = 0; range < reply.size(); ++range) {
        for (qsizetype node = 2; node < reply.at(range).size(); ++node) {
            const RedisReply host = reply.at(range).at(node).at(0);
            const NetworkAddress address = {host.view().isEmpty() ? m_socket->address().host : host.text(),
                                            quint16(reply.at(range).at(node).at(1).integer())};
            if (address.port != 0 && !known.contains(address) && !m_clusterNodes.contains(address))
                m_clusterNodes.append(address);
        }
    }
}

} // namespace Velk
