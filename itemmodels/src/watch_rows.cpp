// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_rows.h"

#include "age_text.h"

#include <keynames/name_path.h>

#include <algorithm>

namespace Velk {

namespace {

void note(WatchRow& row, WatchChange change)
{
    row.change = std::max(row.change, change);
}

} // namespace

int WatchRows::indexOf(const QString& name) const
{
    if (!m_isIndexed) {
        m_rowByName.clear();
        m_rowByName.reserve(count());
        for (int row = 0; row < count(); ++row)
            m_rowByName.insert(at(row).key.name(), row);
        m_isIndexed = true;
    }
    return m_rowByName.value(name, -1);
}

std::vector<WatchRows::Range> WatchRows::rangesOf(const QSet<QString>& names) const
{
    std::vector<int> rows;
    for (const QString& name : names) {
        const int row = indexOf(name);
        if (row >= 0)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    std::vector<Range> ranges;
    for (int row : rows) {
        if (!ranges.empty() && ranges.back().last == row - 1)
            ranges.back().last = row;
        else
            ranges.push_back({row, row});
    }
    return ranges;
}

std::vector<const DisplayedMemoryKey*> WatchRows::missing(const QSet<DisplayedMemoryKey>& keys) const
{
    std::vector<const DisplayedMemoryKey*> missing;
    for (const DisplayedMemoryKey& displayed : keys) {
        if (indexOf(displayed.key().name()) < 0)
            missing.push_back(&displayed);
    }
    std::sort(missing.begin(), missing.end(), [](const DisplayedMemoryKey* a, const DisplayedMemoryKey* b) {
        return comparePaths(a->key().name(), b->key().name()) < 0;
    });
    return missing;
}

bool WatchRows::append(const DisplayedMemoryKey& displayed, const QColor& color, bool isShown, qint64 nowMs)
{
    m_rowByName.insert(displayed.key().name(), count());
    m_rows.push_back({displayed.key(), displayed.watchPeriod(), color, isShown, {}, {}, 0, WatchChange::None});
    const bool hasValue = takeNewest(m_rows.back(), displayed, nowMs);
    m_rows.back().shown = m_rows.back().newest;
    return hasValue;
}

void WatchRows::remove(const Range& rows)
{
    m_rows.erase(m_rows.begin() + rows.first, m_rows.begin() + rows.last + 1);
    m_isIndexed = false; // indexed again by the next question, not after each of several removals
}

void WatchRows::clear()
{
    m_rows.clear();
    m_isIndexed = false;
}

bool WatchRows::takeNewest(WatchRow& row, const DisplayedMemoryKey& displayed, qint64 nowMs)
{
    const QMap<double, QVariant> history = displayed.valueHistory();
    if (history.isEmpty())
        return false;
    row.newest = {history.last(), history.lastKey(), nowMs, true};
    if (!m_isFrozen)
        row.shown = row.newest;
    return true;
}

bool WatchRows::update(int row, const DisplayedMemoryKey& displayed, qint64 nowMs)
{
    WatchRow& updated = m_rows[size_t(row)];
    const MemoryKey& key = displayed.key();
    if (updated.key.nature() != key.nature() || updated.key.description() != key.description() ||
        updated.periodMs != displayed.watchPeriod()) {
        updated.key = key;
        updated.periodMs = displayed.watchPeriod();
        note(updated, WatchChange::Key);
    }
    const bool hasValue = takeNewest(updated, displayed, nowMs);
    if (hasValue && !m_isFrozen)
        note(updated, WatchChange::Value);
    return hasValue;
}

void WatchRows::noteAges(qint64 nowMs)
{
    for (WatchRow& row : m_rows) {
        if (!row.shown.exists)
            continue;
        const qint64 step = ageTextStep(std::max<qint64>(0, nowMs - row.shown.receivedMs));
        if (row.ageTextStep != step) {
            row.ageTextStep = step;
            note(row, WatchChange::Age);
        }
    }
}

void WatchRows::setFrozen(bool isFrozen)
{
    m_isFrozen = isFrozen;
    if (isFrozen)
        return;
    for (WatchRow& row : m_rows) {
        const bool isShownAlready = row.newest.receivedMs == row.shown.receivedMs && row.newest.time == row.shown.time;
        if (!row.newest.exists || (row.shown.exists && isShownAlready))
            continue;
        row.shown = row.newest;
        note(row, WatchChange::Value);
    }
}

std::optional<WatchRows::Run> WatchRows::takeRun(int from)
{
    const auto isNoted = [](const WatchRow& row) { return row.change != WatchChange::None; };
    if (from >= count())
        return std::nullopt;
    const auto begin = std::find_if(m_rows.begin() + from, m_rows.end(), isNoted);
    if (begin == m_rows.end())
        return std::nullopt;
    const WatchChange change = begin->change;
    auto end = begin;
    for (; end != m_rows.end() && end->change == change; ++end)
        end->change = WatchChange::None;
    return Run{{int(begin - m_rows.begin()), int(end - m_rows.begin()) - 1}, change};
}

} // namespace Velk
