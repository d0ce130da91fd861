// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_socket.h"

#include <QElapsedTimer>
#include <QSslConfiguration>
#include <QSslError>
#include <QSslSocket>
#include <QTcpSocket>
#include <QVarLengthArray>

#include <hiredis/hiredis.h>

namespace Velk {

namespace {

// What Qt buffers before we read. The server has to wait beyond it.
constexpr qint64 readBufferBytes = 4 * 1024 * 1024;
constexpr qint64 readPortionBytes = 64 * 1024;
// For how long replies are handled before the event loop has its turn.
constexpr int dispatchMs = 10;

struct ReplyDeleter
{
    void operator()(redisReply* reply) const { freeReplyObject(reply); }
};

} // namespace

void RedisSocket::ReaderDeleter::operator()(redisReader* reader) const
{
    redisReaderFree(reader);
}

RedisSocket::RedisSocket(QObject* parent, const RedisReplyLimiter::Limits& limits)
    : QObject(parent)
    , m_reader(redisReaderCreate())
    , m_limiter(limits)
{}

RedisSocket::~RedisSocket()
{
    if (!m_socket)
        return;
    // Never in a slot of one of the socket's own signals, which schedule and do nothing else.
    m_socket->disconnect(this);
    m_socket->abort();
}

void RedisSocket::open(const NetworkAddress& address, const std::optional<QSslConfiguration>& tls,
                       const QString& tlsName)
{
    m_address = address;
    m_server = address.text();
    if (tls) {
        auto* const socket = new QSslSocket(this);
        socket->setSslConfiguration(*tls);
        connect(socket, &QSslSocket::sslErrors, this, &RedisSocket::onTlsErrors);
        m_socket = socket;
    } else {
        m_socket = new QTcpSocket(this);
    }
    m_socket->setReadBufferSize(readBufferBytes);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(m_socket, &QTcpSocket::readyRead, this, &RedisSocket::onReadyRead);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &RedisSocket::onError);

    const auto onConnected = [this] {
        m_wasConnected = true;
        m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        // Queued: a receiver may delete this object, and the socket is still in use here.
        QMetaObject::invokeMethod(this, &RedisSocket::connected, Qt::QueuedConnection);
    };
    if (auto* const tlsSocket = qobject_cast<QSslSocket*>(m_socket)) {
        connect(tlsSocket, &QSslSocket::encrypted, this, onConnected);
        tlsSocket->connectToHostEncrypted(address.host, address.port, tlsName.isEmpty() ? address.host : tlsName);
    } else {
        connect(m_socket, &QTcpSocket::connected, this, onConnected);
        m_socket->connectToHost(address.host, address.port);
    }
}

QByteArray RedisSocket::formatted(const QByteArrayList& command)
{
    QVarLengthArray<const char*, 32> arguments;
    QVarLengthArray<std::size_t, 32> lengths;
    for (const QByteArray& argument : command) {
        arguments.append(argument.constData());
        lengths.append(std::size_t(argument.size()));
    }
    char* text = nullptr;
    const int length = redisFormatCommandArgv(&text, int(arguments.size()), arguments.data(), lengths.data());
    const QByteArray result = length > 0 ? QByteArray(text, length) : QByteArray();
    redisFreeCommand(text);
    return result;
}

void RedisSocket::send(const QByteArrayList& command, Callback callback)
{
    sendFormatted(formatted(command), std::move(callback));
}

void RedisSocket::sendFormatted(const QByteArray& command, Callback callback)
{
    if (m_hasFailed || m_hasEnded || !m_socket)
        return;
    m_callbacks.push_back(std::move(callback));
    m_socket->write(command);
}

bool RedisSocket::hasUnreadReplies() const
{
    return m_socket && m_socket->bytesAvailable() > 0;
}

void RedisSocket::onReadyRead()
{
    scheduleDispatch();
}

void RedisSocket::onError()
{
    // What the server sent before it went is handled first.
    m_hasEnded = true;
    scheduleDispatch();
}

void RedisSocket::onTlsErrors(const QList<QSslError>& errors)
{
    // The socket ends the handshake by itself; its own error says less.
    QStringList texts;
    for (const QSslError& error : errors)
        texts.append(error.errorString());
    texts.removeDuplicates();
    m_tlsTrouble = texts.join(QStringLiteral("; "));
}

void RedisSocket::scheduleDispatch()
{
    // Not from within the socket's signals: it does not announce bytes again while one of its slots runs an event
    // loop of its own, which a callback may do.
    if (m_isDispatchScheduled || m_hasFailed)
        return;
    m_isDispatchScheduled = true;
    QMetaObject::invokeMethod(this, &RedisSocket::dispatch, Qt::QueuedConnection);
}

