// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "batch_matcher.h"

#include <algorithm>

namespace Velk {

namespace {

bool isSameString(const QString& a, const QString& b)
{
    return a.constData() == b.constData() && a.size() == b.size();
}

} // namespace

BatchMatcher::BatchMatcher(const QSet<DisplayedMemoryKey>& keys)
{
    m_entries.reserve(std::size_t(keys.size()));
    for (const DisplayedMemoryKey& displayed : keys)
        m_entries.push_back({displayed.key().name(), int(m_entries.size())});
    std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
}

std::vector<BatchMatcher::Match> BatchMatcher::match(const GatheredData& batch)
{
    std::vector<Match> matches;
    matches.reserve(std::min(m_entries.size(), std::size_t(batch.size())));
    m_lastFound.resize(std::size_t(batch.size()), 0);
    const auto begin = m_entries.cbegin();
    const auto end = m_entries.cend();
    auto entry = begin;
    auto lastFound = m_lastFound.begin();
    for (auto samples = batch.cbegin(); samples != batch.cend() && entry != end; ++samples, ++lastFound) {
        // Most robots deliver the same keys, and the same strings, in every batch: the hint is then right.
        if (*lastFound >= entry - begin && isSameString(begin[*lastFound].name, samples.key())) {
            entry = begin + *lastFound;
        } else {
            entry = notBefore(entry, samples.key());
            if (entry == end || entry->name != samples.key())
                continue;
            *lastFound = entry - begin;
        }
        if (!samples->isEmpty())
            matches.push_back({entry->place, &*samples});
        ++entry;
    }
    return matches;
}

BatchMatcher::Entries::const_iterator BatchMatcher::notBefore(Entries::const_iterator entry, const QString& name) const
{
    // Doubling steps first, then a binary search between the last two: the number of comparisons grows with the
    // logarithm of the distance.
    std::ptrdiff_t step = 1;
    while (m_entries.cend() - entry > step && (entry + step)->name < name) {
        entry += step;
        step *= 2;
    }
    const auto end = entry + std::min(step, m_entries.cend() - entry);
    return std::lower_bound(entry, end, name, [](const Entry& e, const QString& n) { return e.name < n; });
}

} // namespace Velk
