// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_SOCKET_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_SOCKET_H

#include "redis_reply.h"
#include "redis_reply_limiter.h"

#include <connections/network/network_address.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QObject>
#include <QPointer>
#include <QString>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

class QSslConfiguration;
class QSslError;
class QTcpSocket;
struct redisReader;

namespace Velk {

/// One connection to a server: commands go out in the order in which they are sent, without waiting for each other's
/// replies, and each reply goes to its command's callback in the same order.
///
/// Nothing blocks, the look-up of the host's name included. Replies are handled in the event loop, never within send(),
/// and in portions, so that a flood of them does not keep the loop from its other work. A callback may delete the
/// socket; callbacks that are still due are dropped then.
class RedisSocket : public QObject
{
    Q_OBJECT

public:
    using Callback = std::function<void(const RedisReply&)>;

    explicit RedisSocket(QObject* parent = nullptr, const RedisReplyLimiter::Limits& limits = {});
    ~RedisSocket() override;

    /// Connects; with TLS if there is a configuration for it, the server's certificate bearing `tlsName` (empty: the
    /// host). connected() or failed() follows. To be called once.
    void open(const NetworkAddress& address, const std::optional<QSslConfiguration>& tls, const QString& tlsName);

    /// "127.0.0.1:6379", for messages.
    QString server() const { return m_server; }
    NetworkAddress address() const { return m_address; }

    /// Nothing after failed().
    void send(const QByteArrayList& command, Callback callback);
    /// The same for a command that formatted() has made, which can be sent more than once.
    void sendFormatted(const QByteArray& command, Callback callback);
    static QByteArray formatted(const QByteArrayList& command);

    /// Whether bytes have come in that are not handled yet.
    bool hasUnreadReplies() const;

Q_SIGNALS:
    void connected();
    /// The connection could not be made or has ended; nothing follows. A short title, and a sentence.
    void failed(const QString& title, const QString& message);

private:
    void onReadyRead();
    void onError();
    void onTlsErrors(const QList<QSslError>& errors);
    void scheduleDispatch();
    void dispatch();
    bool readReplies(const QByteArray& input);
    void fail(const QString& title, const QString& message);
    QString errorMessage() const;

    struct ReaderDeleter
    {
        void operator()(redisReader* reader) const;
    };

    QTcpSocket* m_socket = nullptr;
    std::unique_ptr<redisReader, ReaderDeleter> m_reader;
    RedisReplyLimiter m_limiter;
    std::deque<Callback> m_callbacks;
    NetworkAddress m_address;
    QString m_server;
    QString m_tlsTrouble;
    bool m_wasConnected = false;
    bool m_hasAnswered = false; // whether the server has ever sent anything
    bool m_isDispatchScheduled = false;
    bool m_hasEnded = false; // the socket has reported an error: replies may still be unread
    bool m_hasFailed = false;
};

} // namespace Velk

#endif
