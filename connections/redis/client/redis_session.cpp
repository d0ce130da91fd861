// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_session.h"

#include <hiredis/hiredis.h>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr int usualRedirectionTimeoutMs = 1000;

bool isAboutOneKey(const RedisError& error)
{
    return error.kind == RedisError::WrongType || error.kind == RedisError::Oversize ||
           error.kind == RedisError::NoSuchKey;
}

} // namespace

struct RedisSession::RedirectedCommand
{
    QPointer<QObject> asker;
    QByteArray text;
    RedisSocket::Callback callback;
    QByteArray refusal; // the error that redirected it
};

RedisSession::RedisSession(QObject* parent)
    : QObject(parent)
{
    m_redirectionTimer.setSingleShot(true);
    m_redirectionTimer.setInterval(usualRedirectionTimeoutMs);
    connect(&m_redirectionTimer, &QTimer::timeout, this, &RedisSession::failRedirectedCommands);
}

RedisSession::~RedisSession() = default;

void RedisSession::setSocket(RedisSocket* socket)
{
    m_socket = socket;
    ++m_generation;
    m_redirectedCommands.clear();
    dropAskedNode();
    emit replaced();
}

void RedisSession::send(QObject* asker, const QByteArrayList& command, RedisSocket::Callback callback,
                        Permissions permissions)
{
    sendFormatted(asker, RedisSocket::formatted(command), std::move(callback), permissions);
}

void RedisSession::sendFormatted(QObject* asker, const QByteArray& command, RedisSocket::Callback callback,
                                 Permissions permissions)
{
    if (!m_socket)
        return;
    m_socket->sendFormatted(command, [self = QPointer<RedisSession>(this), generation = m_generation,
                                      asker = QPointer<QObject>(asker), command, permissions,
                                      callback = std::move(callback)](const RedisReply& reply) {
        if (!self || self->m_generation != generation)
            return;
        if (reply.isError()) {
            const RedisError error = RedisError::of(reply.view());
            if (error.kind == RedisError::Ask && asker && self->openNode) {
                const NetworkAddress node = {error.host.isEmpty() ? self->m_socket->address().host : error.host,
                                             error.port};
                self->runAtAskedNode(node, std::make_shared<RedirectedCommand>(
                                               RedirectedCommand{asker, command, callback, reply.bytes()}));
                return;
            }
            const bool isAnswer = permissions == ProbeGranted && error.kind == RedisError::Permission;
            if (!isAboutOneKey(error) && !isAnswer)
                emit self->refused(error);
            if (!self || self->m_generation != generation)
                return;
        }
        if (asker)
            callback(reply);
    });
}

void RedisSession::runAtAskedNode(const NetworkAddress& address, const std::shared_ptr<RedirectedCommand>& command)
{
    if (!m_askedNode || !(m_askedNode->address() == address)) {
        failRedirectedCommands();
        m_askedNode = openNode(address);
        connect(m_askedNode.get(), &RedisSocket::failed, this, &RedisSession::failRedirectedCommands);
    }
    m_redirectedCommands.push_back(command);
    if (!m_redirectionTimer.isActive())
        m_redirectionTimer.start();
    m_askedNode->send({"ASKING"}, RedisSocket::Callback());
    // A node that was dropped is deleted later and may answer until then.
    m_askedNode->sendFormatted(command->text, [self = QPointer<RedisSession>(this), node = m_askedNode.get(),
                                               command](const RedisReply& reply) {
        if (self && self->m_askedNode.get() == node)
            self->onRedirectedReply(command, reply);
    });
}

void RedisSession::onRedirectedReply(const std::shared_ptr<RedirectedCommand>& command, const RedisReply& reply)
{
    m_redirectedCommands.erase(std::remove(m_redirectedCommands.begin(), m_redirectedCommands.end(), command),
                               m_redirectedCommands.end());
    if (m_redirectedCommands.empty())
        m_redirectionTimer.stop();
    else
        m_redirectionTimer.start();
    if (command->asker)
        command->callback(reply);
}

// Pending callers get the ASK error itself: they run their commands again sooner or later.
void RedisSession::failRedirectedCommands()
{
    dropAskedNode();
    const std::vector<std::shared_ptr<RedirectedCommand>> commands = std::exchange(m_redirectedCommands, {});
    const QPointer<RedisSession> self(this);
    const int generation = m_generation;
    for (const std::shared_ptr<RedirectedCommand>& command : commands) {
        redisReply refusal = {};
        refusal.type = REDIS_REPLY_ERROR;
        refusal.str = command->refusal.data();
        refusal.len = std::size_t(command->refusal.size());
        if (self && m_generation == generation && command->asker)
            command->callback(RedisReply(&refusal));
    }
}

void RedisSession::dropAskedNode()
{
    m_redirectionTimer.stop();
    if (!m_askedNode)
        return;
    m_askedNode->disconnect(this);
    m_askedNode.release()->deleteLater(); // it may be emitting
}

} // namespace Velk
