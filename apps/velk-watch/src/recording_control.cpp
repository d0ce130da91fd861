// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "recording_control.h"

#include "connection_status.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/recorded_rows.h>
#include <session/robot_session.h>

#include <limits>

namespace Velk {

namespace {

// The number that the plural of a text follows: Qt takes an int.
int pluralNumber(qint64 count)
{
    return int(qMin<qint64>(count, std::numeric_limits<int>::max()));
}

} // namespace

RecordingControl::RecordingControl(QObject* parent)
    : QObject(parent)
    , m_saver(std::make_unique<RecordFileSaver>(nullptr))
{}

RecordingControl::~RecordingControl() = default;

void RecordingControl::setSession(RobotSession* session)
{
    if (m_displayedKeys) {
        stop();
        m_displayedKeys->disconnect(this);
    }
    m_recordedRows.reset();
    m_displayedKeys = session ? session->displayedKeys() : nullptr;
    if (!m_displayedKeys)
        return;
    // The counter first: it has counted the first rows when a recording is reported.
    m_recordedRows = std::make_unique<RecordedRows>(m_displayedKeys, session->samples());
    connect(m_recordedRows.get(), &RecordedRows::countChanged, this, &RecordingControl::rowsChanged);
    connect(m_displayedKeys, &DisplayedMemoryKeyListModel::recording, this, &RecordingControl::onRecording);
}

RecordingControl::State RecordingControl::state() const
{
    if (m_isRecording)
        return Recording;
    return m_saver->hasRecording() ? Unsaved : Idle;
}

qint64 RecordingControl::rows() const
{
    if (m_isRecording)
        return m_recordedRows->count();
    return m_saver->hasRecording() ? m_saver->rows() : 0;
}

qint64 RecordingControl::elapsedMs() const
{
    return m_isRecording ? m_clock.elapsed() : m_durationMs;
}

QString RecordingControl::text() const
{
    const QString duration = ConnectionStatus::durationText(elapsedMs() / 1000);
    // The locale groups the digits; the plural follows the number.
    const QString rowsText = tr("%L1 row(s)", nullptr, pluralNumber(rows())).arg(rows());
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
    if (m_displayedKeys && state() == Idle)
        m_displayedKeys->startRecording();
}

void RecordingControl::stop()
{
    if (!m_displayedKeys)
        return;
    m_isStopping = true;
    m_displayedKeys->stopRecording();
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
    emit stateChanged(state());
}

void RecordingControl::take()
{
    m_saver = std::make_unique<RecordFileSaver>(m_displayedKeys->takeRecordFile());
    const QString rowsText =
        tr("%L1 row(s) were recorded.", nullptr, pluralNumber(m_saver->rows())).arg(m_saver->rows());
    if (m_saver->isIncomplete())
        emit message(tr("Recording incomplete"),
                     tr("Not all values could be written to %1: %2\nSave what there is, and make room on that disk.")
                         .arg(m_saver->temporaryPath(), rowsText));
    else if (!m_isStopping)
        emit message(tr("Recording ended"), tr("The recording ended because the connection was lost or the file could "
                                               "not be written. %1 Save them now.")
                                                .arg(rowsText));
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
