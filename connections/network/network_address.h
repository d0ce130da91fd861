// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_NETWORK_ADDRESS_H
#define CONNECTIONS_NETWORK_NETWORK_ADDRESS_H

#include <QString>

#include <functional>
#include <optional>

namespace Velk {

/// A host and a port.
struct NetworkAddress
{
    QString host; ///< a name in ASCII, or an IP address without brackets
    quint16 port = 0;

    /// Parses "host", "host:port", "[IPv6]" or "[IPv6]:port", as a URL has them; without a port it is `usualPort`. A
    /// name is converted to lower case and to ASCII (IDNA). Nothing, with *error set to one sentence, when the text is
    /// none of these. `quoted` returns how a piece of the text appears in that sentence.
    static std::optional<NetworkAddress> parse(const QString& text, quint16 usualPort,
                                               const std::function<QString(const QString& piece)>& quoted,
                                               QString* error);

    /// "localhost:6379", "[::1]:6379"
    QString text() const;
    /// As in a URL: percent-encoded, and without the port when that is `usualPort`.
    QString urlText(quint16 usualPort) const;
};

inline bool operator==(const NetworkAddress& a, const NetworkAddress& b)
{
    return a.host == b.host && a.port == b.port;
}

} // namespace Velk

#endif
