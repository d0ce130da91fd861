// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef MEMORYKEYMODEL_DISPLAYED_MEMORY_KEY_H
#define MEMORYKEYMODEL_DISPLAYED_MEMORY_KEY_H

#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memorykeymodel_export.h>

#include <QColor>
#include <QHash>
#include <QMap>
#include <QVariant>

namespace Velk {

/// The history of a key that has no value yet.
static const QMap<double, QVariant> emptyValueHistory{};

/// A key that the application displays, with its display state, its watch period and its history. A plain value: the
/// cost of a copy does not depend on the length of the history.
///
/// Equality and hash use the name of the key only. A set therefore has at most one displayed key of a name, and
/// inserting another one of that name changes nothing.
class MEMORYKEYMODEL_EXPORT DisplayedMemoryKey
{
public:
    explicit DisplayedMemoryKey(const MemoryKey& key, bool displayFlag = true,
                                const QColor& color = QColor("chartreuse"), int watchPeriod = 100,
                                const QMap<double, QVariant>& valueHistory = emptyValueHistory);

    const MemoryKey& key() const { return m_key; }

    /// For the application, to show or hide the key. The models set it on creation and never read it.
    bool displayFlag() const { return m_displayFlag; }
    void setDisplayFlag(bool displayFlag) { m_displayFlag = displayFlag; }

    /// The colour in which the application shows the key. The models create every key with the same colour.
    QColor color() const { return m_color; }
    void setColor(const QColor& color) { m_color = color; }

    /// Milliseconds between two samples when the key is watched again after a connection.
    int watchPeriod() const { return m_watchPeriod; }

    /// The key's samples: time stamp, in the unit of the robot's clock, ascending, to value. The displayed key set
    /// keeps the newest one only; empty until the first batch that names the key.
    QMap<double, QVariant> valueHistory() const { return m_valueHistory; }
    void setValueHistory(const QMap<double, QVariant>& valueHistory) { m_valueHistory = valueHistory; }

    /// Whether the names of the keys are equal.
    bool operator==(const DisplayedMemoryKey& other) const { return m_key == other.m_key; }

private:
    friend class DisplayedMemoryKeyListModel;
    friend class NewestValues;

    // The elements of a set are const, and removing and inserting one can move it. The header and the rows of a record
    // file, which follow the order of the set, would then differ. So the displayed key set changes a stored key in its
    // place: the members are mutable for the two friends only, and the name never changes.
    void keepNewest(const QMap<double, QVariant>& samples) const;
    void replaceAllButName(const DisplayedMemoryKey& other) const;

    mutable MemoryKey m_key;
    mutable bool m_displayFlag;
    mutable QColor m_color;
    mutable int m_watchPeriod;
    mutable QMap<double, QVariant> m_valueHistory;
};

} // namespace Velk

/// The hash of the key's name.
MEMORYKEYMODEL_EXPORT uint qHash(const Velk::DisplayedMemoryKey& key);

namespace Velk {
// Argument-dependent lookup does not search the global namespace for a type of this one: QSet finds the hash here.
using ::qHash;
} // namespace Velk

Q_DECLARE_TYPEINFO(Velk::DisplayedMemoryKey, Q_MOVABLE_TYPE);

#endif
