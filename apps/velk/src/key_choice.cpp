// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "key_choice.h"

#include <keynames/wildcard.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace Velk {

bool isPattern(const QString& argument)
{
    return argument.contains(QLatin1Char('*')) || argument.contains(QLatin1Char('?'));
}

QRegularExpression keyPattern(const QString& pattern)
{
    return QRegularExpression(
        QRegularExpression::anchoredPattern(wildcardExpression(pattern, WildcardBrackets::Literal)),
        QRegularExpression::DotMatchesEverythingOption);
}

QVector<MemoryKey> sortedByName(const QVector<MemoryKey>& keys)
{
    // A key gives a copy of its name, which costs more than the comparison: once for each key, not for each step.
    std::vector<std::pair<QString, const MemoryKey*>> named;
    named.reserve(std::size_t(keys.size()));
    for (const MemoryKey& key : keys)
        named.emplace_back(key.name(), &key);
    std::sort(named.begin(), named.end(), [](const auto& left, const auto& right) { return left.first < right.first; });

    QVector<MemoryKey> sorted;
    sorted.reserve(keys.size());
    for (const auto& key : named)
        sorted.append(*key.second);
    return sorted;
}

KeyChoice chooseKeys(const QSet<MemoryKey>& listedKeys, const QStringList& arguments, bool all)
{
    const QVector<MemoryKey> sortedKeys = sortedByName(QVector<MemoryKey>(listedKeys.cbegin(), listedKeys.cend()));
    KeyChoice choice;
    QSet<MemoryKey> chosen;
    const auto add = [&](const MemoryKey& key) {
        if (chosen.contains(key))
            return;
        chosen.insert(key);
        choice.keys.append(key);
    };

    for (const QString& argument : arguments) {
        const MemoryKey typed(argument, argument, UnknownNature);
        const auto listed = listedKeys.constFind(typed);
        if (listed != listedKeys.cend()) {
            add(*listed);
        } else if (!isPattern(argument)) {
            if (!chosen.contains(typed))
                choice.unlistedNames.append(argument);
            add(typed);
        } else {
            const QRegularExpression pattern = keyPattern(argument);
            bool matched = false;
            for (const MemoryKey& key : sortedKeys) {
                if (!pattern.match(key.name()).hasMatch())
                    continue;
                matched = true;
                add(key);
            }
            if (!matched)
                choice.patternsWithoutAMatch.append(argument);
        }
    }
    if (all)
        std::for_each(sortedKeys.cbegin(), sortedKeys.cend(), add);
    return choice;
}

} // namespace Velk
