// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_KEY_TEXT_H
#define TESTS_SUPPORT_KEY_TEXT_H

#include "fake_robot.h"

#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QStringList>

namespace Velk {

inline MemoryKey key(const QString& name, MemoryKeyNature nature = DataNature)
{
    return MemoryKey(name, name + QStringLiteral(" desc"), nature);
}

inline QSet<MemoryKey> keySet(const QStringList& names, MemoryKeyNature nature = DataNature)
{
    QSet<MemoryKey> keys;
    for (const QString& name : names)
        keys.insert(key(name, nature));
    return keys;
}

/// Sorted names, for one compare of a whole set.
template <typename Key>
QStringList names(const QSet<Key>& keys);

template <>
inline QStringList names(const QSet<MemoryKey>& keys)
{
    QStringList result;
    for (const MemoryKey& key : keys)
        result << key.name();
    result.sort();
    return result;
}

template <>
inline QStringList names(const QSet<DisplayedMemoryKey>& keys)
{
    QStringList result;
    for (const DisplayedMemoryKey& displayed : keys)
        result << displayed.key().name();
    result.sort();
    return result;
}

/// "name NATURE (description)" of each key, sorted.
inline QStringList described(const QSet<MemoryKey>& keys)
{
    QStringList result;
    for (const MemoryKey& key : keys)
        result << QStringLiteral("%1 %2 (%3)").arg(key.name(), key.natureToString(), key.description());
    result.sort();
    return result;
}

/// "time=value, …" of a history.
inline QString samplesText(const Samples& samples)
{
    QStringList result;
    for (auto sample = samples.cbegin(); sample != samples.cend(); ++sample)
        result << QStringLiteral("%1=%2").arg(sample.key()).arg(sample.value().toString());
    return result.join(QStringLiteral(", "));
}

/// "name: time=value, …" of each key, sorted.
inline QStringList histories(const QSet<DisplayedMemoryKey>& keys)
{
    QStringList result;
    for (const DisplayedMemoryKey& displayed : keys)
        result << displayed.key().name() + QStringLiteral(": ") + samplesText(displayed.valueHistory());
    result.sort();
    return result;
}

inline DisplayedMemoryKey displayedKey(const DisplayedMemoryKeyListModel& model, const QString& name)
{
    const QSet<DisplayedMemoryKey> keys = model.displayedKeys();
    return *keys.constFind(DisplayedMemoryKey(key(name)));
}

/// Writes every signal of the model to the log of its connection, which has the calls to the memory interface too.
inline void logSignals(DisplayedMemoryKeyListModel& model, FakeConnectionManager& connection)
{
    using Model = DisplayedMemoryKeyListModel;
    QStringList* const log = &connection.log;
    const auto flag = [](bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); };
    const auto keysLine = [log](const char* signal, const QSet<DisplayedMemoryKey>& keys) {
        log->append((QStringList(QLatin1String(signal)) + names(keys)).join(QLatin1Char(' ')));
    };
    QObject::connect(&model, &Model::robotConnected, &connection,
                     [=](bool on) { log->append(QStringLiteral("robotConnected ") + flag(on)); });
    QObject::connect(&model, &Model::keysAdded, &connection,
                     [=](const QSet<DisplayedMemoryKey>& keys) { keysLine("keysAdded", keys); });
    QObject::connect(&model, &Model::keysRemoved, &connection,
                     [=](const QSet<DisplayedMemoryKey>& keys) { keysLine("keysRemoved", keys); });
    QObject::connect(&model, &Model::keysUpdated, &connection,
                     [=](const QSet<DisplayedMemoryKey>& keys) { keysLine("keysUpdated", keys); });
    QObject::connect(&model, &Model::minSamplingPeriodUpdated, &connection,
                     [=](int period) { log->append(QStringLiteral("minSamplingPeriodUpdated %1").arg(period)); });
    QObject::connect(&model, &Model::sampligPeriodUpdated, &connection,
                     [=](int period) { log->append(QStringLiteral("sampligPeriodUpdated %1").arg(period)); });
    QObject::connect(&model, &Model::recording, &connection,
                     [=](bool on) { log->append(QStringLiteral("recording ") + flag(on)); });
    QObject::connect(&model, &Model::error, &connection, [=](const QString& type, const QString& message) {
        log->append(QStringLiteral("error [%1] %2").arg(type, message));
    });
}

} // namespace Velk

#endif
