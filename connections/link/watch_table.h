// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_WATCH_TABLE_H
#define CONNECTIONS_LINK_WATCH_TABLE_H

#include <QString>

#include <algorithm>
#include <map>
#include <utility>
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
    };
    using Entries = std::map<QString, Entry>;
    /// By sampling period in milliseconds.
    using Groups = std::map<int, std::vector<Key*>>;

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
        m_isGrouped = false;
        const auto found = m_entries.find(name);
        if (found != m_entries.end()) {
            found->second.periodMs = period;
            return false;
        }
        m_entries.emplace(name, Entry{period, makeKey()});
        return true;
    }

    /// Nothing when the key is not watched. The groups are empty until they are made again.
    void unwatch(const QString& name)
    {
        if (m_entries.erase(name) > 0)
            ungroup();
    }
    void unwatchAll()
    {
        m_entries.clear();
        ungroup();
    }

    /// The watcher's sampling period; 0, or less, for the keys' own.
    void setSamplingPeriod(int periodMs)
    {
        m_samplingPeriodMs = std::max(periodMs, 0);
        m_isGrouped = false;
    }
    int periodInForce(const Entry& entry) const { return m_samplingPeriodMs > 0 ? m_samplingPeriodMs : entry.periodMs; }

    /// Whether the groups are those of the present keys and periods.
    bool isGrouped() const { return m_isGrouped; }
    /// Sorts the keys into groups; returns the periods in force.
    std::vector<int> group()
    {
        m_groups.clear();
        for (auto& [name, entry] : m_entries)
            m_groups[periodInForce(entry)].push_back(&entry.key);
        m_isGrouped = true;
        std::vector<int> periods;
        for (const auto& [period, keys] : m_groups)
            periods.push_back(period);
        return periods;
    }
    const Groups& groups() const { return m_groups; }
    /// The keys that are sampled with this period; empty when there are none.
    const std::vector<Key*>& keysOfPeriod(int periodMs) const
    {
        static const std::vector<Key*> none;
        const auto found = m_groups.find(periodMs);
        return found == m_groups.end() ? none : found->second;
    }

private:
    void ungroup()
    {
        m_groups.clear();
        m_isGrouped = false;
    }

    Entries m_entries;
    Groups m_groups;
    int m_samplingPeriodMs = 0;
    bool m_isGrouped = false;
};

} // namespace Velk

#endif
