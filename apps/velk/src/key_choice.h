// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_KEY_CHOICE_H
#define APPS_VELK_SRC_KEY_CHOICE_H

#include <memorykeymodel/memory_key.h>

#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QVector>

namespace Velk {

/// Whether the argument is a pattern: it has a * or a ?.
bool isPattern(const QString& argument);

/// A pattern on key names: * matches any text, also across slashes, ? one character. Brackets match themselves. The
/// whole name must match.
QRegularExpression keyPattern(const QString& pattern);

/// By name, code unit by code unit: the same order on every machine.
QVector<MemoryKey> sortedByName(const QVector<MemoryKey>& keys);

/// The keys that the arguments of a command choose.
struct KeyChoice
{
    QVector<MemoryKey> keys;           ///< in the order of the arguments, keys of one pattern by name; each once
    QStringList unlistedNames;         ///< of these, the names that the robot does not list
    QStringList patternsWithoutAMatch; ///< arguments that chose nothing
};

/// An argument that is the name of a listed key chooses that key, even if it looks like a pattern. A name that the
/// robot does not list is chosen with UnknownNature. `all` also chooses every other listed key.
KeyChoice chooseKeys(const QSet<MemoryKey>& listedKeys, const QStringList& arguments, bool all);

} // namespace Velk

#endif
