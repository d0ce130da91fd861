// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "recording.h"

#include <recordtext/record_lines.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <utility>

namespace Velk {

// tr() is called with the class of the model: lupdate finds no context for a plain tr() in a nested class.

DisplayedMemoryKeyListModel::Recording::Recording(DisplayedMemoryKeyListModel* model)
    : m_model(model)
{}

void DisplayedMemoryKeyListModel::Recording::start()
{
    if (m_model->m_isRecording)
        return;
    if (!m_file)
        m_file = new QTemporaryFile(QDir(QDir::tempPath()).filePath(QStringLiteral("MemoryWatcher")), m_model);
    if (!m_file->open()) {
        abandonFile(DisplayedMemoryKeyListModel::tr("Could not open temporary file for writing.\n"
                                                    "Please check your permissions for accessing %1")
                        .arg(QFileInfo(*m_file).absoluteFilePath()));
        return;
    }
    QStringList columns;
    for (const DisplayedMemoryKey& displayed : std::as_const(m_model->m_displayedKeys))
        columns << displayed.key().name();
    if (!writeLine(recordHeader(columns))) {
        abandonFile(DisplayedMemoryKeyListModel::tr("Could not write data.\n"
                                                    "Your disk may be full or inaccessible.\n"
                                                    "Please check your permissions."));
        return;
    }

    const int run = ++m_run;
    m_timeOrigin = 0.0;
    const QPointer<DisplayedMemoryKeyListModel> model(m_model);
    m_model->xSetRecording(true);
    if (!model || !model->m_isRecording || m_run != run)
        return; // a slot ended this recording: its initial values have no file to go to

    GatheredData newestValues;
    for (const DisplayedMemoryKey& displayed : std::as_const(m_model->m_displayedKeys)) {
        const Samples history = displayed.valueHistory();
        if (!history.isEmpty())
            newestValues[displayed.key().name()].insert(history.lastKey(), history.last());
    }
    m_model->recordData(newestValues);
}

void DisplayedMemoryKeyListModel::Recording::write(const std::vector<BatchMatcher::Match>& matches)
{
    SamplesByColumn samples(std::size_t(m_model->m_displayedKeys.size()), nullptr);
    for (const BatchMatcher::Match& match : matches)
        samples[std::size_t(match.place)] = match.samples;
    const RecordCells cells = recordCells(samples);
    if (m_timeOrigin == 0.0 && !cells.empty())
        m_timeOrigin = cells.front().time;

    const int run = m_run;
    const QPointer<DisplayedMemoryKeyListModel> model(m_model);
    std::string line; // one for all rows: its memory is allocated once
    for (auto row = cells.cbegin(); row != cells.cend();) {
        const auto rowEnd = endOfRow(row, cells.cend());
        makeRecordLine(&line, row->time - m_timeOrigin, row, rowEnd, int(samples.size()));
        row = rowEnd;
        if (writeLine(line))
            continue;
        reportFailedWrite();
        if (model)
            stop();
        // The remaining rows fail too, each with a report of its own: no row is lost without one. They belong to the
        // recording that has ended, so a recording that a slot has started meanwhile does not get them.
        if (!model || m_run != run)
            return;
    }
}

void DisplayedMemoryKeyListModel::Recording::stop()
{
    if (!m_model->m_isRecording)
        return;
    if (m_file)
        m_file->close();
    // Before the signal: a recording that a slot starts has a time origin of its own.
    m_timeOrigin = 0.0;
    m_model->xSetRecording(false);
}

QTemporaryFile* DisplayedMemoryKeyListModel::Recording::takeFile()
{
    QTemporaryFile* const file = m_file;
    m_file = nullptr;
    return file;
}

bool DisplayedMemoryKeyListModel::Recording::writeLine(const std::string& line)
{
    return m_file && m_file->write(line.data(), qint64(line.size())) == qint64(line.size());
}

void DisplayedMemoryKeyListModel::Recording::abandonFile(const QString& message)
{
    const QPointer<DisplayedMemoryKeyListModel> model(m_model);
    const QPointer<QTemporaryFile> file = m_file;
    emit m_model->error(DisplayedMemoryKeyListModel::tr("Memory recording"), message);
    // Not deleted: a file that a slot has taken, which belongs to the application, and a file that a slot records to.
    if (model && file && file == m_file && !model->m_isRecording)
        delete file.data();
}

void DisplayedMemoryKeyListModel::Recording::reportFailedWrite()
{
    // A slot may show the error in an event loop of its own. No batch may arrive meanwhile.
    const QPointer<ConnectionManager> connectionManager = m_model->m_connectionManager;
    const QPointer<MemoryInterface> blockedMemory = connectionManager->memoryInterface().get();
    if (blockedMemory)
        blockedMemory->blockSignals(true);

    emit m_model->error(DisplayedMemoryKeyListModel::tr("Memory recording"),
                        DisplayedMemoryKeyListModel::tr("Could not write data.\n"
                                                        "Your disk may be full or inaccessible.\n"
                                                        "Please move your recorded data to another disk."));
    if (connectionManager) {
        if (const boost::shared_ptr<MemoryInterface> memory = connectionManager->memoryInterface())
            memory->blockSignals(false);
    }
    // The connection may have another interface by now. The blocked one must not stay mute.
    if (blockedMemory)
        blockedMemory->blockSignals(false);
}

} // namespace Velk
