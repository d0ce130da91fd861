// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_WATCH_TABLE_H
#define CONNECTIONS_LINK_WATCH_TABLE_H

#include <QString>

#include <algorithm>
#include <cstddef>
#include <map>
#include <vector>

namespace Velk {

/// The watched keys of a memory interface by name, each with the period of its watchKey(), and grouped by the sampling
/// period that is in force: the watcher's, or the key's own while the watcher's is 0.
///
/// `Key` is what the connection keeps of a watched key. It stays at its address until it is unwatched.
template <typename Key>
class WatchTable
{
public:
    struct Entry
    {
        int periodMs;
        Key key;
        int groupPeriodMs = 0; // of the group that it is in; 0: in none
        std::size_t groupIndex = 0;
    };
    using Entries = std::map<QString, Entry>;
    using Group = std::vector<Entry*>;

    /// In ascending order of names, as deliveries are.
    Entries& entries() { return m_entries; }
    const Entries& entries() const { return m_entries; }

    Key* find(const QString& name)
    {
        const auto found = m_entries.find(name);
        return found == m_entries.end() ? nullptr : &found->second.key;
    }

    /// Gives the key its period, at least 1 ms. A key that is not watched yet is made by `makeKey()`; true then.
    template <typename MakeKey>
    bool watch(const QString& name, int periodMs, MakeKey makeKey)
    {
        const int period = std::max(periodMs, 1);
        const auto found = m_entries.find(name);
        if (found != m_entries.end()) {
            found->second.periodMs = period;
            return false;
        }
        m_entries.emplace(name, Entry{period, makeKey()});
        return true;
    }

    /// Takes the key out of its group as well. Nothing when the key is not watched.
    void unwatch(const QString& name)
    {
        const auto found = m_entries.find(name);
        if (found == m_entries.end())
            return;
        const Entry& entry = found->second;
        if (entry.groupPeriodMs > 0) {
            // The last key moves into the gap: the cost is the same for a group of any size.
            Group& group = m_groups[entry.groupPeriodMs];
            group.back()->groupIndex = entry.groupIndex;
            group[entry.groupIndex] = group.back();
            group.pop_back();
        }
        m_entries.erase(found);
    }
    void unwatchAll()
    {
        m_groups.clear();
        m_entries.clear();
    }

    /// The watcher's sampling period; 0, or less, for the keys' own.
    void setSamplingPeriod(int periodMs) { m_samplingPeriodMs = std::max(periodMs, 0); }
    int periodInForce(const Entry& entry) const { return m_samplingPeriodMs > 0 ? m_samplingPeriodMs : entry.periodMs; }

    /// Sorts the keys into groups; returns the periods in force. Until then new keys are in no group, and the others
    /// stay in theirs, whatever their period is.
    std::vector<int> group()
    {
        m_groups.clear();
        for (auto& [name, entry] : m_entries) {
            entry.groupPeriodMs = periodInForce(entry);
            Group& group = m_groups[entry.groupPeriodMs];
            entry.groupIndex = group.size();
            group.push_back(&entry);
        }
        std::vector<int> periods;
        for (const auto& [period, group] : m_groups)
            periods.push_back(period);
        return periods;
    }
    /// The keys that are sampled with this period; empty when there are none.
    const Group& keysOfPeriod(int periodMs) const
    {
        static const Group none;
        const auto found = m_groups.find(periodMs);
        return found == m_groups.end() ? none : found->second;
    }

private:
    Entries m_entries;
    std::map<int, Group> m_groups;
    int m_samplingPeriodMs = 0;
};

} // namespace Velk

#endif
