// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_FAULT_PROXY_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_FAULT_PROXY_H

#include <QList>
#include <QObject>
#include <QString>
#include <QTcpServer>

class QTcpSocket;

/// A bad network between a viewer and its server, under a test's hand: it listens on a port of its own and passes the
/// bytes on, unless a test sets a fault. It works in the test's event loop.
class FaultProxy : public QObject
{
    Q_OBJECT

public:
    explicit FaultProxy(quint16 serverPort);

    quint16 port() const { return m_listener.serverPort(); }
    /// "redis://127.0.0.1:12345/arm1", by way of the proxy.
    QString url(const QString& robot = QStringLiteral("arm1")) const;

    /// How many connections were made, and how many bytes of replies were passed on, since the start.
    int connectionCount() const { return m_connectionCount; }
    qint64 replyBytes() const { return m_replyBytes; }

    /// Lets this many bytes of replies through, and then closes every connection. Once: what connects afterwards is let
    /// through.
    void cutAfter(qint64 replyBytes);
    /// Whether the cut that was asked for has been made.
    bool hasCut() const { return m_bytesUntilCut < 0; }

    /// From now on nothing passes, in both directions, on old and new connections, and no connection ends: the bytes
    /// are gone.
    void setSwallowing(bool isSwallowing) { m_isSwallowing = isSwallowing; }
    /// Every piece of a reply is passed on this much later.
    void setDelay(int ms) { m_delayMs = ms; }
    /// Closes every connection; new ones are accepted.
    void closeAll();
    /// Puts these bytes into every connection, as if the server had sent them.
    void inject(const QByteArray& bytes);

private:
    struct Connection
    {
        QTcpSocket* client;
        QTcpSocket* server;
    };

    void onConnection();
    void passReply(QTcpSocket* client, const QByteArray& bytes);

    QTcpServer m_listener;
    quint16 m_serverPort;
    QList<Connection> m_connections;
    int m_connectionCount = 0;
    qint64 m_replyBytes = 0;
    qint64 m_bytesUntilCut = -1;
    int m_delayMs = 0;
    bool m_isSwallowing = false;
};

#endif
