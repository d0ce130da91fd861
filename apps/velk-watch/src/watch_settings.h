#ifndef APPS_VELK_WATCH_WATCH_SETTINGS_H
#define APPS_VELK_WATCH_WATCH_SETTINGS_H

#include "color_theme.h"

#include <QByteArray>
#include <QColor>
#include <QList>
#include <QSettings>
#include <QString>
#include <QStringList>

namespace Velk {

/// A key that the user watches, as it is remembered.
struct WatchedKey
{
    QString name;
    QColor color; ///< invalid: the next one of the palette
    bool isShown = true;
};

inline bool operator==(const WatchedKey& a, const WatchedKey& b)
{
    return a.name == b.name && a.color == b.color && a.isShown == b.isShown;
}

/// What the application remembers from one run to the next. Entries that are damaged, or were written by another
/// version, count as not there.
class WatchSettings
{
public:
    /// The settings file; with an empty name the user's own, in the place where the desktop keeps such files.
    explicit WatchSettings(const QString& fileName = {});

    QString fileName() const { return m_settings.fileName(); }
    /// Writes what was set to the file. False when that was not possible.
    bool sync();

    QByteArray geometry() const;
    void setGeometry(const QByteArray& geometry);
    /// Docks and tool bars.
    QByteArray windowState() const;
    void setWindowState(const QByteArray& state);
    QByteArray splitterState() const;
    void setSplitterState(const QByteArray& state);
    QByteArray tableState() const;
    void setTableState(const QByteArray& state);

    QStringList recentRobots() const;
    void setRecentRobots(const QStringList& urls);

    QList<WatchedKey> watchedKeys() const;
    void setWatchedKeys(const QList<WatchedKey>& keys);

    /// Milliseconds; 0 when none is remembered.
    int samplingPeriod() const;
    void setSamplingPeriod(int periodMs);

    ColorTheme::Name theme() const;
    void setTheme(ColorTheme::Name theme);

    bool isCatalogueTree() const;
    void setCatalogueTree(bool isTree);

    /// The folder of the last saved recording; empty when there is none.
    QString recordingFolder() const;
    void setRecordingFolder(const QString& folder);

private:
    mutable QSettings m_settings; // an array of it is read through a position that it keeps
};

} // namespace Velk

#endif
