// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "clear_model.h"

#include <QVector>

namespace Velk {

QStringList ClearModel::text(const Keys& keys)
{
    QStringList result;
    for (auto key = keys.cbegin(); key != keys.cend(); ++key)
        result << QString("%1/%2/%3{%4}")
                      .arg(key.key())
                      .arg(key->description)
                      .arg(key->nature)
                      .arg(samplesText(key->history));
    return result;
}

void ClearModel::addKeys(const QStringList& names)
{
    Keys added;
    for (const QString& name : names) {
        if (m_displayed.contains(name))
            continue;
        added.insert(name, {name + " desc", DataNature, {}});
        if (hasMemory)
            note(QString("watchKey %1 %2").arg(name).arg(m_period));
    }
    for (auto key = added.cbegin(); key != added.cend(); ++key)
        m_displayed.insert(key.key(), *key);
    if (!m_displayed.isEmpty())
        startWatcher(false);
    announce("keysAdded", added);
}

void ClearModel::removeKeys(const QStringList& names)
{
    Keys removed;
    for (const QString& name : names) {
        if (m_displayed.contains(name)) {
            removed.insert(name, m_displayed[name]);
            m_displayed.remove(name);
            m_selected.remove(name);
        }
        if (hasMemory)
            note("unwatchKey " + name);
    }
    if (m_displayed.isEmpty())
        stopWatcher();
    announce("keysRemoved", removed);
}

void ClearModel::setSelectedKeys(const QStringList& names)
{
    m_selected.clear();
    for (const QString& name : names) {
        if (m_displayed.contains(name))
            m_selected.insert(name, m_displayed[name]);
    }
}

void ClearModel::startWatcher(bool ownPeriods)
{
    if (m_isWatching)
        return;
    if (!m_isConnected) {
        note("error [Not connected to a robot] Cannot retrieve memory value if no robot is connected.");
        return;
    }
    if (!hasMemory) {
        note("error [Missing memory interface] Cannot retrieve memory values as no memory interface was found.");
        return;
    }
    m_isSubscribed = true;
    note(QString("startWatcher %1 %2").arg(m_period < 200 ? 200 : m_period).arg(ownPeriods ? 0 : m_period));
    m_isWatching = true;
}

void ClearModel::stopWatcher()
{
    if (!m_isWatching)
        return;
    m_isWatching = false;
    if (!hasMemory)
        return;
    m_isSubscribed = false;
    note("stopWatcher");
}

void ClearModel::setSamplingPeriod(int period)
{
    int bounded = period > m_minimum ? period : m_minimum;
    if (9999990 <= bounded)
        bounded = 9999990;
    if (bounded == m_period)
        return;
    m_period = bounded;
    if (!m_isConnected || !hasMemory)
        return;
    note(QString("setGatherPeriod %1").arg(bounded < 200 ? 200 : bounded));
    note(QString("setSamplingPeriod %1").arg(bounded));
    note(QString("sampligPeriodUpdated %1").arg(bounded));
}

void ClearModel::answerRealTimeSupported(bool supported)
{
    setMinimum(supported ? 10 : 200);
}

void ClearModel::setMinimum(int period)
{
    if (m_minimum == period)
        return;
    m_minimum = period;
    note(QString("minSamplingPeriodUpdated %1").arg(period));
}

void ClearModel::connectionChanged(bool isConnected)
{
    m_isConnected = isConnected;
    if (!isConnected) {
        stopRecording();
        stopWatcher();
        note("robotConnected false");
        return;
    }
    if (!hasMemory)
        return;
    setMinimum(200);
    note("isRealTimeSupported gotRealTimeSupported");
    note("unwatchAll");
    for (auto key = m_displayed.cbegin(); key != m_displayed.cend(); ++key)
        note(QString("watchKey %1 100").arg(key.key()));
    note("getDataList");
    note("getEventList");
    note("getMicroEventList");
    m_heldFetch = m_fetchCount++;
    Keys selected = m_displayed;
    for (Key& key : selected)
        key.history.clear();
    m_catalogues.append({m_heldFetch, selected});
    note("robotConnected true");
}

void ClearModel::finishLists(int fetch, const QStringList& data, const QStringList& events,
                             const QStringList& microEvents)
{
    for (Catalogue& catalogue : m_catalogues) {
        if (catalogue.fetch != fetch)
            continue;
        for (auto key = catalogue.selected.begin(); key != catalogue.selected.end(); ++key) {
            const bool isEvent = events.contains(key.key()) || microEvents.contains(key.key());
            key->nature = isEvent ? EventNature : data.contains(key.key()) ? DataNature : UnknownNature;
            if (key->nature != UnknownNature)
                key->description = key.key() + " desc";
        }
        catalogueReady();
        break;
    }
}

void ClearModel::catalogueReady()
{
    for (int i = 0; i < m_catalogues.size(); ++i) {
        if (m_catalogues[i].fetch != m_heldFetch)
            continue;
        m_displayed = m_catalogues[i].selected;
        announce("keysUpdated", m_displayed);
        m_catalogues.removeAt(i);
        m_heldFetch = -1;
        return;
    }
}

void ClearModel::deliver(const Batch& batch)
{
    if (!m_isSubscribed)
        return;
    Keys updated;
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        if (samples->isEmpty() || !m_displayed.contains(samples.key()))
            continue;
        Key& key = m_displayed[samples.key()];
        key.history.clear();
        key.history.insert(samples->lastKey(), samples->last());
        updated.insert(samples.key(), key);
    }
    announce("keysUpdated", updated);
    if (m_isRecording)
        record(batch);
}

