// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/simulated/simulated_feed.h>

#include <connections/embedded/robot_memory.h>

#include <QUrl>
#include <QUrlQuery>

#include <chrono>

namespace Velk {

namespace {

const QLatin1String scheme("sim");

} // namespace

SimulatedFeed::SimulatedFeed(const SimulatedRobot::Parameters& parameters)
    : LoopFeed(std::chrono::milliseconds(SimulatedRobot::stepPeriodMs))
    , m_parameters(parameters)
    , m_robot(parameters, memory())
{}

SimulatedFeed::~SimulatedFeed() = default;

std::shared_ptr<SimulatedFeed> SimulatedFeed::fromUrl(const QString& url, QString* error)
{
    const auto fail = [error](const QString& message) {
        if (error)
            *error = message;
        return nullptr;
    };
    const QUrl parsed(url, QUrl::StrictMode);
    if (!parsed.isValid() || parsed.scheme() != scheme)
        return fail(tr("“%1” is not the URL of a simulated robot. It is written sim:[?seed=N][&keys=N].").arg(url));
    if (!parsed.authority().isEmpty() || !parsed.path().isEmpty() || parsed.hasFragment())
        return fail(
            tr("“%1” says more than a simulated robot has. Its URL is written sim:[?seed=N][&keys=N].").arg(url));

    SimulatedRobot::Parameters parameters;
    const QList<QPair<QString, QString>> items = QUrlQuery(parsed).queryItems(QUrl::FullyDecoded);
    QStringList seen;
    for (const QPair<QString, QString>& item : items) {
        if (seen.contains(item.first))
            return fail(tr("The parameter “%1” is given twice. Give it once.").arg(item.first));
        seen.append(item.first);
        bool isNumber = false;
        if (item.first == QLatin1String("seed")) {
            parameters.seed = item.second.toULongLong(&isNumber);
            if (!isNumber)
                return fail(tr("The seed “%1” is not a number. Give a whole number, 0 or more, such as sim:?seed=7.")
                                .arg(item.second));
        } else if (item.first == QLatin1String("keys")) {
            parameters.extraKeys = item.second.toInt(&isNumber);
            if (!isNumber || parameters.extraKeys < 0 || parameters.extraKeys > maxExtraKeys)
                return fail(tr("The number of extra keys “%1” is not possible. Give a whole number from 0 to %2, such "
                               "as sim:?keys=5000.")
                                .arg(item.second)
                                .arg(maxExtraKeys));
        } else {
            return fail(tr("A simulated robot has no parameter “%1”. It has: seed, keys.").arg(item.first));
        }
    }
    return std::make_shared<SimulatedFeed>(parameters);
}

QString SimulatedFeed::url() const
{
    const SimulatedRobot::Parameters defaults;
    QUrlQuery query;
    if (m_parameters.seed != defaults.seed)
        query.addQueryItem(QStringLiteral("seed"), QString::number(m_parameters.seed));
    if (m_parameters.extraKeys != defaults.extraKeys)
        query.addQueryItem(QStringLiteral("keys"), QString::number(m_parameters.extraKeys));
    const QString text = QStringLiteral("sim:");
    return query.isEmpty() ? text : text + QLatin1Char('?') + query.toString();
}

void SimulatedFeed::prepare()
{
    m_robot.declareKeys([this] { return !isStopping(); });
    inReach();
}

void SimulatedFeed::step()
{
    m_robot.step();
}

} // namespace Velk
