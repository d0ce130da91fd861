#ifndef APPS_VELK_WATCH_WATCH_SESSION_H
#define APPS_VELK_WATCH_WATCH_SESSION_H

#include <connections/link/robot_link.h>
#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>

#include <memory>

namespace Velk {

class DisplayedMemoryKey;
class DisplayedMemoryKeyListModel;
class PeriodControl;

/// One robot, for as long as the user works with it: its link, the displayed key set, and a catalogue for each time
/// that it connects.
///
/// Whatever the connection does, everything that is watched is watched again when it is back, and the watcher runs
/// unless the user has stopped it. The displayed key set rebuilds its keys after a connection and drops what was
/// changed meanwhile; such changes are made when it is done. Keys may be added to it and removed from it directly as
/// well.
class WatchSession : public QObject
{
    Q_OBJECT

public:
    /// Does not open the link.
    explicit WatchSession(std::unique_ptr<RobotLink> link, QObject* parent = nullptr);
    ~WatchSession() override;

    RobotLink* link() const { return m_link.get(); }
    DisplayedMemoryKeyListModel* model() const { return m_model; }
    PeriodControl* period() const { return m_period; }
    /// The catalogue of the newest connection that is ready; null before the first one.
    MemoryKeyListModel* catalogue() const;

    /// Watches the keys: at once, or when the displayed key set can take them. Without a connection they are watched
    /// from the next one on. What is watched already stays as it is.
    void watch(const QSet<MemoryKey>& keys);
    /// Watches the key of this name, with the nature that the catalogue gives it. One that the robot does not list
    /// becomes a user key, of this catalogue and of those to come.
    void watchByName(const QString& name);
    void unwatch(const QSet<MemoryKey>& keys);
    const QSet<MemoryKey>& watchedKeys() const { return m_watchedKeys; }

    /// Whether the watcher is to run, which it does while the robot is connected and any key is watched. True at first.
    bool isWatcherWanted() const { return m_isWatcherWanted; }
    void setWatcherWanted(bool isWanted);
    bool isWatcherRunning() const { return m_isWatcherRunning; }

Q_SIGNALS:
    /// A catalogue has become ready and is catalogue() from now on; the former one is deleted after the signal.
    void catalogueReady(Velk::MemoryKeyListModel* catalogue);
    /// watchedKeys() changed.
    void watchedKeysChanged();
    /// isWatcherWanted() or isWatcherRunning() changed.
    void watcherChanged();
    /// Something went wrong, on the link or in the displayed key set: a title and a message. A link that goes on trying
    /// and fails for the same reason again is told once.
    void failed(const QString& title, const QString& message);

private:
    void onStateChanged(RobotLink::State state);
    void onRobotConnected(bool isConnected);
    void onKeysUpdated();
    void onLinkFailed(const QString& title, const QString& message);
    void onModelError(const QString& title, const QString& message);
    void onCatalogueReady();
    void onKeysAdded(const QSet<DisplayedMemoryKey>& keys);
    void onKeysRemoved(const QSet<DisplayedMemoryKey>& keys);
    void xSetWatchedKeys(const QSet<MemoryKey>& keys);
    void displayWatchedKeys();
    void updateWatcher();
    void xSetWatcherRunning(bool isRunning);

    std::unique_ptr<RobotLink> m_link;
    DisplayedMemoryKeyListModel* m_model; // the link's child
    PeriodControl* m_period;
    QPointer<MemoryKeyListModel> m_catalogue;         // the link's children, too
    QPointer<MemoryKeyListModel> m_fetchingCatalogue; // not ready yet
    QStringList m_userKeys;
    QSet<MemoryKey> m_watchedKeys; // what the user wants to be displayed
    QString m_lastFailure;         // of the link, since it was connected or opened
    bool m_isRebuilding = false;   // the displayed key set has not learned the natures of this connection yet
    bool m_isWatcherWanted = true;
    bool m_isWatcherRunning = false;
    bool m_isAddingOffline = false;
};

} // namespace Velk

#endif
