// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_connector.h"

#include "redis_error.h"

#include <QSslConfiguration>

#include <utility>

namespace Velk {

namespace {

// Nodes of a cluster that disagree about a slot redirect a client to each other without end.
constexpr int maxRedirections = 5;

// Sends AUTH, unless there are no credentials.
void authenticate(RedisSocket* socket, const NetworkCredentials& credentials, RedisSocket::Callback onReply)
{
    if (credentials.isEmpty())
        return;
    // A server that wants no password refuses a user's name without one as well.
    QByteArrayList command = {"AUTH"};
    if (!credentials.user.isEmpty())
        command.append(credentials.user);
    command.append(credentials.password);
    socket->send(command, std::move(onReply));
}

} // namespace

RedisConnector::RedisConnector(const RedisUrl& url, const RedisHandshake& handshake, QObject* parent)
    : QObject(parent)
    , m_url(url)
    , m_handshake(handshake)
{
    m_timeout.setSingleShot(true);
    connect(&m_timeout, &QTimer::timeout, this, &RedisConnector::onTimeout);
}

RedisConnector::~RedisConnector() = default;

void RedisConnector::start(const QVector<NetworkAddress>& addresses)
{
    m_addresses = addresses;
    tryNextAddress();
}

std::unique_ptr<RedisSocket> RedisConnector::takeSocket()
{
    m_socket->disconnect(this);
    return std::move(m_socket);
}

void RedisConnector::tryNextAddress()
{
    m_redirections = 0;
    tryAddress(m_addresses.at(m_nextAddress++), m_url.isSentinel() ? Sentinel : Server);
}

void RedisConnector::tryAddress(const NetworkAddress& address, Role role)
{
    dropSocket();
    m_role = role;
    std::optional<QSslConfiguration> tls;
    if (m_url.isTls()) {
        QString error;
        tls = m_url.tls().configuration(&error);
        if (!tls) {
            m_nextAddress = int(m_addresses.size()); // the files are the same for every address
            QMetaObject::invokeMethod(
                this, [this, error] { onAddressFailed(tr("Redis: TLS not possible"), error); }, Qt::QueuedConnection);
            return;
        }
    }
    m_socket = std::make_unique<RedisSocket>();
    connect(m_socket.get(), &RedisSocket::connected, this, &RedisConnector::onConnected);
    connect(m_socket.get(), &RedisSocket::failed, this, &RedisConnector::onAddressFailed);
    m_timeout.start(addressTimeoutMs);
    m_socket->open(address, tls, m_url.tls().serverName);
}

void RedisConnector::onConnected()
{
    QString error;
    const std::optional<NetworkCredentials> credentials =
        m_role == Sentinel ? m_url.sentinelCredentials(&error) : m_url.credentials(&error);
    if (!credentials) {
        onAddressFailed(tr("Redis: no password"), error);
        return;
    }
    authenticate(m_socket.get(), *credentials, [this](const RedisReply& reply) { onAuthenticated(reply); });
    if (m_role == Sentinel)
        askSentinel();
    else
        startHandshake();
}

void RedisConnector::onAuthenticated(const RedisReply& reply)
{
    const RedisError::Kind kind = reply.isError() ? RedisError::of(reply.view()).kind : RedisError::Password;
    const bool isKnown =
        kind == RedisError::Password || kind == RedisError::Permission || kind == RedisError::Unavailable;
    // Any other error can quote the command, and the password with it.
    if (isKnown)
        isRefused(reply);
    else
        onAddressFailed(tr("Redis: password refused"),
                        tr("%1 does not take a user name or a password. Check that it is a Redis server, and leave out "
                           "the password if it wants none.")
                            .arg(m_socket->server()));
}

// True when the reply is an error, which has ended the attempt at this address then.
bool RedisConnector::isRefused(const RedisReply& reply)
{
    if (!reply.isError())
        return false;
    const RedisError error = RedisError::of(reply.view());
    onAddressFailed(error.title(), error.message(m_socket->server()));
    return true;
}

void RedisConnector::askSentinel()
{
    m_socket->send({"SENTINEL", "GET-MASTER-ADDR-BY-NAME", m_url.serviceName().toUtf8()},
                   [this](const RedisReply& reply) {
                       if (isRefused(reply))
                           return;
                       const NetworkAddress master = {reply.at(0).text(), quint16(reply.at(1).integer())};
                       if (reply.size() != 2 || master.port == 0) {
                           onAddressFailed(tr("Redis: no master"),
                                           tr("The sentinel %1 knows no master of the service \"%2\". Check the "
                                              "service's name in the URL.")
                                               .arg(m_socket->server(), m_url.serviceName()));
                           return;
                       }
                       tryAddress(master, Server);
                   });
}

void RedisConnector::startHandshake()
{
    if (m_url.database() != 0)
        m_socket->send({"SELECT", QByteArray::number(m_url.database())},
                       [this](const RedisReply& reply) { isRefused(reply); });
    m_socket->send({"PING"}, [this](const RedisReply& reply) { isRefused(reply); });
    if (m_url.isSentinel())
        m_socket->send({"ROLE"}, [this](const RedisReply& reply) {
            if (reply.isError() || reply.at(0).view() == "master")
                return;
            // Sentinels go on naming the old master until they have agreed on the switch.
            onAddressFailed(tr("Redis: no master"),
                            tr("The sentinels name %1 as the master of \"%2\", and it is none at present: a switch is "
                               "under way. They are asked again.")
                                .arg(m_socket->server(), m_url.serviceName()));
        });
    if (m_handshake.command.isEmpty())
        m_socket->send({"PING"}, [this](const RedisReply&) { finishHandshake(); });
    else
        m_socket->send(m_handshake.command, [this](const RedisReply& reply) { onHandshakeReply(reply); });
}

void RedisConnector::onHandshakeReply(const RedisReply& reply)
{
    if (reply.isError()) {
        const RedisError error = RedisError::of(reply.view());
        if (error.kind == RedisError::Moved && m_redirections < maxRedirections) {
            ++m_redirections;
            tryAddress({error.host.isEmpty() ? m_socket->address().host : error.host, error.port}, Server);
            return;
        }
        // A key that may not be read, or is of another type, is no reason to refuse all others.
        const bool canGoOn = error.kind == RedisError::Permission || error.kind == RedisError::WrongType ||
                             error.kind == RedisError::Oversize || error.kind == RedisError::Ask;
        if (!canGoOn) {
            isRefused(reply);
            return;
        }
    }
    if (m_handshake.onReply)
        m_handshake.onReply(reply);
    finishHandshake();
}

void RedisConnector::finishHandshake()
{
    m_timeout.stop();
    m_isDone = true;
    emit succeeded();
}

void RedisConnector::onAddressFailed(const QString& title, const QString& message)
{
    if (m_isDone)
        return;
    dropSocket();
    if (m_nextAddress < m_addresses.size()) {
        tryNextAddress();
        return;
    }
    m_isDone = true;
    emit failed(title, message);
}

std::unique_ptr<RedisSocket> RedisConnector::socketTo(const RedisUrl& url, const NetworkAddress& address)
{
    // The connection that was made before has shown that the files and the password can be read. If they cannot be
    // read any more, the server refuses the commands, and that is reported.
    QString error;
    const std::optional<QSslConfiguration> tls =
        url.isTls() ? url.tls().configuration(&error) : std::optional<QSslConfiguration>();
    const NetworkCredentials credentials = url.credentials(&error).value_or(NetworkCredentials());
    auto socket = std::make_unique<RedisSocket>();
    socket->open(address, url.isTls() ? std::optional(tls.value_or(QSslConfiguration())) : tls, url.tls().serverName);
    authenticate(socket.get(), credentials, RedisSocket::Callback());
    return socket;
}

void RedisConnector::onTimeout()
{
    onAddressFailed(tr("Redis: no answer"),
                    (m_url.isTls() ? tr("%1 did not answer within %2 seconds. Check the address, the network, and that "
                                        "the server's port speaks TLS.")
                                   : tr("%1 did not answer within %2 seconds. Check the address, the network, and that "
                                        "no firewall swallows the connection."))
                        .arg(m_socket->server())
                        .arg(addressTimeoutMs / 1000));
}

void RedisConnector::dropSocket()
{
    m_timeout.stop();
    m_socket.reset();
}

} // namespace Velk
