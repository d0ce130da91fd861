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

/// A key that the application displays: the key, how it is drawn, how it is watched, and what was received for it.
/// A plain value, cheap to copy however long its history is.
///
/// Equality and hash see the key's name only, so a set holds one displayed key of a name, and inserting another one
/// of that name leaves the stored one with its colour and history.
class MEMORYKEYMODEL_EXPORT DisplayedMemoryKey
{
public:
    explicit DisplayedMemoryKey(const MemoryKey& key, bool displayFlag = true,
                                const QColor& color = QColor("chartreuse"), int watchPeriod = 100,
                                const QMap<double, QVariant>& valueHistory = emptyValueHistory);

    const MemoryKey& key() const { return m_key; }

    /// For the application to show or hide the key; the models set it on creation and never read it.
    bool displayFlag() const { return m_displayFlag; }
    void setDisplayFlag(bool displayFlag) { m_displayFlag = displayFlag; }

    /// The colour in which the application shows the key. The models give every key that they create the same one.
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

    // A set hands out its elements const, and replacing one by removing and inserting can move it: whoever walks the
    // set twice, such as a record file's header and rows, would see another order. The displayed key set therefore
    // changes a stored key where it stands. The state below is mutable for these two alone; the name stays the same.
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
