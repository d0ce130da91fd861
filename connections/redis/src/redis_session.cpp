#include "redis_session.h"

#include <utility>

namespace Velk {

RedisSession::RedisSession(QObject* parent)
    : QObject(parent)
{}

void RedisSession::setSocket(RedisSocket* socket)
{
    m_socket = socket;
    emit replaced();
}

void RedisSession::send(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback)
{
    sendFormatted(asker, RedisSocket::formatted(command), std::move(callback));
}

void RedisSession::sendFormatted(QObject* asker, const QByteArray& command, RedisSocket::Callback callback)
{
    if (!m_socket)
        return;
    m_socket->sendFormatted(command,
                            [self = QPointer<RedisSession>(this), asked = m_socket, asker = QPointer<QObject>(asker),
                             callback = std::move(callback)](const RedisReply& reply) {
                                if (!self || self->m_socket != asked)
                                    return;
                                if (reply.isError()) {
                                    const RedisError error = RedisError::of(reply.view());
                                    if (error.kind != RedisError::WrongType && error.kind != RedisError::Oversize)
                                        emit self->refused(error);
                                    if (!self || self->m_socket != asked)
                                        return;
                                }
                                if (asker)
                                    callback(reply);
                            });
}

} // namespace Velk
