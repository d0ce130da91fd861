// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "main_window.h"

#include "application_icon.h"
#include "catalogue_panel.h"
#include "message_bar.h"
#include "period_text.h"
#include "plot_feed.h"
#include "plot_panel.h"
#include "plot_view.h"
#include "recording_control.h"
#include "recording_dialogs.h"
#include "robot_bar.h"
#include "theme_style.h"
#include "watch_bar.h"
#include "watch_panel.h"
#include "watch_settings.h"
#include "watch_status_bar.h"
#include "window_menus.h"

#include <connections/links/robot_links.h>
#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <session/robot_session.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDockWidget>
#include <QMessageBox>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

namespace Velk {

namespace {

// The version of the layout of docks and tool bars. A state of another version is not restored.
constexpr int stateVersion = 1;
constexpr int statusIntervalMs = 500; // the durations in the status bar change every second

// The time stamps of a link are seconds since the Unix epoch.
QString timeOfDay(double time)
{
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(qint64(time * 1000)), QStringLiteral("HH:mm:ss.zzz"));
}

} // namespace

MainWindow::MainWindow(WatchSettings* settings, QWidget* parent)
    : QMainWindow(parent)
    , m_settings(settings)
    , m_recentRobots(settings->recentRobots())
    , m_desktopPalette(QApplication::palette())
    , m_desktopStyle(QApplication::style()->name())
    , m_watchModel(new WatchModel(nullptr, this))
    , m_history(new SampleHistory(nullptr, this))
    , m_recording(new RecordingControl(this))
    , m_recordingDialogs(new RecordingDialogs(m_recording, settings, this))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(tr("Robot memory"));
    setWindowIcon(applicationIcon());
    resize(1180, 760);
    m_watchModel->setTimeFormatter(timeOfDay);

    createBars();
    createViews();
    createMenus();
    connectRecording();
    new PlotFeed(m_watchModel, m_history, plot(), this);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::updateStatus);
    m_statusTimer.start(statusIntervalMs);

    restoreSettings();
    updateState();
    m_robotBar->focusUrl();
}

MainWindow::~MainWindow()
{
    // The session is deleted before the views that show its models.
    m_recording->setSession(nullptr);
    m_watchModel->setDisplayedKeys(nullptr);
    m_history->setDisplayedKeys(nullptr);
    m_catalogue->setCatalogue(nullptr);
}

PlotView* MainWindow::plot() const
{
    return m_plotPanel->plot();
}

// Building

void MainWindow::createBars()
{
    m_robotBar = new RobotBar(this);
    addToolBar(m_robotBar);
    connect(m_robotBar, &RobotBar::openRequested, this, qOverload<const QString&>(&MainWindow::openRobot));
    connect(m_robotBar, &RobotBar::closeRequested, this, &MainWindow::closeRobot);

    m_watchBar = new WatchBar(this);
    addToolBar(m_watchBar);
    connect(m_watchBar->sampleAction(), &QAction::toggled, this, [this](bool isWanted) {
        if (m_session)
            m_session->setWatcherWanted(isWanted);
    });
    connect(m_watchBar->freezeAction(), &QAction::toggled, m_watchModel, &WatchModel::setFrozen);
    connect(m_watchBar, &WatchBar::periodChanged, this, [this](int periodMs) {
        if (m_session)
            m_session->setWantedPeriod(periodMs);
    });
    m_statusBar = new WatchStatusBar(this);
    setStatusBar(m_statusBar);
}

void MainWindow::createViews()
{
    m_catalogue = new CataloguePanel(this);
    auto* dock = new QDockWidget(tr("Keys of the robot"), this);
    dock->setObjectName(QStringLiteral("catalogueDock"));
    dock->setWidget(m_catalogue);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {330}, Qt::Horizontal);
    connect(m_catalogue, &CataloguePanel::keysChosen, this, &MainWindow::watch);
    connect(m_catalogue, &CataloguePanel::keysDropped, this, &MainWindow::unwatch);
    connect(m_catalogue, &CataloguePanel::nameTyped, this, [this](const QString& name) {
        if (m_session)
            m_session->watchByName(name);
        else
            m_messages->showMessage(tr("No robot"), tr("Connect to a robot first."));
    });

    m_messages = new MessageBar(this);
    m_table = new WatchPanel(m_watchModel, this);
    connect(m_table, &WatchPanel::removalRequested, this, &MainWindow::unwatch);
    m_plotPanel = new PlotPanel(this);
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setObjectName(QStringLiteral("splitter"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_table);
    m_splitter->addWidget(m_plotPanel);
    m_splitter->setStretchFactor(0, 2);
    m_splitter->setStretchFactor(1, 3);

    auto* center = new QWidget(this);
    auto* layout = new QVBoxLayout(center);
    layout->setContentsMargins(2, 4, 4, 2);
    layout->setSpacing(4);
    layout->addWidget(m_messages);
    layout->addWidget(m_splitter, 1);
    setCentralWidget(center);
}

