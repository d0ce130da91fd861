#ifndef APPS_VELK_WATCH_RECORDING_CONTROL_H
#define APPS_VELK_WATCH_RECORDING_CONTROL_H

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <recordfile/record_file_saver.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

namespace Velk {

class MemoryInterface;

/// One recording after the other: started, stopped, kept, and saved or discarded.
///
/// A recording that has ended, for whatever reason, is taken from the model at once. So it outlives the connection and
/// the model, and the next recording gets a file of its own. It must be saved or discarded before that.
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

    /// Records from this model from now on; null for none. A recording of the former one is ended, and kept.
    void setModel(DisplayedMemoryKeyListModel* model);

    State state() const;
    /// The rows that were recorded: while it runs as counted from the values that came in, afterwards as counted in the
    /// file. 0 when Idle.
    qint64 rows() const;
    /// Since the recording started; of an ended one, how long it ran.
    qint64 elapsedMs() const;
    /// Where an unsaved recording is.
    QString temporaryPath() const { return m_saver->temporaryPath(); }
    /// State, time and rows for a status bar.
    QString text() const;

    /// Starts a recording. Nothing when one runs, or when one is unsaved: it would be lost. Failures are told by the
    /// model's error().
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
    void onBatch(const QMap<QString, QMap<double, QVariant>>& data);
    void take();

    QPointer<DisplayedMemoryKeyListModel> m_model;
    QPointer<MemoryInterface> m_memory;
    std::unique_ptr<RecordFileSaver> m_saver; // never null
    QElapsedTimer m_clock;
    qint64 m_durationMs = 0;
    qint64 m_rows = 0;
    bool m_isRecording = false;
    bool m_isStopping = false;
};

} // namespace Velk

#endif
