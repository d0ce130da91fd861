#include "redis_url.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QStringList>
#include <QUrl>

#include <algorithm>
#include <array>
#include <climits>

namespace Velk {

namespace {

constexpr quint16 serverPort = 6379;
constexpr quint16 sentinelPort = 26379;

QString tr(const char* text)
{
    return QCoreApplication::translate("Velk::RedisUrl", text);
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// The bytes that percent-encoded text stands for; nothing when a % is not followed by two hexadecimal digits.
std::optional<QByteArray> decodedBytes(const QString& text)
{
    const QByteArray encoded = text.toUtf8();
    for (int i = encoded.indexOf('%'); i != -1; i = encoded.indexOf('%', i + 1)) {
        if (i + 2 >= encoded.size() || !isHexDigit(encoded.at(i + 1)) || !isHexDigit(encoded.at(i + 2)))
            return std::nullopt;
    }
    return QByteArray::fromPercentEncoding(encoded);
}

// The same as text: nothing when the bytes are not UTF-8, or hold a control character.
std::optional<QString> decodedText(const QString& text)
{
    const std::optional<QByteArray> bytes = decodedBytes(text);
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(*bytes);
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (decoder.hasError() || std::any_of(decoded.cbegin(), decoded.cend(), isControl))
        return std::nullopt;
    return decoded;
}

// A host name or address in the form in which it is looked up; empty when it is neither.
QString validHost(const QString& host)
{
    static const QRegularExpression name(QStringLiteral("\\A[A-Za-z0-9_]([A-Za-z0-9_.-]*[A-Za-z0-9_.])?\\z"));
    const QString ascii = name.match(host).hasMatch() ? host : QString::fromLatin1(QUrl::toAce(host));
    return name.match(ascii).hasMatch() && ascii.size() <= 253 ? ascii.toLower() : QString();
}

} // namespace

/// Takes a URL apart from left to right. The first failure ends the work, with one sentence in the error; no sentence
/// quotes what stands where a password may be.
class RedisUrl::Parser
{
public:
    explicit Parser(QString* error)
        : m_error(error)
    {}

    bool parse(const QString& text)
    {
        // Without a separator between scheme and rest nothing says where a password starts: nothing is quoted then.
        const int schemeEnd = text.indexOf(QStringLiteral("://"));
        if (schemeEnd == -1)
            return fail(tr("This is no URL of a Redis memory: write redis://host/robot."));
        if (!parseScheme(text.left(schemeEnd).toLower()))
            return false;

        const QString rest = text.mid(schemeEnd + 3);
        if (rest.contains(QLatin1Char('#')))
            return fail(tr("A URL of a Redis memory holds no \"#\": write it as %23."));
        const int queryStart = rest.indexOf(QLatin1Char('?'));
        const QString beforeQuery = rest.left(queryStart);
        const QString query = queryStart == -1 ? QString() : rest.mid(queryStart + 1);
        const int pathStart = beforeQuery.indexOf(QLatin1Char('/'));
        const QString authority = beforeQuery.left(pathStart);
        const QString path = pathStart == -1 ? QString() : beforeQuery.mid(pathStart + 1);

        // A password with an unencoded / or ? in it ends the authority too early, and its @ is found further on.
        m_mayQuote = !path.contains(QLatin1Char('@')) && !query.contains(QLatin1Char('@'));
        if (path.contains(QLatin1Char('@')))
            return fail(tr("An \"@\" after the first \"/\": in the password write / as %2F, ? as %3F and @ as %40, and "
                           "in the robot's name @ as %40."));
        return parseAuthority(authority) && parsePath(path) && parseQuery(query) && checkTogether() &&
               writeDisplayText();
    }

    RedisUrl url;

private:
    using Field = QString RedisUrl::*;

    struct Option
    {
        const char* name;
        bool (Parser::*take)(const QString& name, const QString& value);
    };
    static const std::array<Option, 12> options;

    bool fail(const QString& sentence)
    {
        *m_error = sentence;
        return false;
    }

    // A sentence about a piece of the URL, with the piece in place of %1 unless it may be part of a password.
    bool failAbout(const QString& sentence, const QString& piece)
    {
        return fail(sentence.arg(QLatin1Char('"') + (m_mayQuote ? piece : QStringLiteral("…")) + QLatin1Char('"')));
    }

