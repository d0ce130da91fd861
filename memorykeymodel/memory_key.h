// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef MEMORYKEYMODEL_MEMORY_KEY_H
#define MEMORYKEYMODEL_MEMORY_KEY_H

#include <memorykeymodel/memorykeymodel_export.h>

#include <QHash>
#include <QString>

namespace Velk {
class MemoryKey;
}

/// The hash of the key's name.
MEMORYKEYMODEL_EXPORT uint qHash(const Velk::MemoryKey& key);

namespace Velk {

// Argument-dependent lookup does not search the global namespace for a type of this one: QSet finds the hash here.
using ::qHash;

/// The list in which the robot has a key. Single bits: a key has exactly one of the three, and a query takes several as
/// a mask, MemoryKeyNature(DataNature | EventNature).
enum MemoryKeyNature : int
{
    DataNature = 1,   ///< listed by the robot as a data key
    EventNature = 2,  ///< listed by the robot as an event or a micro-event key
    UnknownNature = 4 ///< typed in by the user, or selected, and not listed by the robot
};

/// One key of the robot's memory. A plain value: copies may be used in several threads.
///
/// The name alone identifies the key: equality and hash use nothing else. A set therefore has at most one key of a
/// name, and inserting another key of that name changes nothing: the stored description and nature stay.
class MEMORYKEYMODEL_EXPORT MemoryKey
{
public:
    /// The name is neither checked nor normalised. Of the nature, the low 31 bits are kept.
    MemoryKey(const QString& name, const QString& description, MemoryKeyNature nature);
    MemoryKey(const MemoryKey& other) = default;
    MemoryKey(MemoryKey&& other) noexcept = default;
    MemoryKey& operator=(const MemoryKey& other) = default;
    MemoryKey& operator=(MemoryKey&& other) noexcept = default;
    virtual ~MemoryKey() = default;

    /// The key's name as the robot's memory spells it.
    QString name() const { return m_name; }
    /// Free text that a view shows beside the name.
    QString description() const;
    MemoryKeyNature nature() const { return m_nature; }
    /// "DATA", "EVENT" or "UNKNOWN"; a null string when nature() is not exactly one of the three.
    QString natureToString() const;

    /// Whether the names are equal, code unit by code unit.
    bool operator==(const MemoryKey& other) const { return m_nameHash == other.m_nameHash && m_name == other.m_name; }

    /// The display texts of the natures.
    static const QString dataString;
    static const QString eventString;
    static const QString unknownString;

private:
    friend class MemoryKeyListModel;
    friend MEMORYKEYMODEL_EXPORT uint(::qHash)(const MemoryKey& key);

    /// A key whose description is its name and " desc". A robot lists hundreds of thousands of names: the text is built
    /// only when description() is called.
    MemoryKey(const QString& name, MemoryKeyNature nature);

    QString m_name;
    QString m_description;
    // One word for both: catalogues hold hundreds of thousands of keys. Far more bits than any mask of natures has.
    MemoryKeyNature m_nature : 31;
    bool m_isDescriptionDerived : 1; // from the name; m_description is then empty
    uint m_nameHash;                 // computed once: a key is inserted into many sets
};

} // namespace Velk

Q_DECLARE_TYPEINFO(Velk::MemoryKey, Q_MOVABLE_TYPE);

#endif
