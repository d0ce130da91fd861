#include "record_task.h"

#include "console.h"

#include <connections/link/robot_link.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/memory_interface.h>

#include <QLocale>
#include <QTemporaryFile>

namespace Velk {

namespace {

constexpr int progressPeriodMs = 200;

QString shownBytes(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

RecordTask::RecordTask(RobotLink& link, Console& console, int timeoutMs, const DisplayedKeysOptions& options,
                       const QString& destination, RecordFileSaver::ExistingFile existing)
    : DisplayedKeysTask(link, console, timeoutMs, options)
    , m_destination(destination)
    , m_existing(existing)
{
    m_end.setSingleShot(true);
    m_end.setTimerType(Qt::PreciseTimer);
    connect(&m_end, &QTimer::timeout, this, [this] { stop(Success); });
    m_progress.setInterval(progressPeriodMs);
    connect(&m_progress, &QTimer::timeout, this, &RecordTask::showProgress);
}

void RecordTask::interrupt(int signalNumber)
{
    if (model().isRecording())
        stop(hasEnd() ? interruptedBy(signalNumber) : int(Success));
    else if (!isWorking())
        finish(interruptedBy(signalNumber));
    // Otherwise the recording is being saved, and velk ends when it is.
}

void RecordTask::begin(const QVector<MemoryKey>& keys)
{
    for (const MemoryKey& key : keys)
        m_names.insert(key.name());
    // Before the keys: the connection may be lost again in any call below.
    connect(&model(), &DisplayedMemoryKeyListModel::recording, this, [this](bool isRecording) {
        if (!isRecording)
            onRecordingStopped();
    });
    model().addKeys(QSet<MemoryKey>(keys.cbegin(), keys.cend()));
    model().startRecording();
    if (!model().isRecording()) {
        if (!m_isStopping)
            finish(RecordingNotSaved); // the model has told why
        return;
    }
    tell(QStringLiteral("Recording %1 keys every %2 ms for %3; Ctrl-C ends it.")
             .arg(m_names.size())
             .arg(model().samplingPeriod())
             .arg(m_destination));
    m_elapsed.start();
    if (hasEnd())
        m_end.start(options().forMs);
    if (console().isMessageTerminal()) {
        if (const boost::shared_ptr<MemoryInterface> memory = link().memoryInterface())
            connect(memory.get(), &MemoryInterface::dataGathered, this, &RecordTask::countRows);
        m_progress.start();
        showProgress();
    }
}

void RecordTask::onModelError(const QString& title, const QString& message)
{
    // A failed write is reported once for every row that cannot be written any more.
    const QString error = title + message;
    if (error != m_lastError)
        DisplayedKeysTask::onModelError(title, message);
    m_lastError = error;
    if (model().isRecording() && !m_isStopping)
        m_status = RecordingIncomplete;
}

void RecordTask::stop(int status)
{
    m_isStopping = true;
    m_status = status;
    model().stopRecording();
}

void RecordTask::onRecordingStopped()
{
    m_seconds = m_elapsed.isValid() ? m_elapsed.elapsed() / 1000.0 : 0.0;
    if (!m_isStopping && m_status == Success)
        m_status = link().isConnected() ? RecordingIncomplete : ConnectionLost;
    m_isStopping = true;
    m_end.stop();
    m_progress.stop();
    // Not from inside the model's signal: it has more to do with the batch that could not be written.
    QMetaObject::invokeMethod(
        this, [this] { save(); }, Qt::QueuedConnection);
}

void RecordTask::save()
{
    if (isFinished() || m_isSaved)
        return;
    m_isSaved = true;
    RecordFileSaver saver(model().takeRecordFile());
    const RecordSaveResult result = saver.save(m_destination, m_existing);
    if (result.outcome != RecordSaveResult::Saved)
        tell(result.title, result.message);
    if (result.isSaved())
        tell(QStringLiteral("%1 rows of %2 keys in %3 s saved in %4 (%5).")
                 .arg(saver.rows())
                 .arg(m_names.size())
                 .arg(m_seconds, 0, 'f', 1)
                 .arg(m_destination, shownBytes(saver.bytes())));
    if (m_status == ConnectionLost)
        tell(result.isSaved() ? QStringLiteral("The connection was lost: the recording ends there.")
                              : QStringLiteral("The connection was lost while recording."));
    if (m_status == RecordingIncomplete && result.outcome == RecordSaveResult::Saved)
        tell(QStringLiteral("Recording incomplete"),
             QStringLiteral("what came after these rows could not be written and is lost."));

    int status = m_status;
    if (!result.isSaved())
        status = RecordingNotSaved;
    else if (result.outcome == RecordSaveResult::SavedIncomplete)
        status = RecordingIncomplete;
    finish(status);
}

// Progress. The model writes a row for every time stamp of a batch.

void RecordTask::countRows(const QMap<QString, QMap<double, QVariant>>& batch)
{
    if (!model().isRecording())
        return;
    QSet<double> stamps;
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        if (!m_names.contains(samples.key()))
            continue;
        for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample)
            stamps.insert(sample.key());
    }
    m_rows += stamps.size();
}

void RecordTask::showProgress()
{
    // The record file is the model's child. Its position is asked and not its size, which would make it write its
    // buffer, and a failure would be the file's instead of the recording's.
    const auto* file = model().findChild<QTemporaryFile*>(QString(), Qt::FindDirectChildrenOnly);
    console().setStatusLine(QStringLiteral("recording %1 s, %2 rows, %3 keys, %4")
                                .arg(m_elapsed.elapsed() / 1000.0, 0, 'f', 1)
                                .arg(m_rows)
                                .arg(m_names.size())
                                .arg(shownBytes(file ? file->pos() : 0)));
}

} // namespace Velk