void ClearModel::startRecording()
{
    if (m_isRecording)
        return;
    m_filePosition = 0;
    const auto quoted = [](QString name) { return QString('"') + name.replace("\"", "\"\"") + QString('"'); };
    QString header = "Time";
    const QStringList columns = m_columnOrder();
    for (const QString& name : columns)
        header += ';' + quoted(name);
    write((header + '\n').toUtf8());
    m_origin = 0.0;
    setRecording(true);
    Batch newest;
    for (auto key = m_displayed.cbegin(); key != m_displayed.cend(); ++key) {
        newest[key.key()] = Samples();
        if (!key->history.isEmpty())
            newest[key.key()].insert(key->history.lastKey(), key->history.last());
    }
    record(newest);
}

void ClearModel::record(const Batch& batch)
{
    QMap<double, QVector<QString>> rows;
    const QStringList columns = m_columnOrder();
    for (int column = 0; column < columns.size(); ++column) {
        const Samples samples = batch.value(columns[column]);
        for (auto sample = samples.cbegin(); sample != samples.cend(); ++sample) {
            if (!rows.contains(sample.key()))
                rows.insert(sample.key(), QVector<QString>(columns.size()));
            QString cell = sample.value().toString();
            const int type = sample.value().userType();
            if (type != QMetaType::UnknownType && type != QMetaType::Bool && type != QMetaType::Int &&
                type != QMetaType::Double && type != QMetaType::LongLong)
                cell = '"' + cell.replace("\"", "\"\"") + '"';
            rows[sample.key()][column] = cell;
        }
    }
    if (m_origin == 0.0 && !rows.isEmpty())
        m_origin = rows.firstKey();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        QString line = QString::number(row.key() - m_origin, 'g', 6);
        for (const QString& cell : row.value())
            line += ';' + cell;
        write((line + '\n').toUtf8());
    }
}

void ClearModel::write(const QByteArray& bytes)
{
    m_file.replace(m_filePosition, bytes.size(), bytes);
    m_filePosition += bytes.size();
}

void ClearModel::stopRecording()
{
    if (!m_isRecording)
        return;
    setRecording(false);
    m_origin = 0.0;
}

void ClearModel::setRecording(bool isRecording)
{
    m_isRecording = isRecording;
    note(isRecording ? "recording true" : "recording false");
}

void ClearModel::dropRecordFile()
{
    m_file.clear();
}

} // namespace Velk
