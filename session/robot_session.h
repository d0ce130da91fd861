// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef SESSION_ROBOT_SESSION_H
#define SESSION_ROBOT_SESSION_H

#include <connections/link/robot_link.h>
#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <session/session_export.h>

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>

#include <memory>

namespace Velk {

class DisplayedMemoryKey;
class DisplayedMemoryKeyListModel;
class SampleStream;

/// A robot as an application works with it: its link, the displayed key set, a catalogue of each connection, and the
/// stream of all samples.
///
///     RobotSession session(std::move(link));
///     session.setWantedPeriod(100);
///     session.watch({MemoryKey("Arm/Position", QString(), UnknownNature)});
///     session.link()->open();
///
/// Keys can be watched and unwatched, and a period can be asked for, in any state of the connection. When the robot is
/// connected, the displayed key set rebuilds its keys, and changes made until then are lost in it. The session keeps
/// such changes and applies them after the rebuild. After every reconnection the same keys are watched with the same
/// period, and the watcher runs again. Keys may also be added to the displayed key set and removed from it directly;
/// its watcher and its sampling period are the session's.
///
/// Everything runs, and every signal arrives, on the session's thread, which is the link's. Nothing blocks, nothing
/// throws. A slot may call any operation; it must not delete the session, but may call deleteLater().
class SESSION_EXPORT RobotSession : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool ready READ isReady NOTIFY readyChanged)
    Q_PROPERTY(int wantedPeriod READ wantedPeriod WRITE setWantedPeriod NOTIFY periodChanged)
    Q_PROPERTY(int grantedPeriod READ grantedPeriod NOTIFY periodChanged)
    Q_PROPERTY(bool watcherWanted READ isWatcherWanted WRITE setWatcherWanted NOTIFY watcherChanged)
    Q_PROPERTY(bool watcherRunning READ isWatcherRunning NOTIFY watcherChanged)

public:
    enum Use
    {
        ListKeys, ///< the catalogue and the samples only: there is no displayed key set, and no key can be watched
        WatchKeys
    };

    /// `link` is not null, and not open yet.
    explicit RobotSession(std::unique_ptr<RobotLink> link, Use use = WatchKeys, QObject* parent = nullptr);
    /// Closes the link, without a signal.
    ~RobotSession() override;

    /// To be opened and closed by the application. Valid as long as the session.
    RobotLink* link() const { return m_link.get(); }
    /// Null in a session that only lists keys; otherwise valid as long as the session.
    DisplayedMemoryKeyListModel* displayedKeys() const { return m_displayedKeys; }
    /// All batches of the robot. Valid as long as the session.
    SampleStream* samples() const { return m_samples; }

    /// True when the catalogue, the natures of the displayed keys and the granted period of this connection are known.
    bool isReady() const { return m_isReady; }

    /// The newest catalogue that became ready, of this connection or of one before; null before the first one.
    MemoryKeyListModel* catalogue() const;
    /// Whether a catalogue is fetched on every connection; true at first. When it becomes true during a connection, one
    /// is fetched at once: a session that is ready stays ready, and keys that are watched meanwhile are displayed when
    /// the catalogue is ready. When it becomes false, the present catalogue is deleted later, and isReady() does not
    /// wait for one.
    void setCatalogueWanted(bool isWanted);

    /// Watches the keys from now on, as soon as the displayed key set can take them. A key that the catalogue knows is
    /// displayed with the nature that it has there. Nothing happens to keys that are watched already.
    void watch(const QSet<MemoryKey>& keys);
    /// Watches the key of this name. One that the robot does not list becomes a user key, of this catalogue and of
    /// every later one. Nothing happens with an empty name.
    void watchByName(const QString& name);
    /// Ends watching the keys; nothing happens to others.
    void unwatch(const QSet<MemoryKey>& keys);
    /// The keys that were asked for, displayed already or not yet, as they were given.
    const QSet<MemoryKey>& watchedKeys() const { return m_watchedKeys; }

    /// The sampling period that was asked for, in milliseconds; at first the displayed key set's own, and 0 in a
    /// session that only lists keys. It is applied again when the minimum of the robot is known.
    int wantedPeriod() const { return m_wantedPeriod; }
    void setWantedPeriod(int periodMs);
    /// The sampling period in force, in milliseconds: the wanted one within the limits of the robot. Until these are
    /// known, it is the former period, or one that every robot can keep.
    int grantedPeriod() const;

    /// Whether the watcher is to run, which it does while the robot is connected and any key is watched. True at first.
    bool isWatcherWanted() const { return m_isWatcherWanted; }
    void setWatcherWanted(bool isWanted);
    bool isWatcherRunning() const { return m_isWatcherRunning; }

    /// Asks the robot whether it samples in real time; RobotLink::realTimeSupportAnswered() brings the answer. A
    /// displayed key set asks by itself. Nothing happens without a connection.
    void askRealTimeSupport();