void MainWindow::createMenus()
{
    auto* const menus =
        new WindowMenus(this, {m_robotBar, m_watchBar, m_catalogue, m_table, plot()}, m_settings->theme());
    connect(menus, &WindowMenus::disconnectRequested, this, &MainWindow::closeRobot);
    connect(menus, &WindowMenus::themeChosen, this, &MainWindow::setTheme);
    connect(menus, &WindowMenus::aboutRequested, this, &MainWindow::showAbout);
}

void MainWindow::connectRecording()
{
    connect(m_watchBar->recordAction(), &QAction::triggered, this, &MainWindow::toggleRecording);
    connect(m_watchBar->saveAction(), &QAction::triggered, m_recordingDialogs, &RecordingDialogs::save);
    connect(m_watchBar->discardAction(), &QAction::triggered, this,
            [this] { m_recordingDialogs->saveOrDiscard(tr("Discard the recording?")); });
    connect(m_recording, &RecordingControl::stateChanged, this, &MainWindow::updateState);
    connect(m_recording, &RecordingControl::rowsChanged, this, &MainWindow::updateStatus);
    connect(m_recording, &RecordingControl::message, m_messages, &MessageBar::showMessage);
    connect(m_recordingDialogs, &RecordingDialogs::message, m_messages, &MessageBar::showMessage);
    connect(m_recordingDialogs, &RecordingDialogs::saved, m_statusBar, &WatchStatusBar::showSaved);
}

// Robot

void MainWindow::openRobot(const QString& url)
{
    QString error;
    std::unique_ptr<RobotLink> link = RobotLinks::createLink(url, &error);
    if (!link) {
        m_messages->showMessage(tr("This robot cannot be opened"), error);
        return;
    }
    openRobot(std::move(link));
}

void MainWindow::openRobot(std::unique_ptr<RobotLink> link)
{
    QSet<MemoryKey> keys;
    if (m_session) {
        keys = m_session->watchedKeys();
    } else {
        const QList<WatchedKey> remembered = m_settings->watchedKeys();
        for (const WatchedKey& key : remembered) {
            m_watchModel->setColor(key.name, key.color);
            m_watchModel->setShown(key.name, key.isShown);
            keys.insert(MemoryKey(key.name, QString(), UnknownNature));
        }
    }

    // A recording of the previous robot ends here, and is kept until it is saved.
    m_recording->setSession(nullptr);
    auto session = std::make_unique<RobotSession>(std::move(link));
    m_watchModel->setDisplayedKeys(session->displayedKeys());
    m_history->setDisplayedKeys(session->displayedKeys(), session->samples());
    m_catalogue->setCatalogue(nullptr);
    m_session.swap(session);
    session.reset();

    plot()->clear();
    m_recording->setSession(m_session.get());
    connectSession();
    m_session->setWatcherWanted(m_watchBar->sampleAction()->isChecked());
    m_session->setWantedPeriod(m_watchBar->period());
    m_session->watch(keys);

    m_recentRobots.add(m_session->link()->url());
    m_robotBar->setRecentUrls(m_recentRobots.urls());
    m_robotBar->setUrl(m_session->link()->url());
    m_status = ConnectionStatus();
    m_session->link()->open();
    updateState();
}

void MainWindow::connectSession()
{
    RobotSession* const session = m_session.get();
    connect(session, &RobotSession::failed, m_messages, &MessageBar::showMessage);
    connect(session, &RobotSession::catalogueReady, m_catalogue, &CataloguePanel::setCatalogue);
    connect(session, &RobotSession::watchedKeysChanged, m_catalogue,
            [this, session] { m_catalogue->setWatchedKeys(session->watchedKeys()); });
    connect(session, &RobotSession::watcherChanged, this, &MainWindow::updateState);
    connect(session, &RobotSession::periodChanged, this, &MainWindow::updateStatus);
    connect(session->link(), &RobotLink::stateChanged, this, &MainWindow::updateState);
}

void MainWindow::closeRobot()
{
    if (m_session)
        m_session->link()->close();
}

void MainWindow::watch(const QSet<MemoryKey>& keys)
{
    if (m_session)
        m_session->watch(keys);
}

void MainWindow::unwatch(const QSet<MemoryKey>& keys)
{
    if (m_session)
        m_session->unwatch(keys);
}

