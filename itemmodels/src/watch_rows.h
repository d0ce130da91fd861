// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_ROWS_H
#define ITEMMODELS_WATCH_ROWS_H

#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/memory_key.h>

#include <QColor>
#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>

#include <optional>
#include <vector>

namespace Velk {

/// What the views do not show yet of a row. Each one includes those before it.
enum class WatchChange
{
    None,
    Age,
    Value,
    Key
};

/// A sample and the moment at which it was received.
struct WatchSample
{
    QVariant value;
    double time = 0.0;
    qint64 receivedMs = 0;
    bool exists = false;
};

struct WatchRow
{
    MemoryKey key;
    int periodMs;
    QColor color;
    bool isShown;
    WatchSample newest;
    WatchSample shown;      // the newest, unless the rows are frozen
    qint64 ageTextStep = 0; // of the age text that the views have
    WatchChange change = WatchChange::None;
};

/// The rows of a watch model: the watched keys in the order in which they were added, the newest value of each, and
/// what of them the views do not show yet. Knows no view; every time is in milliseconds of the model's clock.
class WatchRows
{
public:
    /// Neighbouring rows, both ends included.
    struct Range
    {
        int first;
        int last;
    };

    int count() const { return int(m_rows.size()); }
    bool isEmpty() const { return m_rows.empty(); }
    const WatchRow& at(int row) const { return m_rows[size_t(row)]; }
    /// The row of the key of this name; -1 when there is none.
    int indexOf(const QString& name) const;
    /// The rows of the keys of these names, ascending; neighbours are one range.
    std::vector<Range> rangesOf(const QSet<QString>& names) const;
    /// The keys without a row, in the order of their name paths. The pointers point into `keys`.
    std::vector<const DisplayedMemoryKey*> missing(const QSet<DisplayedMemoryKey>& keys) const;

    void reserve(int count) { m_rows.reserve(size_t(count)); }
    /// Adds a row at the end, for a key that has none yet. Its value is shown also when the rows are frozen. Returns
    /// whether the key has a value.
    bool append(const DisplayedMemoryKey& displayed, const QColor& color, bool isShown, qint64 nowMs);
    void remove(const Range& rows);
    void clear();
    void setColor(int row, const QColor& color) { m_rows[size_t(row)].color = color; }
    void setShown(int row, bool isShown) { m_rows[size_t(row)].isShown = isShown; }

    /// Takes the key and its newest value, and notes what changed. Returns whether the key has a value.
    bool update(int row, const DisplayedMemoryKey& displayed, qint64 nowMs);
    /// Notes the rows whose age text has changed.
    void noteAges(qint64 nowMs);

    bool isFrozen() const { return m_isFrozen; }
    /// Frozen rows take values in and do not show them. Thawed rows show the newest.
    void setFrozen(bool isFrozen);

    /// Neighbouring rows with the same change.
    struct Run
    {
        Range rows;
        WatchChange change;
    };
    /// The first run at or after the row `from`. Clears the changes of its rows.
    std::optional<Run> takeRun(int from);

private:
    bool takeNewest(WatchRow& row, const DisplayedMemoryKey& displayed, qint64 nowMs);

    std::vector<WatchRow> m_rows;
    mutable QHash<QString, int> m_rowByName;
    mutable bool m_isIndexed = true; // whether m_rowByName is complete and correct
    bool m_isFrozen = false;
};

} // namespace Velk

#endif
