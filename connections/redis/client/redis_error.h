// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_ERROR_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_ERROR_H

#include <QByteArray>
#include <QByteArrayView>
#include <QCoreApplication>
#include <QString>

namespace Velk {

/// An error reply, classified by how it is handled.
struct RedisError
{
    enum Kind
    {
        Moved,       ///< the robot's slot is on another node of the cluster: host and port say where
        Ask,         ///< as Moved, while the slot is being moved: for this command only
        TryAgain,    ///< the slot is being moved and its keys are on both nodes
        Password,    ///< no password, or a wrong one
        Permission,  ///< the user may not run the command, or not on this key
        NoSuchKey,   ///< the error of XINFO; other commands have a reply for it
        WrongType,   ///< the key holds something else
        Unavailable, ///< the server cannot serve now: it loads its data, has no master, or is a replica
        Oversize,    ///< the value was too long and was taken out of the reply
        Other
    };

    Kind kind = Other;
    QByteArray text;
    QString host; ///< empty: the host that answered
    quint16 port = 0;
    qint64 valueBytes = 0; ///< Oversize: the length of the value that was taken out, at least 1

    static RedisError of(QByteArrayView reply);

    /// A short title for a user.
    QString title() const;
    /// A sentence that says what happened at `server` and what to do.
    QString message(const QString& server) const;

private:
    Q_DECLARE_TR_FUNCTIONS(Velk::RedisError)
};

} // namespace Velk

#endif
