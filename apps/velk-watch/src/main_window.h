#ifndef APPS_VELK_WATCH_MAIN_WINDOW_H
#define APPS_VELK_WATCH_MAIN_WINDOW_H

#include "color_theme.h"
#include "connection_status.h"
#include "history_curves.h"
#include "recent_robots.h"

#include <connections/link/robot_link.h>

#include <QMainWindow>
#include <QTimer>

#include <memory>

class QLabel;
class QSpinBox;
class QSplitter;

namespace Velk {

class CataloguePanel;
class MessageBar;
class PlotPanel;
class PlotView;
class RecordingControl;
class RobotBar;
class RobotSession;
class SampleHistory;
class WatchModel;
class WatchPanel;
class WatchSettings;

/// The application's window: wires the parts together and decides nothing that one of them could.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Starts as the settings say, which must outlive the window, and writes them when it is closed.
    explicit MainWindow(WatchSettings* settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens the robot in place of the one that is open. What is watched is watched there. A URL that is none is told
    /// in the message bar, and changes nothing.
    void openRobot(const QString& url);
    /// The same with a link that exists already, not yet open.
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
    /// Starts a recording, or stops the one that runs. Asks what becomes of one that is not saved.
    void toggleRecording();
    /// Asks for a file and saves the recording there; a running one is stopped. False when it is not saved then.
    bool saveRecording();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void createViews();
    void createBars();
    void createMenus();
    void createStatusBar();
    void connectSession();
    void watch(const QSet<MemoryKey>& keys);
    void unwatch(const QSet<MemoryKey>& keys);
    void updatePlot();
    void updateState();
    void updateStatus();
    void rememberAll();
    bool settleRecording(const QString& question);
    void showAbout();
    QAction* createAction(const QString& name, const QString& text, const QKeySequence& shortcut);

    WatchSettings* m_settings;
    RecentRobots m_recentRobots;
    ConnectionStatus m_status;
    QPalette m_desktopPalette;
    QString m_desktopStyle;
    ColorTheme::Name m_theme = ColorTheme::Desktop;

    WatchModel* m_watchModel;
    SampleHistory* m_history;
    HistoryCurves m_curves;
    RecordingControl* m_recording;
    std::unique_ptr<RobotSession> m_session;

    RobotBar* m_robotBar = nullptr;
    CataloguePanel* m_catalogue = nullptr;
    MessageBar* m_messages = nullptr;
    QSplitter* m_splitter = nullptr;
    WatchPanel* m_table = nullptr;
    PlotPanel* m_plotPanel = nullptr;
    QSpinBox* m_period = nullptr;
    QLabel* m_connectionLabel = nullptr;
    QLabel* m_periodLabel = nullptr;
    QLabel* m_recordingLabel = nullptr;
    QAction* m_watcherAction = nullptr;
    QAction* m_freezeAction = nullptr;
    QAction* m_recordAction = nullptr;
    QAction* m_saveAction = nullptr;
    QAction* m_discardAction = nullptr;
    QAction* m_unwatchAction = nullptr;
    QTimer m_plotTimer;
    QTimer m_statusTimer;
};

} // namespace Velk

#endif