    bool parseScheme(const QString& scheme)
    {
        url.m_isTls = scheme.startsWith(QStringLiteral("rediss"));
        url.m_isSentinel = scheme.endsWith(QStringLiteral("+sentinel"));
        m_scheme = scheme;
        const QStringList known = {QStringLiteral("redis"), QStringLiteral("rediss"), QStringLiteral("redis+sentinel"),
                                   QStringLiteral("rediss+sentinel")};
        return known.contains(scheme) ||
               fail(tr("The URL of a Redis memory starts with one of redis://, rediss://, redis+sentinel:// and "
                       "rediss+sentinel://."));
    }

    bool parseAuthority(const QString& authority)
    {
        const int userEnd = authority.lastIndexOf(QLatin1Char('@'));
        if (userEnd != -1 && !parseUser(authority.left(userEnd)))
            return false;
        const QString hosts = authority.mid(userEnd + 1);
        if (hosts.isEmpty())
            return fail(tr("The URL names no host: write %1://host/….").arg(m_scheme));
        const QStringList parts = hosts.split(QLatin1Char(','));
        return std::all_of(parts.cbegin(), parts.cend(), [this](const QString& part) { return parseAddress(part); });
    }

    bool parseUser(const QString& text)
    {
        const int colon = text.indexOf(QLatin1Char(':'));
        const std::optional<QString> user = decodedText(text.left(colon));
        const std::optional<QByteArray> password = colon == -1 ? QByteArray() : decodedBytes(text.mid(colon + 1));
        if (!user || !password)
            return fail(
                tr("The user or the password before the \"@\" is not percent-encoded correctly: write % as %25."));
        url.m_server.user = *user;
        if (colon != -1)
            url.m_server.password = *password;
        return true;
    }

    bool parseAddress(const QString& text)
    {
        QString host = text;
        QString port;
        if (text.startsWith(QLatin1Char('['))) {
            const int end = text.indexOf(QLatin1Char(']'));
            if (end == -1)
                return failAbout(tr("The bracket that opens the IPv6 address %1 is not closed."), text);
            const std::optional<QString> address = decodedText(text.mid(1, end - 1));
            if (!address || QHostAddress(*address).protocol() != QAbstractSocket::IPv6Protocol)
                return failAbout(tr("The text in brackets, %1, is no IPv6 address."), text.left(end + 1));
            host = *address;
            port = text.mid(end + 1);
            if (!port.isEmpty() && !port.startsWith(QLatin1Char(':')))
                return failAbout(tr("After the IPv6 address %1 only a port can follow: [::1]:6379."),
                                 text.left(end + 1));
            port = port.mid(1);
        } else {
            if (text.count(QLatin1Char(':')) > 1)
                return fail(tr("An address has more than one colon: write an IPv6 address in brackets, [::1]."));
            const int colon = text.indexOf(QLatin1Char(':'));
            if (colon != -1) {
                host = text.left(colon);
                port = text.mid(colon + 1);
            }
            const QString valid = validHost(decodedText(host).value_or(QString()));
            if (valid.isEmpty())
                return failAbout(tr("The host %1 is neither a host name nor an IP address."), host);
            host = valid;
        }
        quint16 number = url.m_isSentinel ? sentinelPort : serverPort;
        if (!port.isEmpty()) {
            bool isNumber = false;
            number = port.toUShort(&isNumber);
            if (!isNumber || number == 0 || !port.front().isDigit())
                return fail(tr("The port after the colon is not a number from 1 to 65535."));
        }
        url.m_addresses.append({host, number});
        return true;
    }

