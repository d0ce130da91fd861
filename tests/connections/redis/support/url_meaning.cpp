// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "url_meaning.h"

#include <QStringList>

using Velk::NetworkAddress;
using Velk::RedisUrl;

QString meaning(const RedisUrl& url)
{
    QStringList parts;
    for (const NetworkAddress& address : url.addresses())
        parts << QStringLiteral("%1 port %2").arg(address.host).arg(address.port);
    const auto add = [&parts](const char* name, const QString& value) {
        if (!value.isNull() && !value.isEmpty())
            parts << QLatin1String(name) + QLatin1Char(' ') + value;
    };
    if (url.isTls())
        parts << QStringLiteral("tls");
    if (url.isSentinel())
        parts << QStringLiteral("sentinel");
    add("service", url.serviceName());
    add("robot", url.robot());
    if (url.isPlain())
        add("plain", url.plainPattern());
    if (url.database() != 0)
        add("db", QString::number(url.database()));
    if (url.pongTimeoutMs() != 1000)
        add("pong", QString::number(url.pongTimeoutMs()));
    add("ca", url.tls().caFile);
    add("cert", url.tls().certificateFile);
    add("key", url.tls().keyFile);
    add("tls-name", url.tls().serverName);
    return parts.join(QStringLiteral("; "));
}

RedisUrl parsed(const QString& url)
{
    QString error;
    const std::optional<RedisUrl> result = RedisUrl::parse(url, &error);
    if (!result)
        qFatal("%s: %s", qPrintable(url), qPrintable(error));
    return *result;
}

QString errorOf(const QString& url)
{
    QString error;
    const std::optional<RedisUrl> result = RedisUrl::parse(url, &error);
    return result ? QStringLiteral("parsed: ") + meaning(*result) : error;
}
