// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_task.h"

#include "console.h"
#include "printed_value.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <QDateTime>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Velk {

namespace {

struct Sample
{
    double time;
    int row;
    QVariant value;
};

// Links stamp their samples with seconds since the Unix epoch.
QString clockTime(double time)
{
    return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(time * 1000.0))).toString(QStringLiteral("hh:mm:ss.zzz"));
}

} // namespace

WatchTask::WatchTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs,
                     const DisplayedKeysOptions& options, Format format)
    : DisplayedKeysTask(std::move(link), console, timeoutMs, options)
    , m_format(format)
    , m_isInPlace(format == Automatic && console.isOutputTerminal())
{}

void WatchTask::begin(const QVector<MemoryKey>& keys)
{
    m_keys = keys;
    for (const MemoryKey& key : keys) {
        m_rowOfKey.insert(key.name(), int(m_rows.size()));
        m_rows.append({Console::printable(key.name()), key.natureToString(), QString(), QString()});
    }
    connect(&displayedKeys(), &DisplayedMemoryKeyListModel::keysUpdated, this, &WatchTask::onKeysUpdated);
    session().watch(QSet<MemoryKey>(keys.cbegin(), keys.cend()));
    workFor(options().forMs);
    paint();
}

void WatchTask::onKeysUpdated(const QSet<DisplayedMemoryKey>& keys)
{
    if (isFinished())
        return;
    QVector<Sample> samples;
    for (const DisplayedMemoryKey& displayed : keys) {
        const int row = m_rowOfKey.value(displayed.key().name(), -1);
        if (row < 0)
            continue;
        // After a reconnection the keys come with the natures that the robot gives them now, and without a value.
        m_rows[row].nature = displayed.key().natureToString();
        const QMap<double, QVariant> history = displayed.valueHistory();
        if (!history.isEmpty())
            samples.append({history.lastKey(), row, history.last()});
    }

    if (m_isInPlace) {
        for (const Sample& sample : std::as_const(samples)) {
            m_rows[sample.row].time = clockTime(sample.time);
            m_rows[sample.row].value = valueText(sample.value);
        }
        paint();
        return;
    }

    std::sort(samples.begin(), samples.end(), [](const Sample& left, const Sample& right) {
        return left.time != right.time ? left.time < right.time : left.row < right.row;
    });
    QByteArray lines;
    for (const Sample& sample : std::as_const(samples)) {
        if (m_format == JsonLines)
            lines += jsonLine({{QStringLiteral("time"), sample.time},
                               {QStringLiteral("key"), m_keys.at(sample.row).name()},
                               {QStringLiteral("nature"), m_rows.at(sample.row).nature},
                               {QStringLiteral("value"), QJsonValue::fromVariant(sample.value)}});
        else
            lines += QStringLiteral("%1\t%2\t%3\n")
                         .arg(QString::number(sample.time, 'f', 6), m_rows.at(sample.row).name, valueText(sample.value))
                         .toUtf8();
    }
    if (!lines.isEmpty())
        write(lines);
}

void WatchTask::onConnectedAgain()
{
    report(QStringLiteral("Connected again."));
}

void WatchTask::report(const QString& text)
{
    // Both streams may be the same terminal: the table is erased before the message and printed again below it.
    if (m_isInPlace)
        write(m_screen.erase());
    RobotTask::report(text);
    paint();
}

void WatchTask::paint()
{
    if (m_isInPlace && !m_rows.isEmpty() && !isFinished())
        write(m_screen.paint(m_rows, console().outputSize()));
}

} // namespace Velk
