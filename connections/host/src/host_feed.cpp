// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/host/host_feed.h>

#include <connections/embedded/robot_memory.h>

#include <QUrl>

#include <chrono>

namespace Velk {

HostFeed::HostFeed(const QString& root)
    : LoopFeed(std::chrono::milliseconds(HostRobot::readingPeriodMs))
    , m_robot(memory(), root)
{}

HostFeed::~HostFeed() = default;

std::shared_ptr<HostFeed> HostFeed::fromUrl(const QString& url, QString* error)
{
    const QUrl parsed(url, QUrl::StrictMode);
    if (parsed.isValid() && parsed.toString(QUrl::FullyEncoded) == QLatin1String("host:"))
        return std::make_shared<HostFeed>();
    if (error && parsed.hasQuery())
        *error = tr("This computer has no parameter “%1”. Its URL is written host: without any.")
                     .arg(parsed.query(QUrl::FullyDecoded));
    else if (error)
        *error = tr("“%1” is not the URL of this computer. It is written host: and nothing more.").arg(url);
    return nullptr;
}

QString HostFeed::url() const
{
    return QStringLiteral("host:");
}

bool HostFeed::isRealTimeSupported() const
{
    return false;
}

void HostFeed::prepare()
{
    const bool isReadable = m_robot.isReadable();
    step();
    if (isReadable)
        inReach();
    else
        failed(tr("No figures of this computer"), tr("Nothing can be read below /proc.\nThe figures are available on "
                                                     "Linux, with /proc mounted."));
}

void HostFeed::step()
{
    m_robot.read(std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count());
}

} // namespace Velk
