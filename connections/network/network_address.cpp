// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "network_address.h"

#include "percent_encoding.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QRegularExpression>
#include <QUrl>

namespace Velk {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Velk::NetworkAddress", text);
}

// A host name or address in the form in which it is looked up; empty when it is neither.
QString validHost(const QString& host)
{
    static const QRegularExpression name(QStringLiteral("\\A[A-Za-z0-9_]([A-Za-z0-9_.-]*[A-Za-z0-9_.])?\\z"));
    const QString ascii = name.match(host).hasMatch() ? host : QString::fromLatin1(QUrl::toAce(host));
    return name.match(ascii).hasMatch() && ascii.size() <= 253 ? ascii.toLower() : QString();
}

bool isIpv6(const QString& host)
{
    return host.contains(QLatin1Char(':'));
}

} // namespace

std::optional<NetworkAddress> NetworkAddress::parse(const QString& text, quint16 usualPort,
                                                    const std::function<QString(const QString&)>& quoted,
                                                    QString* error)
{
    NetworkAddress address{QString(), usualPort};
    QString port;
    if (text.startsWith(QLatin1Char('['))) {
        const int end = text.indexOf(QLatin1Char(']'));
        if (end == -1) {
            *error = tr("The bracket that opens the IPv6 address %1 is not closed.").arg(quoted(text));
            return std::nullopt;
        }
        const QString bracketed = text.left(end + 1);
        const std::optional<QString> host = percentDecodedText(text.mid(1, end - 1));
        if (!host || QHostAddress(*host).protocol() != QAbstractSocket::IPv6Protocol) {
            *error = tr("The text in brackets, %1, is no IPv6 address.").arg(quoted(bracketed));
            return std::nullopt;
        }
        address.host = *host;
        port = text.mid(end + 1);
        if (!port.isEmpty() && !port.startsWith(QLatin1Char(':'))) {
            *error = tr("After the IPv6 address %1 only a port can follow: [::1]:%2.")
                         .arg(quoted(bracketed), QString::number(usualPort));
            return std::nullopt;
        }
        port = port.mid(1);
    } else {
        if (text.count(QLatin1Char(':')) > 1) {
            *error = tr("An address has more than one colon: write an IPv6 address in brackets, [::1].");
            return std::nullopt;
        }
        const int colon = text.indexOf(QLatin1Char(':'));
        const QString host = text.left(colon);
        if (colon != -1)
            port = text.mid(colon + 1);
        address.host = validHost(percentDecodedText(host).value_or(QString()));
        if (address.host.isEmpty()) {
            *error = tr("The host %1 is neither a host name nor an IP address.").arg(quoted(host));
            return std::nullopt;
        }
    }
    if (!port.isEmpty()) {
        bool isNumber = false;
        address.port = port.toUShort(&isNumber);
        if (!isNumber || address.port == 0 || !port.front().isDigit()) {
            *error = tr("The port after the colon is not a number from 1 to 65535.");
            return std::nullopt;
        }
    }
    return address;
}

QString NetworkAddress::text() const
{
    const QString bracketed = isIpv6(host) ? QLatin1Char('[') + host + QLatin1Char(']') : host;
    return bracketed + QLatin1Char(':') + QString::number(port);
}

QString NetworkAddress::urlText(quint16 usualPort) const
{
    const QString text = isIpv6(host) ? QLatin1Char('[') + percentEncoded(host, ":") + QLatin1Char(']') : host;
    return port == usualPort ? text : text + QLatin1Char(':') + QString::number(port);
}

} // namespace Velk