    bool parsePath(const QString& path)
    {
        QStringList parts = path.split(QLatin1Char('/'));
        if (url.m_isSentinel) {
            const std::optional<QString> service = decodedText(parts.takeFirst());
            if (!service)
                return fail(tr("The service's name is not percent-encoded UTF-8 text: write % as %25."));
            if (service->isEmpty())
                return fail(tr("The URL does not say which service the sentinels are to be asked for: write "
                               "%1://host/service/robot.")
                                .arg(m_scheme));
            url.m_serviceName = *service;
        }
        // One "/" at the end names nothing.
        if (!parts.isEmpty() && parts.constLast().isEmpty())
            parts.removeLast();
        if (parts.size() > 1)
            return failAbout(tr("The path %1 has too many parts: a robot has one name, with / written as %2F."), path);
        const std::optional<QString> robot =
            parts.isEmpty() ? QStringLiteral("robot") : decodedText(parts.constFirst());
        if (!robot || robot->isEmpty())
            return fail(tr("The robot's name is not percent-encoded UTF-8 text: write % as %25."));
        // The braces around the robot's name keep its keys on one node of a cluster; the name cannot bring its own.
        if (robot->contains(QLatin1Char('{')) || robot->contains(QLatin1Char('}')))
            return failAbout(tr("The robot's name %1 holds a brace, which no robot's name can."), *robot);
        url.m_robot = *robot;
        m_isRobotGiven = !parts.isEmpty();
        return true;
    }

    bool parseQuery(const QString& query)
    {
        const QStringList parts = query.split(QLatin1Char('&'), Qt::SkipEmptyParts);
        QStringList seen;
        for (const QString& part : parts) {
            const int equals = part.indexOf(QLatin1Char('='));
            const QString name = part.left(equals);
            const std::optional<QString> value = equals == -1 ? QString() : decodedText(part.mid(equals + 1));
            const auto option = std::find_if(options.cbegin(), options.cend(), [&name](const Option& candidate) {
                return name == QLatin1String(candidate.name);
            });
            if (option == options.cend())
                return failAbout(tr("There is no option %1; there are %2.").arg(QStringLiteral("%1"), optionNames()),
                                 name);
            if (seen.contains(name))
                return fail(tr("The option \"%1\" is given twice.").arg(name));
            if (!value)
                return fail(tr("The value of \"%1\" is not percent-encoded UTF-8 text: write % as %25 and & as %26.")
                                .arg(name));
            if (value->isEmpty())
                return fail(tr("The option \"%1\" needs a value: %1=….").arg(name));
            if (!(this->*option->take)(name, *value))
                return false;
            seen.append(name);
            m_shownOptions.append(name + QLatin1Char('=') +
                                  QString::fromLatin1(QUrl::toPercentEncoding(*value, "/*:,[]@")));
        }
        return true;
    }

    static QString optionNames()
    {
        QStringList names;
        for (const Option& option : options)
            names.append(QLatin1String(option.name));
        const QString last = names.takeLast();
        return tr("%1 and %2").arg(names.join(QStringLiteral(", ")), last);
    }

    template <Field field>
    bool takeText(const QString&, const QString& value)
    {
        url.*field = value;
        return true;
    }

    template <Field field>
    bool takeTls(const QString& name, const QString& value)
    {
        if (!url.m_isTls)
            return fail(tr("The option \"%1\" is about TLS: write redis%2 instead of redis%3 at the start.")
                            .arg(name, url.m_isSentinel ? QStringLiteral("s+sentinel://") : QStringLiteral("s://"),
                                 url.m_isSentinel ? QStringLiteral("+sentinel://") : QStringLiteral("://")));
        url.*field = value;
        return true;
    }

    bool takeDatabase(const QString&, const QString& value)
    {
        bool isNumber = false;
        url.m_database = value.toInt(&isNumber);
        return (isNumber && url.m_database >= 0 && value.front().isDigit()) ||
               failAbout(tr("The database %1 is not a number from 0 to %2.")
                             .arg(QStringLiteral("%1"), QString::number(INT_MAX)),
                         value);
    }

    bool takePongTimeout(const QString&, const QString& value)
    {
        bool isNumber = false;
        url.m_pongTimeoutMs = value.toInt(&isNumber);
        return (isNumber && url.m_pongTimeoutMs >= 10 && url.m_pongTimeoutMs <= 3600000 && value.front().isDigit()) ||
               failAbout(tr("The pong-timeout %1 is not a number of milliseconds from 10 to 3600000."), value);
    }

    template <QString RedisSecret::*field>
    bool takeSecret(const QString& name, const QString& value)
    {
        RedisSecret* const secret = secretOf(name);
        if (secret)
            secret->*field = value;
        return secret;
    }

