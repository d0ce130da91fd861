// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/links/robot_links.h>

#include "built_in_factories.h"
#include "factory_plugins.h"
#include "messages.h"

#include <QStringList>

#include <vector>

namespace Velk {

namespace {

/// Everything that this program can open.
struct Factories
{
    Factories()
        : builtIn(builtInFactories())
        , plugins(loadFactoryPlugins(pluginFolders()))
    {
        for (const std::shared_ptr<ConnectionFactory>& factory : builtIn)
            all.push_back(factory.get());
        all.insert(all.end(), plugins.factories.begin(), plugins.factories.end());
    }

    std::vector<std::shared_ptr<ConnectionFactory>> builtIn;
    FactoryPlugins plugins;
    std::vector<ConnectionFactory*> all;
};

const Factories& factories()
{
    static const Factories instance;
    return instance;
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

QString possibleUrls(bool isWritable)
{
    QStringList synopses;
    for (const ConnectionFactory* const factory : factories().all) {
        for (const UrlScheme& scheme : factory->schemes()) {
            if (factory->canWrite() || !isWritable)
                synopses << scheme.synopsis;
        }
    }
    return synopses.join(QStringLiteral(", "));
}

/// The factory that opens the URL, whose scheme is made lower case; null with *error set when there is none.
const ConnectionFactory* factoryOf(QString* url, QString* error)
{
    const auto fail = [error](const QString& message) {
        *error = message;
        return nullptr;
    };
    if (url->isEmpty())
        return fail(Messages::tr("No robot is named. Possible are: %1.").arg(possibleUrls(false)));
    const QString scheme = schemeOf(*url);
    if (scheme.isEmpty())
        return fail(Messages::tr("“%1” is not the URL of a robot: it does not begin with a scheme. Possible are: %2.")
                        .arg(*url, possibleUrls(false)));
    url->replace(0, scheme.size(), scheme);
    for (const ConnectionFactory* const factory : factories().all) {
        for (const UrlScheme& candidate : factory->schemes()) {
            if (candidate.name == scheme)
                return factory;
        }
    }
    // The rest of the URL is left out: it may hold a password.
    const QString unknown =
        Messages::tr("There is no robot of the scheme “%1”. Possible are: %2.").arg(scheme, possibleUrls(false));
    return fail((QStringList(unknown) + factories().plugins.failures).join(QLatin1Char('\n')));
}

} // namespace

QList<UrlScheme> RobotLinks::schemes()
{
    QList<UrlScheme> schemes;
    for (const ConnectionFactory* const factory : factories().all)
        schemes += factory->schemes();
    return schemes;
}

QStringList RobotLinks::pluginFailures()
{
    return factories().plugins.failures;
}

std::unique_ptr<RobotLink> RobotLinks::createLink(const QString& url, QString* error)
{
    QString discarded;
    QString* const message = error ? error : &discarded;
    QString robotUrl = url;
    const ConnectionFactory* const factory = factoryOf(&robotUrl, message);
    return factory ? factory->createLink(robotUrl, message) : nullptr;
}

std::unique_ptr<RobotWriter> RobotLinks::createWriter(const QString& url, QString* error)
{
    QString discarded;
    QString* const message = error ? error : &discarded;
    QString robotUrl = url;
    const ConnectionFactory* const factory = factoryOf(&robotUrl, message);
    if (!factory)
        return nullptr;
    if (factory->canWrite())
        return factory->createWriter(robotUrl, message);
    const QString possible = possibleUrls(true);
    *message = possible.isEmpty() ? Messages::tr("This program has no connection to a robot that can be written to.")
                                  : Messages::tr("A robot of the scheme “%1” cannot be written to. Possible are: %2.")
                                        .arg(schemeOf(robotUrl), possible);
    return nullptr;
}

} // namespace Velk
