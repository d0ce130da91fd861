#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_SESSION_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_SESSION_H

#include "redis_error.h"
#include "redis_socket.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

namespace Velk {

/// The connection as those see it who run commands on it: it can be replaced by one to another node of the cluster
/// under their feet, and what the server refuses is reported in one place. A command whose keys are on their way to
/// another node is run there.
class RedisSession : public QObject
{
    Q_OBJECT

public:
    explicit RedisSession(QObject* parent = nullptr);
    ~RedisSession() override;

    /// Makes a connection to another node of the cluster, authentication included, on which commands can be run at
    /// once.
    std::function<std::unique_ptr<RedisSocket>(const NetworkAddress&)> openDetour;

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
    struct Errand;

    void run(QObject* asker, const QByteArray& command, bool isQuestion, RedisSocket::Callback callback);
    void runErrand(const NetworkAddress& address, const std::shared_ptr<Errand>& errand);
    void failErrands();

    QPointer<RedisSocket> m_socket;
    // To the node that has the robot's keys while their slot is on its way there.
    std::unique_ptr<RedisSocket> m_detour;
    std::vector<std::shared_ptr<Errand>> m_errands; // commands whose reply is due on the detour
};

} // namespace Velk

#endif