    bool takePasswordVariable(const QString& name, const QString& value)
    {
        static const QRegularExpression variable(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*\\z"));
        if (!variable.match(value).hasMatch())
            return fail(tr("The value of \"%1\" is not the name of an environment variable.").arg(name));
        return takeSecret<&RedisSecret::passwordVariable>(name, value);
    }

    // Whose password an option is about; null, with the error set, when the URL has no such party.
    RedisSecret* secretOf(const QString& option)
    {
        if (!option.startsWith(QStringLiteral("sentinel-")))
            return &url.m_server;
        if (url.m_isSentinel)
            return &url.m_sentinel;
        fail(tr("The option \"%1\" is about sentinels: it goes with redis+sentinel:// only.").arg(option));
        return nullptr;
    }

    bool checkTogether()
    {
        for (const RedisSecret& secret : {url.m_server, url.m_sentinel}) {
            const int sources = int(secret.password.has_value()) + int(!secret.passwordFile.isEmpty()) +
                                int(!secret.passwordVariable.isEmpty());
            if (sources > 1)
                return fail(
                    tr("The URL says in more than one way what the password is: keep one of the password before "
                       "the \"@\", the file and the environment variable."));
        }
        if (!url.m_keyFile.isEmpty() && url.m_certificateFile.isEmpty())
            return fail(tr("There is a key-file without the certificate that it belongs to: add cert-file=PATH."));
        return true;
    }

    bool writeDisplayText()
    {
        QString text = m_scheme + QStringLiteral("://");
        if (!url.m_server.user.isEmpty())
            text += encoded(url.m_server.user) + QLatin1Char('@');
        QStringList hosts;
        for (const Address& address : url.m_addresses) {
            const bool isIpv6 = address.host.contains(QLatin1Char(':'));
            QString host = isIpv6 ? QLatin1Char('[') + encoded(address.host, ":") + QLatin1Char(']') : address.host;
            if (address.port != (url.m_isSentinel ? sentinelPort : serverPort))
                host += QLatin1Char(':') + QString::number(address.port);
            hosts.append(host);
        }
        text += hosts.join(QLatin1Char(','));
        if (url.m_isSentinel)
            text += QLatin1Char('/') + encoded(url.m_serviceName);
        if (m_isRobotGiven)
            text += QLatin1Char('/') + encoded(url.m_robot);
        if (!m_shownOptions.isEmpty())
            text += QLatin1Char('?') + m_shownOptions.join(QLatin1Char('&'));
        url.m_displayText = text;
        return true;
    }

    static QString encoded(const QString& text, const QByteArray& kept = {})
    {
        return QString::fromLatin1(QUrl::toPercentEncoding(text, kept));
    }

    QString* m_error;
    QString m_scheme;
    QStringList m_shownOptions;
    bool m_mayQuote = true;
    bool m_isRobotGiven = false;
};

const std::array<RedisUrl::Parser::Option, 12> RedisUrl::Parser::options = {{
    {"plain", &Parser::takeText<&RedisUrl::m_plainPattern>},
    {"db", &Parser::takeDatabase},
    {"pong-timeout", &Parser::takePongTimeout},
    {"password-file", &Parser::takeSecret<&RedisSecret::passwordFile>},
    {"password-env", &Parser::takePasswordVariable},
    {"ca-file", &Parser::takeTls<&RedisUrl::m_caFile>},
    {"cert-file", &Parser::takeTls<&RedisUrl::m_certificateFile>},
    {"key-file", &Parser::takeTls<&RedisUrl::m_keyFile>},
    {"tls-name", &Parser::takeTls<&RedisUrl::m_tlsName>},
    {"sentinel-user", &Parser::takeSecret<&RedisSecret::user>},
    {"sentinel-password-file", &Parser::takeSecret<&RedisSecret::passwordFile>},
    {"sentinel-password-env", &Parser::takePasswordVariable},
}};

std::optional<RedisUrl> RedisUrl::parse(const QString& url, QString* error)
{
    Parser parser(error);
    if (!parser.parse(url))
        return std::nullopt;
    return parser.url;
}

std::optional<RedisCredentials> RedisUrl::credentials(QString* error) const
{
    return m_server.credentials("VELK_REDIS_PASSWORD", error);
}

std::optional<RedisCredentials> RedisUrl::sentinelCredentials(QString* error) const
{
    return m_sentinel.credentials("VELK_REDIS_SENTINEL_PASSWORD", error);
}

} // namespace Velk
