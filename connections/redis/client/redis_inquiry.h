// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_INQUIRY_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_INQUIRY_H

#include "redis_session.h"

#include <QObject>

namespace Velk {

/// Commands whose replies belong together: counts the replies that are due, and drops them with the connection.
class RedisInquiry : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this object.
    explicit RedisInquiry(RedisSession* session, RedisSession::Permissions permissions = RedisSession::ReportRefused);

    /// Runs the command and gives its reply to the callback, which may ask more, and may delete this object. Without a
    /// connection the reply is due until the next one.
    void ask(const QByteArrayList& command, RedisSocket::Callback callback);
    /// The same for a command that RedisSocket::formatted() has made.
    void askFormatted(const QByteArray& command, RedisSocket::Callback callback);

    /// Whether replies are due.
    bool isActive() const { return m_due > 0; }
    /// Forgets the replies that are due: no callback and no signal comes.
    void cancel();

Q_SIGNALS:
    /// All replies have come. Emitted after the last callback.
    void finished();
    /// The connection was replaced while `due` replies were outstanding. They will not come. isActive() is false.
    void interrupted(int due);

private:
    void onReplaced();

    RedisSession* m_session;
    const RedisSession::Permissions m_permissions;
    int m_due = 0;
    int m_generation = 0; // incremented by cancel() and by a replaced connection
};

} // namespace Velk

#endif