Q_SIGNALS:
    /// isReady() changed: true once for each connection, after catalogueReady(); false when the connection ends.
    void readyChanged(bool isReady);
    /// A catalogue has become ready and is catalogue() from now on; the one before is deleted after the signal.
    void catalogueReady(Velk::MemoryKeyListModel* catalogue);
    /// watchedKeys() changed.
    void watchedKeysChanged();
    /// wantedPeriod(), grantedPeriod() or a limit of the sampling period changed.
    void periodChanged();
    /// isWatcherWanted() or isWatcherRunning() changed.
    void watcherChanged();
    /// Something went wrong, on the link or in the displayed key set: a title and a message, both translated. What
    /// repeats itself is reported once: a failure of the link as RobotLink::failed() does, and an error of the
    /// displayed key set, such as that of each row that cannot be written, once in a turn of the event loop. That the
    /// watcher cannot be started without a connection is not reported.
    void failed(const QString& title, const QString& message);

private Q_SLOTS:
    void ignoreAnswer(bool isSupported);

private:
    void createDisplayedKeys();
    void onStateChanged(RobotLink::State state);
    void onConnected();
    void onRobotConnected(bool isConnected);
    void onRealTimeSupportAnswered();
    void onCatalogueReady();
    void onKeysUpdated(const QSet<DisplayedMemoryKey>& keys);
    void onKeysAdded();
    void onKeysRemoved(const QSet<DisplayedMemoryKey>& keys);
    void onError(const QString& title, const QString& message);
    void fetchCatalogue();
    void dropFetchingCatalogue();
    void watchAddedKeys();
    void proceed();
    void displayWatchedKeys();
    void updateWatcher();
    void updateReadiness();
    QSet<MemoryKey> asListed(const QSet<MemoryKey>& keys) const;
    void xSetWatchedKeys(const QSet<MemoryKey>& keys);
    void xSetWatcherRunning(bool isRunning);
    void xSetReady(bool isReady);

    std::unique_ptr<RobotLink> m_link;
    DisplayedMemoryKeyListModel* m_displayedKeys = nullptr; // the link's child
    SampleStream* m_samples;
    QPointer<MemoryKeyListModel> m_catalogue;         // the link's children, too
    QPointer<MemoryKeyListModel> m_fetchingCatalogue; // not ready yet
    QStringList m_userKeys;
    QSet<MemoryKey> m_watchedKeys;
    QSet<MemoryKey> m_knownDisplayedKeys; // displayed when the session looked last
    QString m_lastError;                  // of the displayed key set, in this turn of the event loop
    int m_wantedPeriod = 0;
    bool m_isCatalogueWanted = true;
    bool m_isCatalogueCurrent = false; // m_catalogue is of this connection
    bool m_isRebuilding = false;       // the displayed key set has not learned the natures of this connection yet
    bool m_isLimitKnown = false;       // the robot has answered how fast it can sample
    bool m_isReady = false;
    bool m_isWatcherWanted = true;
    bool m_isWatcherRunning = false;
    bool m_isAddingOffline = false;
};

} // namespace Velk

#endif
