// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_HOST_HOST_FEED_H
#define CONNECTIONS_HOST_HOST_FEED_H

#include <connections/embedded/loop_feed.h>
#include <connections/host/host_export.h>
#include <connections/host/host_robot.h>

#include <QCoreApplication>

#include <memory>

namespace Velk {

/// The computer that this program runs on. Its figures are read on a thread of its own while the link is open. It has
/// no real-time sampling: the figures do not change that fast.
class HOST_EXPORT HostFeed : public LoopFeed
{
    Q_DECLARE_TR_FUNCTIONS(Velk::HostFeed)

public:
    /// `root` is where proc and sys are found.
    explicit HostFeed(const QString& root = QStringLiteral("/"));
    ~HostFeed() override;

    /// The computer that the URL "host:" names; null when the URL is another one, with *error, if given, set to a
    /// sentence that says what is wrong and what is possible.
    static std::shared_ptr<HostFeed> fromUrl(const QString& url, QString* error);

    QString url() const override;
    bool isRealTimeSupported() const override;

protected:
    void prepare() override;
    void step() override;

private:
    HostRobot m_robot; // used on the loop's thread only
};

} // namespace Velk

#endif
