// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/memory_key.h>

namespace Velk {

const QString MemoryKey::dataString = QStringLiteral("DATA");
const QString MemoryKey::eventString = QStringLiteral("EVENT");
const QString MemoryKey::unknownString = QStringLiteral("UNKNOWN");

MemoryKey::MemoryKey(const QString& name, const QString& description, MemoryKeyNature nature)
    : m_name(name)
    , m_description(description)
    , m_nature(nature)
    , m_isDescriptionDerived(false)
    , m_nameHash(static_cast<uint>(qHash(name)))
{}

MemoryKey::MemoryKey(const QString& name, MemoryKeyNature nature)
    : m_name(name)
    , m_nature(nature)
    , m_isDescriptionDerived(true)
    , m_nameHash(static_cast<uint>(qHash(name)))
{}

QString MemoryKey::description() const
{
    return m_isDescriptionDerived ? m_name + QStringLiteral(" desc") : m_description;
}

QString MemoryKey::natureToString() const
{
    switch (m_nature) {
    case EventNature:
        return eventString;
    case UnknownNature:
        return unknownString;
    case DataNature:
        return dataString;
    }
    return QString();
}

} // namespace Velk

uint qHash(const Velk::MemoryKey& key)
{
    return key.m_nameHash;
}
