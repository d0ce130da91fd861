// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/memory_key.h>

#include <QSet>

int keysInSetsIncludedLast();

int keysInSetsIncludedLast()
{
    const Velk::MemoryKey key(QStringLiteral("Arm"), QString(), Velk::DataNature);
    const QSet<Velk::MemoryKey> keys{key, key};
    const QSet<Velk::DisplayedMemoryKey> displayedKeys{Velk::DisplayedMemoryKey(key)};
    return int(keys.size() + displayedKeys.size());
}
