// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_url.h"

#include <connections/network/network_url.h>
#include <connections/network/percent_encoding.h>

#include <QCoreApplication>

#include <climits>

namespace Velk {

namespace {

constexpr quint16 serverPort = 6379;
constexpr quint16 sentinelPort = 26379;
constexpr int minPongTimeoutMs = 10;
constexpr int maxPongTimeoutMs = 3600000;

struct RedisUrlMessages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RedisUrl)
};

NetworkUrl::Syntax syntax()
{
    return {RedisUrlMessages::tr("a Redis memory"),
            QStringLiteral("redis://host/robot"),
            {{QStringLiteral("redis"), serverPort},
             {QStringLiteral("rediss"), serverPort},
             {QStringLiteral("redis+sentinel"), sentinelPort},
             {QStringLiteral("rediss+sentinel"), sentinelPort}}};
}

QStringList optionNames()
{
    return QStringList{QStringLiteral("plain"), QStringLiteral("db"), QStringLiteral("pong-timeout"),
                       QStringLiteral("password-file"), QStringLiteral("password-env")} +
           TlsOptions::names() +
           QStringList{QStringLiteral("sentinel-user"), QStringLiteral("sentinel-password-file"),
                       QStringLiteral("sentinel-password-env")};
}

std::optional<int> numberWithin(const QString& text, int min, int max)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber || number < min || number > max || !text.front().isDigit())
        return std::nullopt;
    return number;
}

} // namespace

std::optional<RedisUrl> RedisUrl::parse(const QString& text, QString* error)
{
    std::optional<NetworkUrl> url = NetworkUrl::parse(text, syntax(), error);
    if (!url)
        return std::nullopt;
    RedisUrl result;
    result.m_isTls = url->scheme().startsWith(QStringLiteral("rediss"));
    result.m_isSentinel = url->scheme().endsWith(QStringLiteral("+sentinel"));
    result.m_addresses = url->addresses();
    result.m_server = url->secret();
    const auto take = [&result, &url, error](const QString& name, const QString& value) {
        return result.takeOption(*url, name, value, error);
    };
    const bool isValid = result.parsePath(*url, error) && url->takeOptions(optionNames(), take, error) &&
                         result.m_server.check(error) && result.m_sentinel.check(error) && result.m_tls.check(error);
    if (!isValid)
        return std::nullopt;
    result.m_displayText = result.displayTextOf(*url);
    return result;
}

bool RedisUrl::parsePath(const NetworkUrl& url, QString* error)
{
    QStringList parts = url.path();
    if (m_isSentinel) {
        const std::optional<QString> service = percentDecodedText(parts.takeFirst());
        if (!service) {
            *error = RedisUrlMessages::tr("The service's name is not percent-encoded UTF-8 text: write % as %25.");
            return false;
        }
        if (service->isEmpty()) {
            *error = RedisUrlMessages::tr("The URL does not say which service the sentinels are to be asked for: write "
                                          "%1://host/service/robot.")
                         .arg(url.scheme());
            return false;
        }
        m_serviceName = *service;
    }
    // One "/" at the end names nothing.
    if (!parts.isEmpty() && parts.constLast().isEmpty())
        parts.removeLast();
    if (parts.size() > 1) {
        *error = RedisUrlMessages::tr("The path %1 has too many parts: a robot has one name, with / written as %2F.")
                     .arg(url.quoted(url.pathText()));
        return false;
    }
    const std::optional<QString> robot =
        parts.isEmpty() ? QStringLiteral("robot") : percentDecodedText(parts.constFirst());
    if (!robot || robot->isEmpty()) {
        *error = RedisUrlMessages::tr("The robot's name is not percent-encoded UTF-8 text: write % as %25.");
        return false;
    }
    // The braces around the robot's name keep its keys on one node of a cluster; the name cannot bring its own.
    if (robot->contains(QLatin1Char('{')) || robot->contains(QLatin1Char('}'))) {
        *error = RedisUrlMessages::tr("The robot's name %1 holds a brace, which no robot's name can.")
                     .arg(url.quoted(*robot));
        return false;
    }
    m_robot = *robot;
    m_isRobotGiven = !parts.isEmpty();
    return true;
}

bool RedisUrl::takeOption(const NetworkUrl& url, const QString& name, const QString& value, QString* error)
{
    if (name == QLatin1String("plain")) {
        m_plainPattern = value;
        return true;
    }
    if (name == QLatin1String("db")) {
        const std::optional<int> number = numberWithin(value, 0, INT_MAX);
        if (!number)
            *error = RedisUrlMessages::tr("The database %1 is not a number from 0 to %2.")
                         .arg(url.quoted(value), QString::number(INT_MAX));
        m_database = number.value_or(0);
        return number.has_value();
    }
    if (name == QLatin1String("pong-timeout")) {
        const std::optional<int> number = numberWithin(value, minPongTimeoutMs, maxPongTimeoutMs);
        if (!number)
            *error = RedisUrlMessages::tr("The pong-timeout %1 is not a number of milliseconds from 10 to 3600000.")
                         .arg(url.quoted(value));
        m_pongTimeoutMs = number.value_or(m_pongTimeoutMs);
        return number.has_value();
    }
    if (TlsOptions::names().contains(name))
        return takeTlsOption(name, value, error);
    return takeSecretOption(name, value, error);
}

bool RedisUrl::takeTlsOption(const QString& name, const QString& value, QString* error)
{
    if (!m_isTls) {
        *error = RedisUrlMessages::tr("The option \"%1\" is about TLS: write redis%2 instead of redis%3 at the start.")
                     .arg(name, m_isSentinel ? QStringLiteral("s+sentinel://") : QStringLiteral("s://"),
                          m_isSentinel ? QStringLiteral("+sentinel://") : QStringLiteral("://"));
        return false;
    }
    return m_tls.set(name, value);
}

bool RedisUrl::takeSecretOption(const QString& name, const QString& value, QString* error)
{
    const bool isAboutSentinels = name.startsWith(QStringLiteral("sentinel-"));
    if (name.endsWith(QStringLiteral("password-env")) && !NetworkSecret::isVariableName(value)) {
        *error = RedisUrlMessages::tr("The value of \"%1\" is not the name of an environment variable.").arg(name);
        return false;
    }
    if (isAboutSentinels && !m_isSentinel) {
        *error = RedisUrlMessages::tr("The option \"%1\" is about sentinels: it goes with redis+sentinel:// only.")
                     .arg(name);
        return false;
    }
    NetworkSecret& secret = isAboutSentinels ? m_sentinel : m_server;
    if (name.endsWith(QStringLiteral("password-file")))
        secret.passwordFile = value;
    else if (name.endsWith(QStringLiteral("password-env")))
        secret.passwordVariable = value;
    else
        secret.user = value;
    return true;
}

QString RedisUrl::displayTextOf(const NetworkUrl& url) const
{
    QString text = url.displayStart();
    if (m_isSentinel)
        text += QLatin1Char('/') + percentEncoded(m_serviceName);
    if (m_isRobotGiven)
        text += QLatin1Char('/') + percentEncoded(m_robot);
    return text + url.displayOptions();
}

std::optional<NetworkCredentials> RedisUrl::credentials(QString* error) const
{
    return m_server.credentials("VELK_REDIS_PASSWORD", error);
}

std::optional<NetworkCredentials> RedisUrl::sentinelCredentials(QString* error) const
{
    return m_sentinel.credentials("VELK_REDIS_SENTINEL_PASSWORD", error);
}

} // namespace Velk
