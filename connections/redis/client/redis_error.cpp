// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_error.h"

#include <array>

namespace Velk {

namespace {

struct Prefix
{
    const char* text;
    RedisError::Kind kind;
};

// NOAUTH: no password was given. WRONGPASS: a wrong one was. Servers with one password for all users have no code for
// it, only words.
constexpr std::array<Prefix, 16> prefixes = {{
    {"MOVED ", RedisError::Moved},
    {"ASK ", RedisError::Ask},
    {"TRYAGAIN", RedisError::TryAgain},
    {"NOAUTH", RedisError::Password},
    {"WRONGPASS", RedisError::Password},
    {"ERR invalid password", RedisError::Password},
    {"ERR AUTH <password> called without any password", RedisError::Password},
    {"NOPERM", RedisError::Permission},
    {"ERR no such key", RedisError::NoSuchKey},
    {"WRONGTYPE", RedisError::WrongType},
    {"LOADING", RedisError::Unavailable},
    {"MASTERDOWN", RedisError::Unavailable},
    {"CLUSTERDOWN", RedisError::Unavailable},
    {"BUSY", RedisError::Unavailable},
    {"READONLY", RedisError::Unavailable},
    {"OVERSIZE", RedisError::Oversize},
}};

} // namespace

RedisError RedisError::of(QByteArrayView reply)
{
    RedisError error;
    error.text = reply.toByteArray();
    for (const Prefix& prefix : prefixes) {
        if (error.text.startsWith(prefix.text)) {
            error.kind = prefix.kind;
            break;
        }
    }
    if (error.kind == Moved || error.kind == Ask) {
        // MOVED 3999 10.0.0.1:6381; the host can be an IPv6 address, and is left out when it is the same one.
        const QByteArray address = error.text.split(' ').value(2);
        const qsizetype colon = address.lastIndexOf(':');
        error.host = QString::fromUtf8(address.left(qMax<qsizetype>(colon, 0)));
        error.port = address.mid(colon + 1).toUShort();
        if (colon == -1 || error.port == 0)
            error.kind = Other;
    }
    if (error.kind == Oversize)
        error.valueBytes = qMax<qint64>(1, error.text.split(' ').value(1).toLongLong());
    return error;
}

QString RedisError::title() const
{
    switch (kind) {
    case Password:
        return tr("Redis: password refused");
    case Permission:
        return tr("Redis: not permitted");
    case WrongType:
        return tr("Redis: key of another type");
    case Unavailable:
        return tr("Redis: server not available");
    case Oversize:
        return tr("Redis: value too long");
    default:
        return tr("Redis: error");
    }
}

QString RedisError::message(const QString& server) const
{
    const QString said = QString::fromUtf8(text.left(300));
    switch (kind) {
    case Moved:
    case Ask:
    case TryAgain:
        return tr("%1 says that the robot's keys are on another node of its cluster (%2).").arg(server, said);
    case Password:
        if (text.startsWith("NOAUTH"))
            return tr("%1 asks for a password. Give it in the URL as user:password@, with password-file or "
                      "password-env, or in VELK_REDIS_PASSWORD.")
                .arg(server);
        return tr("%1 does not take the user name or the password (%2). Check both; the password may have been "
                  "changed on the server.")
            .arg(server, said);
    case Permission:
        return tr("%1 does not permit this user what is needed (%2). Ask the server's administrator to allow it, "
                  "with ACL SETUSER.")
            .arg(server, said);
    case WrongType:
        return tr("A key on %1 holds a value of another type than the robot memory has there (%2). Check which program "
                  "writes it.")
            .arg(server, said);
    case Unavailable:
        if (text.startsWith("LOADING"))
            return tr("%1 is still loading its data. It is asked again until it is ready.").arg(server);
        if (text.startsWith("CLUSTERDOWN"))
            return tr("The cluster of %1 is down (%2). It is asked again; check the cluster's nodes.")
                .arg(server, said);
        if (text.startsWith("READONLY"))
            return tr("%1 is a replica and takes no writes (%2). Give the URL of the master, or its sentinels.")
                .arg(server, said);
        return tr("%1 cannot serve the robot now (%2). It is asked again.").arg(server, said);
    case Oversize:
        return tr("A value on %1 is too long to be shown (%2 bytes).").arg(server, QString::number(valueBytes));
    case NoSuchKey:
    case Other:
        break;
    }
    return tr("%1 answered with an error: %2").arg(server, said);
}

} // namespace Velk
