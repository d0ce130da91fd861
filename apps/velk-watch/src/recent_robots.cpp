// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "recent_robots.h"

namespace Velk {

RecentRobots::RecentRobots(const QStringList& urls)
{
    for (auto url = urls.crbegin(); url != urls.crend(); ++url)
        add(*url);
}

void RecentRobots::add(const QString& url)
{
    if (url.isEmpty())
        return;
    m_urls.removeAll(url);
    m_urls.prepend(url);
    m_urls = m_urls.mid(0, maxCount);
}

} // namespace Velk
