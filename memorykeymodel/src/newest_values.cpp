// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "newest_values.h"

#include <algorithm>
#include <utility>

namespace Velk {

QSet<DisplayedMemoryKey> NewestValues::keep(const std::vector<BatchMatcher::Match>& matches,
                                            QSet<DisplayedMemoryKey>* keys)
{
    if (matches.empty())
        return {}; // the displayed keys are not detached from their copies
    if (matches.size() == std::size_t(keys->size()))
        return keepAll(matches, keys);
    if (areTheSameKeys(matches))
        keepSame(matches, keys);
    else
        keepOthers(matches, keys);
    return m_announced;
}

QSet<DisplayedMemoryKey> NewestValues::keepAll(const std::vector<BatchMatcher::Match>& matches,
                                               QSet<DisplayedMemoryKey>* keys)
{
    std::vector<const Samples*> samplesByPlace(matches.size());
    for (const BatchMatcher::Match& match : matches)
        samplesByPlace[std::size_t(match.place)] = match.samples;
    auto samples = samplesByPlace.cbegin();
    for (auto displayed = keys->begin(); displayed != keys->end(); ++displayed)
        displayed->keepNewest(**samples++);
    return *keys;
}

void NewestValues::keepSame(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys)
{
    if (m_walkToMatch.empty())
        findTheAnnouncedKeys(matches, *keys);
    keys->detach();
    auto match = m_walkToMatch.cbegin();
    for (auto announced = m_announced.begin(); announced != m_announced.end(); ++announced) {
        const Samples& samples = *matches[std::size_t(*match++)].samples;
        announced->keepNewest(samples);
        keys->constFind(*announced)->keepNewest(samples);
    }
}

void NewestValues::keepOthers(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys)
{
    std::vector<const Samples*> samplesByPlace(std::size_t(keys->size()), nullptr);
    m_places.clear();
    m_walkToMatch.clear();
    for (const BatchMatcher::Match& match : matches) {
        samplesByPlace[std::size_t(match.place)] = match.samples;
        m_places.push_back(match.place);
    }

    m_announced.clear();
    m_announced.reserve(int(matches.size()));
    auto displayed = keys->begin();
    for (const Samples* const samples : samplesByPlace) {
        if (samples) {
            displayed->keepNewest(*samples);
            m_announced.insert(*displayed);
        }
        ++displayed;
    }
}

void NewestValues::findTheAnnouncedKeys(const std::vector<BatchMatcher::Match>& matches,
                                        const QSet<DisplayedMemoryKey>& keys)
{
    std::vector<int> matchByPlace(std::size_t(keys.size()), -1);
    for (std::size_t i = 0; i < matches.size(); ++i)
        matchByPlace[std::size_t(matches[i].place)] = int(i);
    QHash<MemoryKey, int> matchByKey;
    matchByKey.reserve(int(matches.size()));
    auto match = matchByPlace.cbegin();
    for (const DisplayedMemoryKey& displayed : keys) {
        if (*match >= 0)
            matchByKey.insert(displayed.key(), *match);
        ++match;
    }
    for (const DisplayedMemoryKey& announced : std::as_const(m_announced))
        m_walkToMatch.push_back(matchByKey.value(announced.key()));
}

bool NewestValues::areTheSameKeys(const std::vector<BatchMatcher::Match>& matches) const
{
    return std::equal(matches.cbegin(), matches.cend(), m_places.cbegin(), m_places.cend(),
                      [](const BatchMatcher::Match& match, int place) { return match.place == place; });
}

} // namespace Velk
