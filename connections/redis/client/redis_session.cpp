#include "redis_session.h"

#include <hiredis/hiredis.h>

#include <algorithm>
#include <utility>

namespace Velk {

struct RedisSession::Errand
{
    QPointer<QObject> asker;
    QByteArray command;
    RedisSocket::Callback callback;
    QByteArray refusal;
};

RedisSession::RedisSession(QObject* parent)
    : QObject(parent)
{}

RedisSession::~RedisSession() = default;

void RedisSession::setSocket(RedisSocket* socket)
{
    m_socket = socket;
    m_errands.clear();
    if (m_detour) {
        m_detour->disconnect(this);
        m_detour.release()->deleteLater(); // it may be emitting
    }
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
                                      asker = QPointer<QObject>(asker), command, isQuestion,
                                      callback = std::move(callback)](const RedisReply& reply) {
        if (!self || self->m_socket != asked)
            return;
        if (reply.isError()) {
            const RedisError error = RedisError::of(reply.view());
            if (error.kind == RedisError::Ask && asker && self->openDetour) {
                self->runErrand({error.host.isEmpty() ? asked->address().host : error.host, error.port},
                                std::make_shared<Errand>(Errand{asker, command, callback, reply.bytes()}));
                return;
            }
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

void RedisSession::runErrand(const NetworkAddress& address, const std::shared_ptr<Errand>& errand)
{
    if (!m_detour || !(m_detour->address() == address)) {
        failErrands();
        m_detour = openDetour(address);
        connect(m_detour.get(), &RedisSocket::failed, this, &RedisSession::failErrands);
    }
    m_errands.push_back(errand);
    m_detour->send({"ASKING"}, RedisSocket::Callback());
    m_detour->sendFormatted(errand->command, [this, errand](const RedisReply& reply) {
        m_errands.erase(std::remove(m_errands.begin(), m_errands.end(), errand), m_errands.end());
        if (errand->asker)
            errand->callback(reply);
    });
}

// Those who wait get the refusal that sent their commands on the detour: they ask again sooner or later.
void RedisSession::failErrands()
{
    if (m_detour) {
        m_detour->disconnect(this);
        m_detour.release()->deleteLater(); // it may be emitting
    }
    const std::vector<std::shared_ptr<Errand>> errands = std::exchange(m_errands, {});
    const QPointer<RedisSession> self(this);
    for (const std::shared_ptr<Errand>& errand : errands) {
        redisReply refusal = {};
        refusal.type = REDIS_REPLY_ERROR;
        refusal.str = errand->refusal.data();
        refusal.len = std::size_t(errand->refusal.size());
        if (self && errand->asker)
            errand->callback(RedisReply(&refusal));
    }
}

} // namespace Velk
