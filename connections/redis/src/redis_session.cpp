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
    run(asker, RedisSocket::formatted(command), false, std::move(callback));
}

void RedisSession::ask(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback)
{
    run(asker, RedisSocket::formatted(command), true, std::move(callback));
}

void RedisSession::sendFormatted(QObject* asker, const QByteArray& command, RedisSocket::Callback callback)
{
    run(asker, command, false, std::move(callback));
}

void RedisSession::run(QObject* asker, const QByteArray& command, bool isQuestion, RedisSocket::Callback callback)
{
    if (!m_socket)
        return;
    m_socket->sendFormatted(command, [self = QPointer<RedisSession>(this), asked = m_socket,
                                      asker = QPointer<QObject>(asker), isQuestion,
                                      callback = std::move(callback)](const RedisReply& reply) {
        if (!self || self->m_socket != asked)
            return;
        if (reply.isError()) {
            const RedisError error = RedisError::of(reply.view());
            const bool isAboutOneKey = error.kind == RedisError::WrongType || error.kind == RedisError::Oversize ||
                                       error.kind == RedisError::NoSuchKey;
            const bool isAnswer = isQuestion && error.kind == RedisError::Permission;
            if (!isAboutOneKey && !isAnswer)
                emit self->refused(error);
            if (!self || self->m_socket != asked)
                return;
        }
        if (asker)
            callback(reply);
    });
}

} // namespace Velk
