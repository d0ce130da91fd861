// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_appearances.h"

#include <itemmodels/distinct_colors.h>

#include <algorithm>

namespace Velk {

WatchAppearances::ColorUses::ColorUses()
    : m_uses(size_t(DistinctColors::count()))
{}

void WatchAppearances::ColorUses::add(const QColor& color)
{
    const int index = DistinctColors::indexOf(color);
    if (index >= 0)
        ++m_uses[size_t(index)];
}

QColor WatchAppearances::ColorUses::leastUsed() const
{
    return DistinctColors::at(int(std::min_element(m_uses.begin(), m_uses.end()) - m_uses.begin()));
}

bool WatchAppearances::setColor(const QString& name, const QColor& color, bool isDisplayed)
{
    Appearance& appearance = m_appearances[name];
    const QColor before = appearance.color;
    appearance.isChosen = color.isValid();
    if (appearance.isChosen)
        appearance.color = color;
    if (!isDisplayed)
        release(name);
    return this->color(name) != before;
}

bool WatchAppearances::setShown(const QString& name, bool isShown, bool isDisplayed)
{
    if (this->isShown(name) == isShown)
        return false;
    m_appearances[name].isShown = isShown;
    if (!isDisplayed)
        release(name);
    return true;
}

QColor WatchAppearances::assignColor(const QString& name, ColorUses& uses)
{
    Appearance& appearance = m_appearances[name];
    if (!appearance.color.isValid()) {
        appearance.color = uses.leastUsed();
        appearance.isChosen = false;
    }
    uses.add(appearance.color);
    return appearance.color;
}

void WatchAppearances::release(const QString& name)
{
    const auto appearance = m_appearances.find(name);
    if (appearance == m_appearances.end() || appearance->isChosen)
        return;
    appearance->color = QColor();
    if (appearance->isShown)
        m_appearances.erase(appearance);
}

} // namespace Velk
