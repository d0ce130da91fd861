// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

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

/// A watched key in the settings.
struct WatchedKey
{
    QString name;
    QColor color; ///< invalid: the key gets a colour when it is displayed
    bool isShown = true;
};

inline bool operator==(const WatchedKey& a, const WatchedKey& b)
{
    return a.name == b.name && a.color == b.color && a.isShown == b.isShown;
}

/// The settings that the application keeps from one run to the next. An entry that is damaged, or that another version
/// wrote, counts as missing.
class WatchSettings
{
public:
    /// Opens a settings file; with an empty name the user's own, in the user's configuration folder.
    explicit WatchSettings(const QString& fileName = {});

    QString fileName() const { return m_settings.fileName(); }
    /// Writes the settings to the file. Returns whether that was possible.
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

    /// Milliseconds; 0 when none was set.
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
    mutable QSettings m_settings; // reading an array moves a position in it
};

} // namespace Velk

#endif
