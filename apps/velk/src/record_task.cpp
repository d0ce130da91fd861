// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "record_task.h"

#include "console.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/recorded_rows.h>

#include <QLocale>
#include <QTemporaryFile>

#include <utility>

namespace Velk {

namespace {

constexpr int progressPeriodMs = 200;

QString shownBytes(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

RecordTask::RecordTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs,
                       const DisplayedKeysOptions& options, const QString& destination,
                       RecordFileSaver::ExistingFile existing)
    : DisplayedKeysTask(std::move(link), console, timeoutMs, options)
    , m_destination(destination)
    , m_existing(existing)
{
    m_progress.setInterval(progressPeriodMs);
    connect(&m_progress, &QTimer::timeout, this, &RecordTask::showProgress);
}

RecordTask::~RecordTask() = default;

void RecordTask::begin(const QVector<MemoryKey>& keys)
{
    m_keyCount = keys.size();
    // Before the keys: the connection may be lost again in any call below.
    connect(&displayedKeys(), &DisplayedMemoryKeyListModel::recording, this, [this](bool isRecording) {
        if (!isRecording)
            onRecordingStopped();
    });
    connect(&displayedKeys(), &DisplayedMemoryKeyListModel::error, this, [this] {
        if (displayedKeys().isRecording() && !m_isStopping)
            m_status = RecordingIncomplete;
    });
    if (console().isMessageTerminal())
        m_rows = std::make_unique<RecordedRows>(&displayedKeys(), session().samples());
    session().watch(QSet<MemoryKey>(keys.cbegin(), keys.cend()));
    displayedKeys().startRecording();
    if (!displayedKeys().isRecording()) {
        if (!m_isStopping)
            finish(RecordingNotSaved); // the session has reported the reason
        return;
    }
    report(QStringLiteral("Recording %1 keys every %2 ms for %3; Ctrl-C ends it.")
               .arg(m_keyCount)
               .arg(displayedKeys().samplingPeriod())
               .arg(m_destination));
    m_elapsed.start();
    workFor(options().forMs);
    if (m_rows) {
        m_progress.start();
        showProgress();
    }
}

void RecordTask::stop(int status)
{
    if (!isWorking())
        finish(status);
    // Otherwise without a recording: it is being saved, and velk ends when it is.
    if (!displayedKeys().isRecording())
        return;
    m_isStopping = true;
    m_status = status;
    displayedKeys().stopRecording();
}

void RecordTask::onRecordingStopped()
{
    m_seconds = m_elapsed.isValid() ? m_elapsed.elapsed() / 1000.0 : 0.0;
    if (!m_isStopping && m_status == Success)
        m_status = link().isConnected() ? RecordingIncomplete : ConnectionLost;
    m_isStopping = true;
    m_progress.stop();
    // Not from inside this signal: the displayed key set has more to do with the batch that could not be written.
    QMetaObject::invokeMethod(
        this, [this] { save(); }, Qt::QueuedConnection);
}

void RecordTask::save()
{
    if (isFinished() || m_isSaved)
        return;
    m_isSaved = true;
    RecordFileSaver saver(displayedKeys().takeRecordFile());
    const RecordSaveResult result = saver.save(m_destination, m_existing);
    if (result.outcome != RecordSaveResult::Saved)
        report(result.title, result.message);
    if (result.isSaved())
        report(QStringLiteral("%1 rows of %2 keys in %3 s saved in %4 (%5).")
                   .arg(saver.rows())
                   .arg(m_keyCount)
                   .arg(m_seconds, 0, 'f', 1)
                   .arg(m_destination, shownBytes(saver.bytes())));
    if (m_status == ConnectionLost)
        report(result.isSaved() ? QStringLiteral("The connection was lost: the recording ends there.")
                                : QStringLiteral("The connection was lost while recording."));
    if (m_status == RecordingIncomplete && result.outcome == RecordSaveResult::Saved)
        report(QStringLiteral("Recording incomplete"),
               QStringLiteral("what came after these rows could not be written and is lost."));

    int status = m_status;
    if (!result.isSaved())
        status = RecordingNotSaved;
    else if (result.outcome == RecordSaveResult::SavedIncomplete)
        status = RecordingIncomplete;
    finish(status);
}

void RecordTask::showProgress()
{
    // The record file is a child of the displayed key set. Not its size: size() writes the buffer, and a write error
    // would be reported by the file and not by the recording.
    const auto* file = displayedKeys().findChild<QTemporaryFile*>(QString(), Qt::FindDirectChildrenOnly);
    console().setStatusLine(QStringLiteral("recording %1 s, %2 rows, %3 keys, %4")
                                .arg(m_elapsed.elapsed() / 1000.0, 0, 'f', 1)
                                .arg(m_rows->count())
                                .arg(m_keyCount)
                                .arg(shownBytes(file ? file->pos() : 0)));
}

} // namespace Velk
