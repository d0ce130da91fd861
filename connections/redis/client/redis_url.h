#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_URL_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_URL_H

#include "redis_secret.h"

#include <QString>
#include <QVector>

#include <optional>

namespace Velk {

/// Where a robot's memory is, as a URL says it:
///
///     redis://[user[:password]@]host[:6379][,host…][/robot][?option=value&…]
///     redis+sentinel://[user[:password]@]host[:26379][,host…]/service[/robot][?option=value&…]
///
/// "rediss" and "rediss+sentinel" stand for the same over TLS. Several hosts are nodes of one cluster, or the sentinels
/// of one service. What has a meaning in a URL is written percent-encoded (/ as %2F), an IPv6 address in brackets.
///
/// Parsing touches neither files nor the environment: a password that is kept there is read by credentials(), every
/// time, so that a changed one is used for the next connection. Only credentials() gives out a password; no text from
/// here, messages included, holds one.
class RedisUrl
{
public:
    struct Address
    {
        QString host; ///< a name, or an address without brackets
        quint16 port;
    };

    /// The URL's meaning, or nothing, with *error set to one sentence that says what is wrong and what to do.
    static std::optional<RedisUrl> parse(const QString& url, QString* error);

    bool isTls() const { return m_isTls; }
    /// Whether addresses() are sentinels, to be asked for the master of serviceName().
    bool isSentinel() const { return m_isSentinel; }
    /// One at least, in the order in which they are to be tried.
    QVector<Address> addresses() const { return m_addresses; }
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

    /// File names, as given; empty when not given. Without a CA file the system's certificate authorities are trusted;
    /// a client certificate without a key file has its key in the same file.
    QString caFile() const { return m_caFile; }
    QString certificateFile() const { return m_certificateFile; }
    QString keyFile() const { return m_keyFile; }
    /// The name that the server's certificate must bear; empty: the host that is connected to.
    QString tlsName() const { return m_tlsName; }

    /// For the server: the user before the "@", else the server's default one. The password is the one in the URL, else
    /// that of ?password-file or ?password-env, else that of the environment variable VELK_REDIS_PASSWORD, if set.
    /// Nothing, with *error set to one sentence, when the file or the variable that the URL names cannot be read.
    std::optional<RedisCredentials> credentials(QString* error) const;
    /// For the sentinels, in the same way: ?sentinel-user, and ?sentinel-password-file or ?sentinel-password-env or the
    /// variable VELK_REDIS_SENTINEL_PASSWORD.
    std::optional<RedisCredentials> sentinelCredentials(QString* error) const;

    /// The URL in its plainest form, fit to be shown: no password and no standard port, every option as given.
    QString displayText() const { return m_displayText; }

private:
    class Parser;

    RedisUrl() = default;

    bool m_isTls = false;
    bool m_isSentinel = false;
    QVector<Address> m_addresses;
    QString m_serviceName;
    QString m_robot;
    QString m_plainPattern;
    int m_database = 0;
    int m_pongTimeoutMs = 1000;
    QString m_caFile;
    QString m_certificateFile;
    QString m_keyFile;
    QString m_tlsName;
    RedisSecret m_server;
    RedisSecret m_sentinel;
    QString m_displayText;
};

inline bool operator==(const RedisUrl::Address& a, const RedisUrl::Address& b)
{
    return a.host == b.host && a.port == b.port;
}

} // namespace Velk

#endif
