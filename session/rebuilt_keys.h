// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef SESSION_REBUILT_KEYS_H
#define SESSION_REBUILT_KEYS_H

#include <session/session_export.h>

#include <QSet>

namespace Velk {

class DisplayedMemoryKey;
class DisplayedMemoryKeyListModel;

/// Whether keysUpdated() of the displayed key set reports the keys that were rebuilt after a connection, and not a
/// batch. Keys may have been added and removed then, which no other signal reports.
///
/// To be called in a slot of that signal, with its argument and with the number of keys that the receiver has seen
/// displayed. While no key is displayed, a batch looks like a rebuilt set without keys.
SESSION_EXPORT bool isRebuilt(const QSet<DisplayedMemoryKey>& updatedKeys,
                              const DisplayedMemoryKeyListModel& displayedKeys, int knownCount);

} // namespace Velk

#endif
