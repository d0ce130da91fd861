// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_URL_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_URL_H

#include <connections/network/network_address.h>
#include <connections/network/network_secret.h>
#include <connections/network/tls_options.h>

#include <QString>
#include <QVector>

#include <optional>

namespace Velk {

class NetworkUrl;

/// Where a robot's memory is:
///
///     redis://[user[:password]@]host[:6379][,host…][/robot][?option=value&…]
///     redis+sentinel://[user[:password]@]host[:26379][,host…]/service[/robot][?option=value&…]
///
/// "rediss" and "rediss+sentinel" are the same over TLS. Several hosts are nodes of one cluster, or the sentinels of
/// one service. The general rules are those of NetworkUrl.
///
/// Parsing touches neither files nor the environment: a password that is kept there is read by credentials(), every
/// time, so that a changed one is used for the next connection. Only credentials() gives out a password; no text from
/// here, messages included, holds one.
class RedisUrl
{
public:
    /// The URL's meaning, or nothing, with *error set to one sentence that says what is wrong and what to do.
    static std::optional<RedisUrl> parse(const QString& url, QString* error);

    bool isTls() const { return m_isTls; }
    /// Whether addresses() are sentinels, to be asked for the master of serviceName().
    bool isSentinel() const { return m_isSentinel; }
    /// One at least, in the order in which they are to be tried.
    QVector<NetworkAddress> addresses() const { return m_addresses; }
    QString serviceName() const { return m_serviceName; }

    /// The robot whose keys are meant; "robot" when the URL names none.
    QString robot() const { return m_robot; }
    /// The glob pattern of the keys that plain mode shows; null in a memory that is laid out for robots.
    QString plainPattern() const { return m_plainPattern; }
    bool isPlain() const { return !m_plainPattern.isNull(); }
    /// The number of the database, as SELECT takes it.
    int database() const { return m_database; }

    /// For how long a server may leave a ping unanswered before the connection counts as lost, in milliseconds.
    int pongTimeoutMs() const { return m_pongTimeoutMs; }

    const TlsOptions& tls() const { return m_tls; }

    /// For the server: the user before the "@", else the server's default one. The password is the one in the URL, else
    /// that of ?password-file or ?password-env, else that of the environment variable VELK_REDIS_PASSWORD, if set.
    /// Nothing, with *error set to one sentence, when the file or the variable that the URL names cannot be read.
    std::optional<NetworkCredentials> credentials(QString* error) const;
    /// For the sentinels, in the same way: ?sentinel-user, and ?sentinel-password-file or ?sentinel-password-env or the
    /// variable VELK_REDIS_SENTINEL_PASSWORD.
    std::optional<NetworkCredentials> sentinelCredentials(QString* error) const;

    /// The URL in its plainest form, fit to be shown: no password and no standard port, every option as given.
    QString displayText() const { return m_displayText; }

private:
    RedisUrl() = default;

    bool parsePath(const NetworkUrl& url, QString* error);
    bool takeOption(const NetworkUrl& url, const QString& name, const QString& value, QString* error);
    bool takeTlsOption(const QString& name, const QString& value, QString* error);
    bool takeSecretOption(const QString& name, const QString& value, QString* error);
    QString displayTextOf(const NetworkUrl& url) const;

    bool m_isTls = false;
    bool m_isSentinel = false;
    QVector<NetworkAddress> m_addresses;
    QString m_serviceName;
    QString m_robot;
    bool m_isRobotGiven = false;
    QString m_plainPattern;
    int m_database = 0;
    int m_pongTimeoutMs = 1000;
    TlsOptions m_tls;
    NetworkSecret m_server;
    NetworkSecret m_sentinel;
    QString m_displayText;
};

} // namespace Velk

#endif
