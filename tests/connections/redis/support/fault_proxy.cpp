// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "fault_proxy.h"

#include <QHostAddress>
#include <QPointer>
#include <QTcpSocket>
#include <QTimer>

FaultProxy::FaultProxy(quint16 serverPort)
    : m_serverPort(serverPort)
{
    connect(&m_listener, &QTcpServer::newConnection, this, &FaultProxy::onConnection);
    m_listener.listen(QHostAddress::LocalHost);
}

QString FaultProxy::url(const QString& robot) const
{
    return QStringLiteral("redis://127.0.0.1:%1/%2").arg(port()).arg(robot);
}

void FaultProxy::cutAfter(qint64 replyBytes)
{
    m_bytesUntilCut = replyBytes;
    if (replyBytes == 0)
        closeAll();
}

void FaultProxy::closeAll()
{
    m_bytesUntilCut = -1;
    const QList<Connection> connections = m_connections;
    m_connections.clear();
    for (const Connection& connection : connections) {
        connection.server->disconnect(this);
        connection.server->disconnect(connection.client);
        connection.server->abort();
        connection.server->deleteLater();
        // What was passed on already has to arrive: the client's side is closed in order.
        connection.client->disconnect(this);
        connect(connection.client, &QTcpSocket::disconnected, connection.client, &QObject::deleteLater);
        connection.client->disconnectFromHost();
    }
}

void FaultProxy::inject(const QByteArray& bytes)
{
    for (const Connection& connection : std::as_const(m_connections))
        connection.client->write(bytes);
}

void FaultProxy::onConnection()
{
    while (QTcpSocket* const client = m_listener.nextPendingConnection()) {
        ++m_connectionCount;
        auto* const server = new QTcpSocket(this);
        client->setParent(this);
        m_connections.push_back(Connection{client, server});
        connect(client, &QTcpSocket::readyRead, this, [this, client, server] {
            const QByteArray bytes = client->readAll();
            if (!m_isSwallowing)
                server->write(bytes);
        });
        connect(server, &QTcpSocket::readyRead, this, [this, client = QPointer<QTcpSocket>(client), server] {
            const QByteArray bytes = server->readAll();
            if (m_isSwallowing)
                return;
            if (m_delayMs == 0)
                passReply(client, bytes);
            else
                QTimer::singleShot(m_delayMs, this, [this, client, bytes] { passReply(client, bytes); });
        });
        connect(client, &QTcpSocket::disconnected, server, &QTcpSocket::disconnectFromHost);
        connect(server, &QTcpSocket::disconnected, client, &QTcpSocket::disconnectFromHost);
        connect(client, &QTcpSocket::disconnected, this, [this, client, server] {
            m_connections.removeIf([client](const Connection& connection) { return connection.client == client; });
            server->deleteLater();
            client->deleteLater();
        });
        // A server that refuses the connection looks to the client like one that closes it.
        connect(server, &QTcpSocket::errorOccurred, client, &QTcpSocket::disconnectFromHost);
        server->connectToHost(QHostAddress::LocalHost, m_serverPort);
    }
}

void FaultProxy::passReply(QTcpSocket* client, const QByteArray& bytes)
{
    if (!client)
        return;
    if (m_bytesUntilCut < 0 || bytes.size() < m_bytesUntilCut) {
        m_replyBytes += bytes.size();
        if (m_bytesUntilCut > 0)
            m_bytesUntilCut -= bytes.size();
        client->write(bytes);
        return;
    }
    m_replyBytes += m_bytesUntilCut;
    client->write(bytes.left(m_bytesUntilCut));
    closeAll();
}
