// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

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
/// It follows its connection manager as long as it lives and keeps its keys across disconnections. On every connection
/// it watches the keys again and gets their natures from a catalogue of its own. It starts the robot's watcher when
/// keys are added, and stores the newest value of each key from the batches that the robot delivers. While recording it
/// writes every delivered sample of the displayed keys to a temporary file, which the application takes afterwards
/// (docs/record-file.md).
///
/// After a connection the set rebuilds its keys from those that were displayed when the connection came up. Until the
/// first keysUpdated() of the connection reports the rebuilt set, it is too early for changes: a key that is added is
/// dropped from the set again and stays subscribed on the robot, and a key that is removed comes back. Neither has a
/// signal of its own. Add keys before the connection, or when the set is rebuilt:
///
///     QObject::connect(&model, &DisplayedMemoryKeyListModel::keysUpdated, &model, [&] {
///         if (model.keys().isEmpty()) // nothing was displayed before the connection
///             model.addKeys(keys);
///     });
///
/// RobotSession (session/robot_session.h) makes changes at any time and starts the watcher on every connection.
///
/// Owned by its connection manager. Everything runs, and every signal arrives, on that object's thread. Nothing throws:
/// errors are reported by error(). A slot of any signal may call any operation here, and may delete the model.
class MEMORYKEYMODEL_EXPORT DisplayedMemoryKeyListModel : public QObject
{
    Q_OBJECT

public:
    /// Becomes a Qt child of the connection manager. Displays no key and calls nothing of the robot.
    explicit DisplayedMemoryKeyListModel(ConnectionManager* connectionManager);

    ConnectionManager* connectionManager();
    /// The present answer of the connection manager.
    bool isRobotConnected();

    /// The displayed keys.
    QSet<MemoryKey> keys() const;
    /// The displayed keys with their display state and newest values: a copy, which later changes do not touch.
    QSet<DisplayedMemoryKey> displayedKeys() const;
    /// Displays the keys that are not displayed yet and watches them with samplingPeriod(). Then starts the watcher if
    /// any key is displayed, even if none was added. Without a memory service the keys are displayed now and watched
    /// from the next connection on, and startWatcher() emits its error(). Until the first keysUpdated() of a connection
    /// it is too early: see above. Emits keysAdded() at the end.
    void addKeys(const QSet<MemoryKey>& keys);
    /// Removes the keys from the displayed keys and from the selection, and ends their subscriptions, including those
    /// of names that are not displayed. Stops the watcher when no key is displayed any longer. Emits keysRemoved() at
    /// the end.
    void removeKeys(const QSet<MemoryKey>& keys);

    /// The application's selection among the displayed keys, with the natures of the moment when it was set. A key that
    /// a connection removes from the displayed keys stays selected until removeKeys() or another selection.
    QSet<MemoryKey> selectedKeys() const;
    /// Selects the displayed keys whose names are in `keys`, and no others. Names that are not displayed are ignored.
    /// Emits nothing.
    void setSelectedKeys(const QSet<MemoryKey>& keys);

    /// Starts the robot's watcher, with samplingPeriod(), or with each key's own watch period if `ownPeriods` is true.
    /// The robot delivers every samplingPeriod(), but at most every 200 ms. Does nothing when the watcher runs. Emits
    /// error() without a robot or a memory service.
    ///
    /// A lost connection stops the watcher, and a new one does not start it: call this function or addKeys() again.
    void startWatcher(bool ownPeriods);
    /// Stops the robot's watcher. Does nothing when it does not run.
    void stopWatcher();

    /// Milliseconds between two samples of a key; 1000 by default.
    int samplingPeriod() const;
    /// The limits of setSamplingPeriod() in milliseconds. The minimum is 10 on a robot with real-time sampling and 200
    /// on any other; the maximum is 9999990. A higher minimum of another robot does not change a period that was set
    /// earlier.
    int minSamplingPeriod() const;
    int maxSamplingPeriod() const;
    /// Sets the period in milliseconds, bounded by the limits. Sends it to the robot and emits sampligPeriodUpdated().
    /// Without a robot or a memory service it is only stored, for the next startWatcher(). Does nothing when it is the
    /// present period.
    void setSamplingPeriod(int period);

    /// Opens the record file, writes its header and the newest known values, and records every later batch. A file that
    /// was not taken is used again, and not emptied. Emits recording(), or error() when the file cannot be opened or
    /// written. Does nothing when a recording runs.
    void startRecording();
    /// Closes the record file and emits recording(). Does nothing when no recording runs.
    void stopRecording();
    bool isRecording();
    /// Returns the record file and forgets it; null when there is none. Stop the recording first: a running one ends
    /// with an error() at its next row. The file stays a Qt child of the model and is removed from disk when it is
    /// destroyed. To keep it, give it another parent and call setAutoRemove(false). QTemporaryFile::error() shows
    /// whether closing the file wrote all its data.
    QTemporaryFile* takeRecordFile();

Q_SIGNALS:
    /// True: the robot is connected and the keys are watched again. False: it is not connected, and the watcher and the
    /// recording have stopped. Emitted for every signal of the connection manager, also for a repeated one, but not for
    /// a connection without a memory service, which changes nothing.
    void robotConnected(bool connected);
    /// The end of every addKeys(): the keys that were added, possibly none.
    void keysAdded(QSet<DisplayedMemoryKey> key);
    /// The end of every removeKeys(): the keys that were removed, as they were stored, possibly none.
    void keysRemoved(QSet<DisplayedMemoryKey> key);
    /// After every batch: the keys that got a value, possibly none. The rows of the batch are recorded after the
    /// signal. Also after a connection, when the natures are known: all keys, in their initial display state.
    void keysUpdated(QSet<DisplayedMemoryKey> key);
    /// minSamplingPeriod() changed.
    void minSamplingPeriodUpdated(int period);
    /// A new sampling period was sent to the robot. (The spelling is part of the interface.)
    void sampligPeriodUpdated(int period);
    /// isRecording() changed.
    void recording(bool isRecording);
    /// An error: a short title, and a sentence that says what happened. Both are translated.
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