void MainWindow::setWatchedNames(const QStringList& names)
{
    if (!m_session) {
        QList<WatchedKey> keys;
        for (const QString& name : names)
            keys.append({name, m_watchModel->color(name), true});
        m_settings->setWatchedKeys(keys);
        return;
    }
    m_session->unwatch(m_session->watchedKeys());
    for (const QString& name : names)
        m_session->watchByName(name);
}

// State

void MainWindow::updateState()
{
    const RobotLink::State state = m_session ? m_session->link()->state() : RobotLink::Disconnected;
    m_robotBar->setState(state);
    if (m_session)
        m_status.setState(state, QDateTime::currentDateTime());
    setWindowTitle(m_session ? tr("%1 – Robot memory").arg(m_session->link()->url()) : tr("Robot memory"));

    m_watchBar->setRecordingState(m_recording->state(), state == RobotLink::Connected);
    updateStatus();
}

void MainWindow::updateStatus()
{
    QString connection = m_status.text(QDateTime::currentDateTime());
    if (m_session && m_session->isWatcherRunning())
        connection += tr(", sampling");
    else if (m_session && m_session->link()->state() == RobotLink::Connected)
        connection += m_watchBar->sampleAction()->isChecked() ? tr(", nothing to sample") : tr(", sampling paused");
    m_statusBar->setTexts(connection, m_session ? PeriodText::of(*m_session) : QString(), m_recording->text());
}

void MainWindow::setTheme(ColorTheme::Name theme)
{
    m_theme = theme;
    // A style of the desktop may ignore the palette.
    if (theme == ColorTheme::Desktop)
        QApplication::setStyle(m_desktopStyle);
    else
        QApplication::setStyle(new ThemeStyle);
    QApplication::setPalette(ColorTheme::palette(theme, m_desktopPalette));
}

void MainWindow::showAbout()
{
    QMessageBox::about(this, tr("About"),
                       tr("velk-watch %1\n\nShows the memory of a robot: its keys, their values as they change, and "
                          "recordings of them.")
                           .arg(QCoreApplication::applicationVersion()));
}

// Recording

void MainWindow::toggleRecording()
{
    if (m_recording->state() == RecordingControl::Recording) {
        m_recording->stop();
    } else if (m_recordingDialogs->saveOrDiscard(tr("The previous recording is not saved."))) {
        m_recording->start();
    }
    // A start that failed leaves the action as it was.
    updateState();
}

// Settings

void MainWindow::restoreSettings()
{
    setTheme(m_settings->theme());
    m_catalogue->setTree(m_settings->isCatalogueTree());
    m_robotBar->setRecentUrls(m_recentRobots.urls());
    m_robotBar->setUrl(m_recentRobots.urls().value(0));
    if (m_settings->samplingPeriod() > 0)
        m_watchBar->setPeriod(m_settings->samplingPeriod());
    restoreGeometry(m_settings->geometry());
    restoreState(m_settings->windowState(), stateVersion);
    if (!m_settings->splitterState().isEmpty())
        m_splitter->restoreState(m_settings->splitterState());
    m_table->restoreColumns(m_settings->tableState());
}

void MainWindow::saveSettings()
{
    m_settings->setGeometry(saveGeometry());
    m_settings->setWindowState(saveState(stateVersion));
    m_settings->setSplitterState(m_splitter->saveState());
    m_settings->setTableState(m_table->saveColumns());
    m_settings->setRecentRobots(m_recentRobots.urls());
    m_settings->setSamplingPeriod(m_watchBar->period());
    m_settings->setTheme(m_theme);
    m_settings->setCatalogueTree(m_catalogue->isTree());
    if (m_session)
        saveWatchedKeys();
    if (!m_settings->sync())
        qWarning("%s", qPrintable(tr("The settings could not be written to %1.").arg(m_settings->fileName())));
}

// In the order of the table. Keys that the displayed key set has not taken yet come last.
void MainWindow::saveWatchedKeys()
{
    QSet<MemoryKey> unsaved = m_session->watchedKeys();
    QList<WatchedKey> keys;
    const auto save = [&](const MemoryKey& key) {
        if (unsaved.remove(key))
            keys.append({key.name(), m_watchModel->color(key.name()), m_watchModel->isShown(key.name())});
    };
    for (int row = 0; row < m_watchModel->count(); ++row)
        save(m_watchModel->key(row));
    const QSet<MemoryKey> withoutRow = unsaved;
    for (const MemoryKey& key : withoutRow)
        save(key);
    m_settings->setWatchedKeys(keys);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const QString question = m_recording->state() == RecordingControl::Recording
                                 ? tr("A recording is running. It ends when the window is closed.")
                                 : tr("The recording is not saved.");
    if (!m_recordingDialogs->saveOrDiscard(question)) {
        event->ignore();
        return;
    }
    saveSettings();
    event->accept();
}

} // namespace Velk
