// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_SESSION_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_SESSION_H

#include "redis_error.h"
#include "redis_socket.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace Velk {

/// The connection as its callers see it. It may be replaced by one to another node of the cluster at any time, and what
/// the server refuses is reported in one place. A command whose keys are being moved to another node (an ASK
/// redirection) is run at that node.
class RedisSession : public QObject
{
    Q_OBJECT

public:
    enum Permissions
    {
        ReportRefused, ///< a refused permission is reported as every other error
        ProbeGranted   ///< a refused permission is an answer, which is not reported
    };

    explicit RedisSession(QObject* parent = nullptr);
    ~RedisSession() override;

    /// Makes a connection to another node of the cluster, authentication included, on which commands can be run at
    /// once.
    std::function<std::unique_ptr<RedisSocket>(const NetworkAddress&)> openNode;
    /// How long the node of an ASK redirection may take to answer.
    void setRedirectionTimeout(int timeoutMs) { m_redirectionTimer.setInterval(timeoutMs); }

    /// Null while there is none. Callbacks that are due on the former one never come.
    void setSocket(RedisSocket* socket);
    bool isUp() const { return m_socket; }
    QString server() const { return m_socket ? m_socket->server() : QString(); }

    /// Runs the command; nothing without a connection. The callback gets the reply, errors too, unless `asker` is gone
    /// by then or the connection was replaced.
    void send(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback,
              Permissions permissions = ReportRefused);
    void sendFormatted(QObject* asker, const QByteArray& command, RedisSocket::Callback callback,
                       Permissions permissions = ReportRefused);

    /// Reports something about a key or a value that the user should know.
    void report(const QString& title, const QString& message) { emit reported(title, message); }

Q_SIGNALS:
    /// After setSocket(): commands of the former connection that were not answered have to be run again.
    void replaced();
    /// The server has answered with an error that is about more than a single key. Emitted before the callback runs.
    void refused(const Velk::RedisError& error);
    void reported(const QString& title, const QString& message);

private:
    struct RedirectedCommand;

    void runAtAskedNode(const NetworkAddress& address, const std::shared_ptr<RedirectedCommand>& command);
    void onRedirectedReply(const std::shared_ptr<RedirectedCommand>& command, const RedisReply& reply);
    void failRedirectedCommands();
    void dropAskedNode();

    QPointer<RedisSocket> m_socket;
    int m_generation = 0; // counts the connections: a reply of a former one is of no use
    std::unique_ptr<RedisSocket> m_askedNode;
    QTimer m_redirectionTimer;
    std::vector<std::shared_ptr<RedirectedCommand>> m_redirectedCommands; // their replies are due at the asked node
};

} // namespace Velk

#endif
