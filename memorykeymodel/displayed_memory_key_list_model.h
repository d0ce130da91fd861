#ifndef MEMORYKEYMODEL_DISPLAYED_MEMORY_KEY_LIST_MODEL_H
#define MEMORYKEYMODEL_DISPLAYED_MEMORY_KEY_LIST_MODEL_H

#include <memorykeymodel/displayed_memory_key.h>
#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memorykeymodel_export.h>

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QTemporaryFile>
#include <QVariant>

#include <memory>

namespace Velk {

class BatchMatcher;
class ConnectionManager;
class MemoryKeyListModel;
class NewestValues;

/// The displayed key set: the keys that the user watches on the connected robot, each with its newest value.
///
/// It follows its connection manager for life and keeps its keys across disconnections: on every connection it watches
/// them again and learns their natures from a catalogue of its own. It starts the robot's watcher when keys
/// are added and takes in the batches that the robot delivers; while recording it writes every delivered sample of the
/// displayed keys to a temporary file that the application takes afterwards (docs/record-file.md).
///
/// Owned by its connection manager. Everything runs, and every signal arrives, on that object's thread. Nothing throws:
/// what goes wrong is told by error(). A slot of any signal may call any operation here, and may delete the model.
class MEMORYKEYMODEL_EXPORT DisplayedMemoryKeyListModel : public QObject
{
    Q_OBJECT

public:
    /// Becomes a Qt child of the connection manager. Nothing is displayed, watched or asked yet.
    explicit DisplayedMemoryKeyListModel(ConnectionManager* connectionManager);

    ConnectionManager* connectionManager();
    /// Asks the connection manager, every time.
    bool isRobotConnected();

    /// The displayed keys.
    QSet<MemoryKey> keys() const;
    /// The displayed keys with their display state and newest values: a copy, which later changes do not touch.
    QSet<DisplayedMemoryKey> displayedKeys() const;
    /// Displays the keys that are not displayed yet and watches them with samplingPeriod(); starts the watcher when
    /// any key is displayed then, also when none was added. Without a memory service the keys are displayed and watched
    /// from the next connection on. Emits keysAdded() at the end.
    void addKeys(const QSet<MemoryKey>& keys);
    /// Takes the keys off display and out of the selection, and ends their subscriptions, also of names that are not
    /// displayed; stops the watcher when nothing is displayed then. Emits keysRemoved() at the end.
    void removeKeys(const QSet<MemoryKey>& keys);

    /// The application's selection among the displayed keys, as it was when it was set. A key that the robot connection
    /// dropped from display stays selected until it is removed or another selection is set.
    QSet<MemoryKey> selectedKeys() const;
    /// Selects the displayed keys that are named in `keys` and no others; names that are not displayed are ignored.
    /// Emits nothing.
    void setSelectedKeys(const QSet<MemoryKey>& keys);

    /// Starts the robot's watcher, with samplingPeriod(), or with each key's own watch period when `ownPeriods` is
    /// true. Values are delivered every samplingPeriod(), not more often than every 200 ms. Nothing when the watcher
    /// runs; error() without a robot or a memory service.
    ///
    /// A lost connection stops the watcher. A new one does not start it: call this, or addKeys().
    void startWatcher(bool ownPeriods);
    /// Stops the robot's watcher; nothing when it does not run.
    void stopWatcher();

    /// Milliseconds between two samples of a key; 1000 at first.
    int samplingPeriod() const;
    /// The limits of setSamplingPeriod(), in milliseconds: 10 on a robot with real-time sampling and 200 on any other,
    /// to 9999990. A robot with a higher minimum does not change a period that was chosen earlier.
    int minSamplingPeriod() const;
    int maxSamplingPeriod() const;
    /// Asks for a new period in milliseconds, kept within the limits. Emits sampligPeriodUpdated() when a robot was
    /// told; nothing when the period is in force already. Without a robot it holds from the next startWatcher() on.
    void setSamplingPeriod(int period);

    /// Opens the record file, writes its header and the newest known values, and records every batch from then on.
    /// A file that was not taken is used again, and not emptied. Emits recording(), or error() when the file cannot
    /// be opened or written; nothing when a recording runs.
    void startRecording();
    /// Closes the record file and emits recording(); nothing when no recording runs.
    void stopRecording();
    bool isRecording();
    /// Hands the record file over: null when there is none. Stop the recording first: a running one ends with an
    /// error() at its next row. The file stays a Qt child of the model, and is removed from disk when it is destroyed:
    /// give it another parent and call setAutoRemove(false) to keep it. Its error() tells whether closing could write
    /// all.
    QTemporaryFile* takeRecordFile();

Q_SIGNALS:
    /// The connection came up and the keys are watched again (true), or it went away and the watcher and the
    /// recording have stopped (false). Emitted for every signal of the connection manager, also for a repeated one.
    void robotConnected(bool connected);
    /// Ends every addKeys(): the keys that were added, possibly none.
    void keysAdded(QSet<DisplayedMemoryKey> key);
    /// Ends every removeKeys(): the keys that were removed, as they were stored, possibly none.
    void keysRemoved(QSet<DisplayedMemoryKey> key);
    /// After every batch: the keys that got a value, possibly none; the record rows of the batch are written after the
    /// signal. Also after a connection, when the natures are known: all keys, in their initial display state.
    void keysUpdated(QSet<DisplayedMemoryKey> key);
    /// minSamplingPeriod() changed.
    void minSamplingPeriodUpdated(int period);
    /// The robot was given a new sampling period. (The spelling is part of the interface.)
    void sampligPeriodUpdated(int period);
    /// isRecording() changed.
    void recording(bool isRecording);
    /// Something went wrong: a short title, and a sentence that says what happened; both translated.
    void error(const QString& type, const QString& message);

private Q_SLOTS:
    void onConnectionStateChanged();
    void onDataGathered(const QMap<QString, QMap<double, QVariant>>& data);
    void gotRealTimeSupported(bool supported);
    void onKeyListModelReady();

private:
    class MEMORYKEYMODEL_NO_EXPORT Recording;

    void xSetMinSamplingPeriod(int period);
    void xSetRecording(bool isRecording);
    void recordData(const QMap<QString, QMap<double, QVariant>>& data);
    std::shared_ptr<BatchMatcher> batchMatcher();
    void displayedKeysHaveChanged();

    ConnectionManager* m_connectionManager;
    // Guarded: a child of the connection manager, so others can delete it.
    QPointer<MemoryKeyListModel> m_keyListModel;
    QSet<DisplayedMemoryKey> m_displayedKeys;
    QSet<DisplayedMemoryKey> m_selectedKeys;
    int m_samplingPeriod = 1000;
    int m_minSamplingPeriod = 200;
    int m_maxSamplingPeriod = 9999990;
    bool m_isWatcherRunning = false;
    bool m_isRecording = false;
    // Shared pointers, because the destructor is implicit: a std::unique_ptr would need the complete types here.
    std::shared_ptr<Recording> m_recording;
    // Valid for the present displayed keys: null after a change, until the next batch.
    std::shared_ptr<BatchMatcher> m_batchMatcher;
    std::shared_ptr<NewestValues> m_newestValues;
};

} // namespace Velk

#endif
