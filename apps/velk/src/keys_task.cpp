// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "keys_task.h"

#include "console.h"
#include "exit_status.h"
#include "key_choice.h"
#include "printed_value.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QJsonObject>

#include <algorithm>
#include <iterator>
#include <utility>

namespace Velk {

namespace {

// Enough to make writing cheap, few enough not to hold a million keys twice.
constexpr int pieceSize = 1 << 16;

QByteArray textLine(const MemoryKey& key)
{
    return QStringLiteral("%1  %2\n").arg(key.natureToString(), -7).arg(Console::printable(key.name())).toUtf8();
}

QByteArray jsonElement(const MemoryKey& key)
{
    return jsonLine({{QStringLiteral("name"), key.name()}, {QStringLiteral("nature"), key.natureToString()}})
        .chopped(1);
}

} // namespace

KeysTask::KeysTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs, const KeysOptions& options)
    : RobotTask(std::move(link), RobotSession::ListKeys, console, timeoutMs)
    , m_options(options)
{}

void KeysTask::onListed(const MemoryKeyListModel& catalogue)
{
    QSet<MemoryKey> keys = catalogue.keys();
    for (const QString& name : std::as_const(m_options.names))
        keys.insert(MemoryKey(name, name, UnknownNature));
    QVector<QRegularExpression> filters;
    for (const QString& filter : std::as_const(m_options.filters))
        filters.append(keyPattern(filter));
    const auto passes = [&](const MemoryKey& key) {
        if ((key.nature() & m_options.natures) == 0)
            return false;
        return filters.isEmpty() ||
               std::any_of(filters.cbegin(), filters.cend(),
                           [&](const QRegularExpression& filter) { return filter.match(key.name()).hasMatch(); });
    };

    QVector<MemoryKey> passing;
    std::copy_if(keys.cbegin(), keys.cend(), std::back_inserter(passing), passes);

    setWorking();
    QByteArray piece = m_options.json ? QByteArray("[") : QByteArray();
    const char* separator = "\n  ";
    const QVector<MemoryKey> sortedKeys = sortedByName(passing);
    for (const MemoryKey& key : sortedKeys) {
        if (m_options.json)
            piece += separator + jsonElement(key);
        else
            piece += textLine(key);
        separator = ",\n  ";
        if (piece.size() < pieceSize)
            continue;
        if (!write(piece))
            return;
        piece.clear();
    }
    if (m_options.json)
        piece += "\n]\n";
    if (write(piece))
        finish(Success);
}

} // namespace Velk
