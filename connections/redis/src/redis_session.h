#ifndef CONNECTIONS_REDIS_REDIS_SESSION_H
#define CONNECTIONS_REDIS_REDIS_SESSION_H

#include "redis_error.h"
#include "redis_socket.h"

#include <QObject>
#include <QPointer>

namespace Velk {

/// The connection as those see it who run commands on it: it can be replaced by one to another node of the cluster
/// under their feet, and what the server refuses is reported in one place.
class RedisSession : public QObject
{
    Q_OBJECT

public:
    explicit RedisSession(QObject* parent = nullptr);

    /// Null while there is none. Callbacks that are due on the former one never come.
    void setSocket(RedisSocket* socket);
    bool isUp() const { return m_socket; }
    QString server() const { return m_socket ? m_socket->server() : QString(); }

    /// Runs the command. The callback gets the reply, errors too, unless `asker` is gone by then or the connection
    /// was replaced.
    void send(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback);
    /// The same, and a refused permission is not reported: whether it is granted is the question.
    void ask(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback);
    void sendFormatted(QObject* asker, const QByteArray& command, RedisSocket::Callback callback);

    /// Something about a key or a value that the user should know.
    void report(const QString& title, const QString& message) { emit reported(title, message); }

Q_SIGNALS:
    /// After setSocket(): what was asked on the former connection has to be asked again.
    void replaced();
    /// The server has answered with an error that is about more than a single key. Emitted before the callback runs.
    void refused(const Velk::RedisError& error);
    void reported(const QString& title, const QString& message);

private:
    void run(QObject* asker, const QByteArray& command, bool isQuestion, RedisSocket::Callback callback);

    QPointer<RedisSocket> m_socket;
};

} // namespace Velk

#endif
