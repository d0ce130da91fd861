#include "recording_control.h"

#include "connection_status.h"

#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QLocale>
#include <QSet>

#include <limits>

namespace Velk {

namespace {

// The rows that a batch makes: one for each time stamp at which a displayed key has a sample.
qint64 rowsOf(const QMap<QString, QMap<double, QVariant>>& batch, const QSet<MemoryKey>& displayedKeys)
{
    QSet<double> times;
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        if (!displayedKeys.contains(MemoryKey(samples.key(), QString(), UnknownNature)))
            continue;
        for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample)
            times.insert(sample.key());
    }
    return times.size();
}

} // namespace

RecordingControl::RecordingControl(QObject* parent)
    : QObject(parent)
    , m_saver(std::make_unique<RecordFileSaver>(nullptr))
{}

RecordingControl::~RecordingControl() = default;

void RecordingControl::setModel(DisplayedMemoryKeyListModel* model)
{
    if (m_model) {
        stop();
        disconnect(m_model, nullptr, this, nullptr);
    }
    m_model = model;
    if (m_model)
        connect(m_model, &DisplayedMemoryKeyListModel::recording, this, &RecordingControl::onRecording);
}

RecordingControl::State RecordingControl::state() const
{
    if (m_isRecording)
        return Recording;
    return m_saver->hasRecording() ? Unsaved : Idle;
}

qint64 RecordingControl::rows() const
{
    return state() == Unsaved ? m_saver->rows() : m_rows;
}

qint64 RecordingControl::elapsedMs() const
{
    return m_isRecording ? m_clock.elapsed() : m_durationMs;
}

QString RecordingControl::text() const
{
    const QString duration = ConnectionStatus::durationText(elapsedMs() / 1000);
    // Counts are grouped as the locale does; the plural is that of the number itself.
    const int count = int(qMin<qint64>(rows(), std::numeric_limits<int>::max()));
    const QString rowsText = tr("%L1 row(s)", nullptr, count).arg(rows());
    switch (state()) {
    case Idle:
        return tr("Not recording");
    case Recording:
        return tr("Recording for %1, %2").arg(duration, rowsText);
    case Unsaved:
        return tr("Not saved: %1, %2").arg(duration, rowsText);
    }
    return {};
}

void RecordingControl::start()
{
    if (m_model && state() == Idle)
        m_model->startRecording();
}

void RecordingControl::stop()
{
    if (!m_model)
        return;
    m_isStopping = true;
    m_model->stopRecording();
    m_isStopping = false;
}

void RecordingControl::onRecording(bool isRecording)
{
    if (isRecording == m_isRecording)
        return;
    m_isRecording = isRecording;
    if (!isRecording) {
        m_durationMs = m_clock.elapsed();
        take();
        emit stateChanged(state());
        return;
    }

    m_clock.start();
    // The newest known values are written at their own times, before the first batch.
    QSet<double> times;
    const QSet<DisplayedMemoryKey> keys = m_model->displayedKeys();
    for (const DisplayedMemoryKey& key : keys) {
        const QMap<double, QVariant> history = key.valueHistory();
        if (!history.isEmpty())
            times.insert(history.lastKey());
    }
    m_rows = times.size();
    m_memory = m_model->connectionManager()->memoryInterface().get();
    if (m_memory)
        connect(m_memory, &MemoryInterface::dataGathered, this, &RecordingControl::onBatch, Qt::UniqueConnection);
    emit stateChanged(state());
}

void RecordingControl::onBatch(const QMap<QString, QMap<double, QVariant>>& data)
{
    if (!m_isRecording || !m_model)
        return;
    const qint64 rows = rowsOf(data, m_model->keys());
    m_rows += rows;
    if (rows > 0)
        emit rowsChanged();
}

void RecordingControl::take()
{
    if (m_memory)
        disconnect(m_memory, nullptr, this, nullptr);
    m_memory = nullptr;
    m_saver = std::make_unique<RecordFileSaver>(m_model->takeRecordFile());
    m_rows = 0;

    const QString rowsText = tr("%n row(s) were recorded.", nullptr, int(m_saver->rows()));
    if (m_saver->isIncomplete())
        emit message(tr("Recording incomplete"),
                     tr("Not all values could be written to %1: %2\nSave what there is, and make room on that disk.")
                         .arg(m_saver->temporaryPath(), rowsText));
    else if (!m_isStopping)
        emit message(
            tr("Recording ended"),
            tr("The recording ended because the connection or the disk gave out. %1 Save them now.").arg(rowsText));
}

RecordSaveResult RecordingControl::save(const QString& fileName, RecordFileSaver::ExistingFile existing)
{
    const State before = state();
    const RecordSaveResult result = m_saver->save(fileName, existing);
    if (state() != before)
        emit stateChanged(state());
    return result;
}

void RecordingControl::discard()
{
    const State before = state();
    m_saver->discard();
    if (state() != before)
        emit stateChanged(state());
}

} // namespace Velk
