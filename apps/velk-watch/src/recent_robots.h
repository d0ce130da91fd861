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
    /// The list as it was stored: empty entries and repeated ones are left out.
    explicit RecentRobots(const QStringList& urls);

    /// Puts the URL in the first place, where it was listed or not. The oldest one drops out beyond maxCount. Nothing
    /// with an empty URL.
    void add(const QString& url);
    const QStringList& urls() const { return m_urls; }

private:
    QStringList m_urls;
};

} // namespace Velk

#endif
