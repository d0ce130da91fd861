// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_RECENT_ROBOTS_H
#define APPS_VELK_WATCH_RECENT_ROBOTS_H

#include <QString>
#include <QStringList>

namespace Velk {

/// The robots that were opened last, by URL, the newest first.
class RecentRobots
{
public:
    static constexpr int maxCount = 10;

    RecentRobots() = default;
    /// Takes a stored list, without its empty and repeated entries.
    explicit RecentRobots(const QStringList& urls);

    /// Moves the URL to the first place, or adds it there and removes the oldest one beyond maxCount. Does nothing with
    /// an empty URL.
    void add(const QString& url);
    const QStringList& urls() const { return m_urls; }

private:
    QStringList m_urls;
};

} // namespace Velk

#endif
