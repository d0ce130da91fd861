// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_NETWORK_URL_H
#define CONNECTIONS_NETWORK_NETWORK_URL_H

#include "network_address.h"
#include "network_secret.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <optional>

namespace Velk {

/// The parts that URLs of servers on a network have in common:
///
///     scheme://[user[:password]@]host[:port][,host…][/path][?option=value&…]
///
/// Reserved characters are written percent-encoded (/ as %2F), an IPv6 address in brackets. Parsing stops at the first
/// fault, with one sentence that says what is wrong and what to do. No sentence and no display
/// text holds a password.
class NetworkUrl
{
public:
    /// The URLs that a connection takes.
    struct Syntax
    {
        struct Scheme
        {
            QString name; ///< in lower case
            quint16 usualPort;
        };

        QString subject; ///< what the URLs name, with its article: "a Redis memory"
        QString example; ///< "redis://host/robot"
        QVector<Scheme> schemes;
    };

    /// The URL taken apart, up to the options; nothing, with *error set, when it is not valid.
    static std::optional<NetworkUrl> parse(const QString& url, const Syntax& syntax, QString* error);

    /// In lower case.
    QString scheme() const { return m_scheme.name; }
    /// The user and the password in the URL.
    const NetworkSecret& secret() const { return m_secret; }
    /// One at least, in the order in which they are given.
    QVector<NetworkAddress> addresses() const { return m_addresses; }
    /// The parts between the slashes after the hosts, percent-encoded as given. One empty part when there is none.
    QStringList path() const { return m_path.split(QLatin1Char('/')); }
    /// The same in one piece.
    QString pathText() const { return m_path; }

    /// Calls `take` for each option in its order, the value decoded, until it returns false: it has set *error then.
    /// False also, with *error set, when an option is not one of `names`, is given twice, or has no valid value.
    bool takeOptions(const QStringList& names,
                     const std::function<bool(const QString& name, const QString& value)>& take, QString* error);

    /// The piece of the URL in quotation marks, for a message; an ellipsis when it may be part of a password.
    QString quoted(const QString& piece) const;

    /// The URL up to the hosts, in its plainest form, fit to be shown: no password and no usual port.
    QString displayStart() const;
    /// The options that were taken, as in a URL: empty, or "?db=1&…".
    QString displayOptions() const;

private:
    NetworkUrl() = default;

    bool parseParts(const QString& url, const Syntax& syntax, QString* error);
    bool parseScheme(const QString& scheme, const Syntax& syntax, QString* error);
    bool parseAuthority(const QString& authority, QString* error);
    bool parseUser(const QString& text, QString* error);

    Syntax::Scheme m_scheme = {QString(), 0};
    NetworkSecret m_secret;
    QVector<NetworkAddress> m_addresses;
    QString m_path;
    QString m_query;
    QStringList m_takenOptions;
    bool m_mayQuote = true;
};

} // namespace Velk

#endif
