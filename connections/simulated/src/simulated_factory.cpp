// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/simulated/simulated_factory.h>

#include <connections/embedded/embedded_link.h>
#include <connections/simulated/simulated_feed.h>

namespace Velk {

QList<UrlScheme> SimulatedFactory::schemes() const
{
    return {
        {QStringLiteral("sim"), QStringLiteral("sim:[?seed=N][&keys=N]"), tr("a simulated mobile robot with an arm")}};
}

std::unique_ptr<RobotLink> SimulatedFactory::createLink(const QString& url, QString* error) const
{
    const std::shared_ptr<RobotFeed> feed = SimulatedFeed::fromUrl(url, error);
    return feed ? std::make_unique<EmbeddedLink>(feed) : nullptr;
}

} // namespace Velk
