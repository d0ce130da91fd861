// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_RECORDING_CONTROL_H
#define APPS_VELK_WATCH_RECORDING_CONTROL_H

#include <recordfile/record_file_saver.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

namespace Velk {

class DisplayedMemoryKeyListModel;
class RecordedRows;
class RobotSession;

/// One recording after the other: started, stopped, kept, and saved or discarded.
///
/// A recording that has ended, for whatever reason, is taken from the displayed key set at once. So it outlives the
/// connection and the session, and the next recording gets a file of its own. It must be saved or discarded before
/// that.
class RecordingControl : public QObject
{
    Q_OBJECT

public:
    enum State
    {
        Idle,
        Recording,
        Unsaved ///< ended, and neither saved nor discarded
    };

    explicit RecordingControl(QObject* parent = nullptr);
    ~RecordingControl() override;

    /// Records from the robot of `session` from now on; null for none. A recording of the former one is ended, and
    /// kept. Set another session before this one is deleted.
    void setSession(RobotSession* session);

    State state() const;
    /// The rows that were recorded: counted in the values that came in while it runs, and in the file afterwards. 0
    /// when Idle.
    qint64 rows() const;
    /// Since the recording started; of an ended one, how long it ran.
    qint64 elapsedMs() const;
    /// Where an unsaved recording is.
    QString temporaryPath() const { return m_saver->temporaryPath(); }
    /// State, time and rows for a status bar.
    QString text() const;

    /// Starts a recording. Nothing when one runs, or when one is unsaved: it would be lost. Failures are
    /// reported by RobotSession::failed().
    void start();
    /// Ends the recording; nothing when none runs.
    void stop();

    /// Saves the unsaved recording. It stays unsaved unless the result isSaved().
    RecordSaveResult save(const QString& fileName, RecordFileSaver::ExistingFile existing);
    /// Removes the unsaved recording from disk.
    void discard();

Q_SIGNALS:
    /// state() changed.
    void stateChanged(Velk::RecordingControl::State state);
    /// rows() changed while recording.
    void rowsChanged();
    /// Rows were lost, or the recording ended by itself: a title and a sentence for the user.
    void message(const QString& title, const QString& message);

private:
    void onRecording(bool isRecording);
    void take();

    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    std::unique_ptr<RecordedRows> m_recordedRows; // of the displayed keys
    std::unique_ptr<RecordFileSaver> m_saver;     // never null
    QElapsedTimer m_clock;
    qint64 m_durationMs = 0;
    bool m_isRecording = false;
    bool m_isStopping = false;
};

} // namespace Velk

#endif
