#include <connections/directory/robot_directory.h>

#include <connections/embedded/embedded_link.h>
#include <connections/host/host_feed.h>
#ifdef DIRECTORY_WITH_REDIS
#include <connections/redis/redis_link.h>
#endif
#include <connections/simulated/simulated_feed.h>

#include <QCoreApplication>

#include <functional>
#include <vector>

namespace Velk {

namespace {

struct Directory
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RobotDirectory)
};

struct Row
{
    RobotDirectory::Scheme scheme;
    /// The link that the URL of this scheme names; null with *error set when it is not valid.
    std::function<std::unique_ptr<RobotLink>(const QString& url, QString* error)> createLink;
};

/// The link to the feed that the URL names.
template <typename Feed>
std::unique_ptr<RobotLink> createFeedLink(const QString& url, QString* error)
{
    const std::shared_ptr<RobotFeed> feed = Feed::fromUrl(url, error);
    return feed ? std::make_unique<EmbeddedLink>(feed) : nullptr;
}

/// Everything that this build can open. A connection that is not in every build adds its rows under a condition.
std::vector<Row> rows()
{
    return {
        {{QStringLiteral("sim"), QStringLiteral("sim:[?seed=N][&keys=N]"),
          Directory::tr("a simulated mobile robot with an arm")},
         createFeedLink<SimulatedFeed>},
        {{QStringLiteral("host"), QStringLiteral("host:"), Directory::tr("the computer that this program runs on")},
         createFeedLink<HostFeed>},
#ifdef DIRECTORY_WITH_REDIS
        {{QStringLiteral("redis"), QStringLiteral("redis://[user[:password]@]host[:6379][/robot][?option=value&…]"),
          Directory::tr("a robot whose memory is on a Redis server, or in a cluster of them")},
         RedisLink::fromUrl},
        {{QStringLiteral("rediss"), QStringLiteral("rediss://[user[:password]@]host[:6379][/robot][?option=value&…]"),
          Directory::tr("the same over TLS")},
         RedisLink::fromUrl},
        {{QStringLiteral("redis+sentinel"),
          QStringLiteral("redis+sentinel://host[:26379][,host…]/service[/robot][?option=value&…]"),
          Directory::tr("the same on the master that sentinels name")},
         RedisLink::fromUrl},
        {{QStringLiteral("rediss+sentinel"),
          QStringLiteral("rediss+sentinel://host[:26379][,host…]/service[/robot][?option=value&…]"),
          Directory::tr("the same over TLS, with the sentinels")},
         RedisLink::fromUrl},
#endif
    };
}

/// The part before the first colon; empty when there is no colon or the part cannot be a scheme.
QString schemeOf(const QString& url)
{
    const QString scheme = url.left(qMax(url.indexOf(QLatin1Char(':')), 0)).toLower();
    for (const QChar character : scheme) {
        const bool isAllowed = (character >= QLatin1Char('a') && character <= QLatin1Char('z')) ||
                               (character >= QLatin1Char('0') && character <= QLatin1Char('9')) ||
                               QStringLiteral("+-.").contains(character);
        if (!isAllowed)
            return QString();
    }
    return scheme;
}

QString possibleUrls(const std::vector<Row>& rows)
{
    QStringList synopses;
    for (const Row& row : rows)
        synopses << row.scheme.synopsis;
    return synopses.join(QStringLiteral(", "));
}

} // namespace

QList<RobotDirectory::Scheme> RobotDirectory::schemes()
{
    QList<Scheme> schemes;
    for (const Row& row : rows())
        schemes << row.scheme;
    return schemes;
}

std::unique_ptr<RobotLink> RobotDirectory::createLink(const QString& url, QString* error)
{
    const std::vector<Row> candidates = rows();
    QString discarded;
    QString& message = error ? *error : discarded;
    if (url.isEmpty()) {
        message = Directory::tr("No robot is named. Possible are: %1.").arg(possibleUrls(candidates));
        return nullptr;
    }
    const QString scheme = schemeOf(url);
    if (scheme.isEmpty()) {
        message = Directory::tr("“%1” is not the URL of a robot: it does not begin with a scheme. Possible are: %2.")
                      .arg(url, possibleUrls(candidates));
        return nullptr;
    }
    for (const Row& row : candidates) {
        if (row.scheme.name == scheme)
            return row.createLink(scheme + url.mid(scheme.size()), &message);
    }
    // The rest of the URL is left out: it may hold a password.
    message =
        Directory::tr("There is no robot of the scheme “%1”. Possible are: %2.").arg(scheme, possibleUrls(candidates));
    return nullptr;
}

} // namespace Velk
