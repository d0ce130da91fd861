// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_MAIN_WINDOW_H
#define APPS_VELK_WATCH_MAIN_WINDOW_H

#include "color_theme.h"
#include "connection_status.h"
#include "recent_robots.h"

#include <connections/link/robot_link.h>
#include <memorykeymodel/memory_key.h>

#include <QMainWindow>
#include <QPalette>
#include <QSet>
#include <QTimer>

#include <memory>

class QSplitter;

namespace Velk {

class CataloguePanel;
class MessageBar;
class PlotPanel;
class PlotView;
class RecordingControl;
class RecordingDialogs;
class RobotBar;
class RobotSession;
class SampleHistory;
class WatchBar;
class WatchModel;
class WatchPanel;
class WatchSettings;
class WatchStatusBar;

/// The application's window: opens robots, connects its parts with the session of the robot, and keeps the settings.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Restores the settings, which must outlive the window, and writes them when it is closed.
    explicit MainWindow(WatchSettings* settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens the robot in place of the one that is open, and watches the same keys there. An invalid URL is reported in
    /// the message bar and changes nothing.
    void openRobot(const QString& url);
    /// The same with a link, which is not open yet.
    void openRobot(std::unique_ptr<RobotLink> link);
    void closeRobot();

    /// Watches these keys and no others.
    void setWatchedNames(const QStringList& names);

    /// The robot that is open, or was opened last; null before the first one.
    RobotSession* session() const { return m_session.get(); }
    RecordingControl* recording() const { return m_recording; }
    WatchModel* watchModel() const { return m_watchModel; }
    PlotView* plot() const;
    MessageBar* messageBar() const { return m_messages; }

    void setTheme(ColorTheme::Name theme);

public Q_SLOTS:
    /// Starts a recording, or stops the one that runs. Before a start it asks whether to save a previous recording.
    void toggleRecording();
    /// Asks for a file and saves the recording there; a running one is stopped first. Returns false when there is still
    /// an unsaved recording afterwards.

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createBars();
    void createViews();
    void createMenus();
    void connectRecording();
    void connectSession();
    void watch(const QSet<MemoryKey>& keys);
    void unwatch(const QSet<MemoryKey>& keys);
    void updateState();
    void updateStatus();
    void restoreSettings();
    void saveSettings();
    void saveWatchedKeys();
    void showAbout();

    WatchSettings* m_settings;
    RecentRobots m_recentRobots;
    ConnectionStatus m_status;
    QPalette m_desktopPalette;
    QString m_desktopStyle;
    ColorTheme::Name m_theme = ColorTheme::Desktop;

    WatchModel* m_watchModel;
    SampleHistory* m_history;
    RecordingControl* m_recording;
    RecordingDialogs* m_recordingDialogs;
    std::unique_ptr<RobotSession> m_session;

    RobotBar* m_robotBar = nullptr;
    WatchBar* m_watchBar = nullptr;
    CataloguePanel* m_catalogue = nullptr;
    MessageBar* m_messages = nullptr;
    QSplitter* m_splitter = nullptr;
    WatchPanel* m_table = nullptr;
    PlotPanel* m_plotPanel = nullptr;
    WatchStatusBar* m_statusBar = nullptr;
    QTimer m_statusTimer;
};

} // namespace Velk

#endif
