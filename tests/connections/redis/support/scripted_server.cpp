// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "scripted_server.h"

#include <QTcpSocket>

#include <memory>
#include <utility>

namespace {

// Takes a line without its end; false when it is not complete.
bool takeLine(const QByteArray& bytes, qsizetype* at, QByteArray* line)
{
    const qsizetype end = bytes.indexOf("\r\n", *at);
    if (end == -1)
        return false;
    *line = bytes.mid(*at, end - *at);
    *at = end + 2;
    return true;
}

// Takes one command, a list of strings, from the front; false when it is not complete.
bool takeCommand(QByteArray* bytes, QByteArrayList* command)
{
    qsizetype at = 0;
    QByteArray line;
    if (!takeLine(*bytes, &at, &line))
        return false;
    command->clear();
    for (int left = line.mid(1).toInt(); left > 0; --left) {
        if (!takeLine(*bytes, &at, &line))
            return false;
        const int length = line.mid(1).toInt();
        if (bytes->size() < at + length + 2)
            return false;
        command->append(bytes->mid(at, length));
        at += length + 2;
    }
    bytes->remove(0, at);
    return true;
}

} // namespace

ScriptedServer::ScriptedServer(std::function<QByteArray(const QByteArrayList& command)> answer)
    : m_answer(std::move(answer))
{
    connect(this, &QTcpServer::newConnection, this, [this] {
        ++m_connectionCount;
        QTcpSocket* const client = nextPendingConnection();
        const auto unread = std::make_shared<QByteArray>();
        connect(client, &QTcpSocket::readyRead, this, [this, client, unread] { onBytes(client, unread.get()); });
    });
    listen(QHostAddress::LocalHost);
}

void ScriptedServer::onBytes(QTcpSocket* client, QByteArray* unread)
{
    *unread += client->readAll();
    QByteArrayList command;
    while (takeCommand(unread, &command)) {
        m_commands.append(command.join(' '));
        client->write(m_answer(command));
    }
}
