// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_SCRIPTED_SERVER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_SCRIPTED_SERVER_H

#include <QByteArrayList>
#include <QHostAddress>
#include <QList>
#include <QTcpServer>

#include <functional>

/// A server of the Redis protocol under the test's control: it records the commands and answers what the test says.
class ScriptedServer : public QTcpServer
{
    Q_OBJECT

public:
    /// `answer` returns the bytes of the reply to a command; empty: no reply.
    explicit ScriptedServer(std::function<QByteArray(const QByteArrayList& command)> answer);

    /// "PING", "MGET a b": the commands in the order in which they came, on all connections.
    QByteArrayList commands() const { return m_commands; }
    int connectionCount() const { return m_connectionCount; }

private:
    void onBytes(QTcpSocket* client, QByteArray* unread);

    std::function<QByteArray(const QByteArrayList&)> m_answer;
    QByteArrayList m_commands;
    int m_connectionCount = 0;
};

#endif
