// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/host/host_factory.h>

#include <connections/embedded/embedded_link.h>
#include <connections/host/host_feed.h>

namespace Velk {

QList<UrlScheme> HostFactory::schemes() const
{
    return {{QStringLiteral("host"), QStringLiteral("host:"), tr("the computer that this program runs on")}};
}

std::unique_ptr<RobotLink> HostFactory::createLink(const QString& url, QString* error) const
{
    const std::shared_ptr<RobotFeed> feed = HostFeed::fromUrl(url, error);
    return feed ? std::make_unique<EmbeddedLink>(feed) : nullptr;
}

} // namespace Velk