void RedisSocket::dispatch()
{
    m_isDispatchScheduled = false;
    QElapsedTimer timer;
    timer.start();
    while (!m_hasFailed && m_socket->bytesAvailable() > 0) {
        if (timer.elapsed() >= dispatchMs) {
            scheduleDispatch();
            return;
        }
        m_hasAnswered = true;
        if (!readReplies(m_socket->read(readPortionBytes)))
            return;
    }
    if (m_hasEnded)
        fail(m_wasConnected ? tr("Redis: connection lost") : tr("Redis: cannot connect"), errorMessage());
}

// False when this object is gone, or must not go on.
bool RedisSocket::readReplies(const QByteArray& input)
{
    QByteArray bounded;
    const bool isProtocol = m_limiter.filter(input.constData(), input.size(), &bounded);
    if (redisReaderFeed(m_reader.get(), bounded.constData(), std::size_t(bounded.size())) != REDIS_OK) {
        fail(tr("Redis: protocol error"), tr("Out of memory while reading from %1.").arg(m_server));
        return false;
    }

    const QPointer<RedisSocket> self(this);
    for (;;) {
        void* next = nullptr;
        if (redisReaderGetReply(m_reader.get(), &next) != REDIS_OK) {
            fail(tr("Redis: protocol error"),
                 tr("%1 does not speak the Redis protocol (%2). Check the address and the port.")
                     .arg(m_server, QString::fromUtf8(m_reader->errstr)));
            return false;
        }
        if (!next)
            break;
        const std::unique_ptr<redisReply, ReplyDeleter> reply(static_cast<redisReply*>(next));
        if (m_callbacks.empty()) {
            fail(tr("Redis: protocol error"),
                 tr("%1 sent a reply that nobody asked for (%2). Check the address and the port.")
                     .arg(m_server, RedisReply(reply.get()).text().left(100)));
            return false;
        }
        const Callback callback = std::move(m_callbacks.front());
        m_callbacks.pop_front();
        if (callback)
            callback(RedisReply(reply.get()));
        if (!self || m_hasFailed)
            return false;
    }
    if (!isProtocol) {
        fail(tr("Redis: protocol error"), tr("%1 does not speak the Redis protocol (%2). Check the address and the "
                                             "port, and whether the server expects TLS.")
                                              .arg(m_server, m_limiter.errorString()));
        return false;
    }
    return true;
}

void RedisSocket::fail(const QString& title, const QString& message)
{
    if (m_hasFailed)
        return;
    m_hasFailed = true;
    m_callbacks.clear();
    m_socket->disconnect(this);
    m_socket->abort();
    emit failed(title, message);
}

QString RedisSocket::errorMessage() const
{
    if (!m_tlsTrouble.isEmpty())
        return tr("%1 could not be trusted: %2. Check the server's certificate, and the ca-file and tls-name of the "
                  "URL.")
            .arg(m_server, m_tlsTrouble);
    switch (m_socket->error()) {
    case QAbstractSocket::ConnectionRefusedError:
        return tr("%1 refuses the connection. Check that the server is running and that host and port are right.")
            .arg(m_server);
    case QAbstractSocket::HostNotFoundError:
        return tr("There is no host of the name %1. Check the host's name.").arg(m_address.host);
    case QAbstractSocket::RemoteHostClosedError:
        if (m_wasConnected && !m_hasAnswered)
            return tr("%1 has closed the connection before it answered. Check that it is a Redis server, and whether "
                      "it expects TLS, or a client certificate.")
                .arg(m_server);
        return m_wasConnected ? tr("%1 has closed the connection.").arg(m_server)
                              : tr("%1 has closed the connection before it was established. Check whether the "
                                   "server expects TLS, or a client certificate.")
                                    .arg(m_server);
    case QAbstractSocket::SslHandshakeFailedError:
        return tr("No TLS connection to %1 (%2). Check that the server's port speaks TLS.")
            .arg(m_server, m_socket->errorString());
    default:
        if (!m_hasAnswered && qobject_cast<QSslSocket*>(m_socket))
            return tr("No TLS connection to %1 (%2). Check that the server's port speaks TLS, and whether the server "
                      "expects a client certificate.")
                .arg(m_server, m_socket->errorString());
        return tr("%1: %2.").arg(m_server, m_socket->errorString());
    }
}

} // namespace Velk
