// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/rebuilt_keys.h>

#include <memorykeymodel/displayed_memory_key_list_model.h>

namespace Velk {

bool isRebuilt(const QSet<DisplayedMemoryKey>& updatedKeys, const DisplayedMemoryKeyListModel& displayedKeys,
               int knownCount)
{
    // A batch reports keys with a value only; the keys of a rebuilt set have none.
    if (!updatedKeys.isEmpty())
        return updatedKeys.cbegin()->valueHistory().isEmpty();
    // A slot before may have added keys to a rebuilt set without keys.
    const int count = int(displayedKeys.displayedKeys().size());
    return count == 0 || count != knownCount;
}

} // namespace Velk
