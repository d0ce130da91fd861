// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "network_url.h"

#include "percent_encoding.h"

#include <QCoreApplication>

#include <algorithm>

namespace Velk {

namespace {

struct UrlMessages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::NetworkUrl)
};

// "a, b and c"
QString listText(QStringList words)
{
    const QString last = words.takeLast();
    return words.isEmpty() ? last : UrlMessages::tr("%1 and %2").arg(words.join(QStringLiteral(", ")), last);
}

} // namespace

std::optional<NetworkUrl> NetworkUrl::parse(const QString& url, const Syntax& syntax, QString* error)
{
    NetworkUrl result;
    if (!result.parseParts(url, syntax, error))
        return std::nullopt;
    return result;
}

bool NetworkUrl::parseParts(const QString& url, const Syntax& syntax, QString* error)
{
    // Without a separator between scheme and rest nothing says where a password starts: nothing is quoted then.
    const int schemeEnd = url.indexOf(QStringLiteral("://"));
    if (schemeEnd == -1) {
        *error = UrlMessages::tr("This is no URL of %1: write %2.").arg(syntax.subject, syntax.example);
        return false;
    }
    if (!parseScheme(url.left(schemeEnd).toLower(), syntax, error))
        return false;

    const QString rest = url.mid(schemeEnd + 3);
    if (rest.contains(QLatin1Char('#'))) {
        *error = UrlMessages::tr("A URL of %1 holds no \"#\": write it as %23.").arg(syntax.subject);
        return false;
    }
    const int queryStart = rest.indexOf(QLatin1Char('?'));
    const QString beforeQuery = rest.left(queryStart);
    m_query = queryStart == -1 ? QString() : rest.mid(queryStart + 1);
    const int pathStart = beforeQuery.indexOf(QLatin1Char('/'));
    m_path = pathStart == -1 ? QString() : beforeQuery.mid(pathStart + 1);

    // A password with an unencoded / or ? in it ends the authority too early, and its @ is found further on.
    m_mayQuote = !m_path.contains(QLatin1Char('@')) && !m_query.contains(QLatin1Char('@'));
    if (m_path.contains(QLatin1Char('@'))) {
        *error = UrlMessages::tr(
            "An \"@\" after the first \"/\": in the password write / as %2F, ? as %3F and @ as %40, and in the "
            "robot's name @ as %40.");
        return false;
    }
    return parseAuthority(beforeQuery.left(pathStart), error);
}

bool NetworkUrl::parseScheme(const QString& scheme, const Syntax& syntax, QString* error)
{
    const auto found = std::find_if(syntax.schemes.cbegin(), syntax.schemes.cend(),
                                    [&scheme](const Syntax::Scheme& candidate) { return candidate.name == scheme; });
    if (found == syntax.schemes.cend()) {
        QStringList starts;
        for (const Syntax::Scheme& candidate : syntax.schemes)
            starts.append(candidate.name + QStringLiteral("://"));
        *error = UrlMessages::tr("The URL of %1 starts with one of %2.").arg(syntax.subject, listText(starts));
        return false;
    }
    m_scheme = *found;
    return true;
}

bool NetworkUrl::parseAuthority(const QString& authority, QString* error)
{
    const int userEnd = authority.lastIndexOf(QLatin1Char('@'));
    if (userEnd != -1 && !parseUser(authority.left(userEnd), error))
        return false;
    const QString hosts = authority.mid(userEnd + 1);
    if (hosts.isEmpty()) {
        *error = UrlMessages::tr("The URL names no host: write %1://host/….").arg(scheme());
        return false;
    }
    const QStringList parts = hosts.split(QLatin1Char(','));
    for (const QString& part : parts) {
        const std::optional<NetworkAddress> address = NetworkAddress::parse(
            part, m_scheme.usualPort, [this](const QString& piece) { return quoted(piece); }, error);
        if (!address)
            return false;
        m_addresses.append(*address);
    }
    return true;
}

bool NetworkUrl::parseUser(const QString& text, QString* error)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    const std::optional<QString> user = percentDecodedText(text.left(colon));
    const std::optional<QByteArray> password = colon == -1 ? QByteArray() : percentDecodedBytes(text.mid(colon + 1));
    if (!user || !password) {
        *error = UrlMessages::tr(
            "The user or the password before the \"@\" is not percent-encoded correctly: write % as %25.");
        return false;
    }
    m_secret.user = *user;
    if (colon != -1)
        m_secret.password = *password;
    return true;
}

bool NetworkUrl::takeOptions(const QStringList& names,
                             const std::function<bool(const QString& name, const QString& value)>& take, QString* error)
{
    const QStringList parts = m_query.split(QLatin1Char('&'), Qt::SkipEmptyParts);
    QStringList seen;
    for (const QString& part : parts) {
        const int equals = part.indexOf(QLatin1Char('='));
        const QString name = part.left(equals);
        const std::optional<QString> value = equals == -1 ? QString() : percentDecodedText(part.mid(equals + 1));
        if (!names.contains(name)) {
            *error = UrlMessages::tr("There is no option %1; there are %2.").arg(quoted(name), listText(names));
            return false;
        }
        if (seen.contains(name)) {
            *error = UrlMessages::tr("The option \"%1\" is given twice.").arg(name);
            return false;
        }
        if (!value) {
            *error =
                UrlMessages::tr("The value of \"%1\" is not percent-encoded UTF-8 text: write % as %25 and & as %26.")
                    .arg(name);
            return false;
        }
        if (value->isEmpty()) {
            *error = UrlMessages::tr("The option \"%1\" needs a value: %1=….").arg(name);
            return false;
        }
        if (!take(name, *value))
            return false;
        seen.append(name);
        m_takenOptions.append(name + QLatin1Char('=') + percentEncoded(*value, "/*:,[]@"));
    }
    return true;
}

QString NetworkUrl::quoted(const QString& piece) const
{
    return QLatin1Char('"') + (m_mayQuote ? piece : QStringLiteral("…")) + QLatin1Char('"');
}

QString NetworkUrl::displayStart() const
{
    QStringList hosts;
    for (const NetworkAddress& address : m_addresses)
        hosts.append(address.urlText(m_scheme.usualPort));
    const QString user = m_secret.user.isEmpty() ? QString() : percentEncoded(m_secret.user) + QLatin1Char('@');
    return scheme() + QStringLiteral("://") + user + hosts.join(QLatin1Char(','));
}

QString NetworkUrl::displayOptions() const
{
    return m_takenOptions.isEmpty() ? QString() : QLatin1Char('?') + m_takenOptions.join(QLatin1Char('&'));
}

} // namespace Velk
