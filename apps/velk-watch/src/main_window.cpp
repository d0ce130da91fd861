#include "main_window.h"

#include "application_icon.h"
#include "catalogue_panel.h"
#include "message_bar.h"
#include "period_text.h"
#include "plot_panel.h"
#include "plot_view.h"
#include "recording_control.h"
#include "robot_bar.h"
#include "theme_style.h"
#include "watch_panel.h"
#include "watch_settings.h"

#include <connections/links/robot_links.h>
#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/robot_session.h>

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QFileDialog>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

namespace Velk {

namespace {

// The layout of docks and tool bars; a state of another version is not restored.
constexpr int stateVersion = 1;
constexpr int statusIntervalMs = 500;

// A robot's clock in our connections counts seconds since the Unix epoch.
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
    , m_curves(m_watchModel, m_history)
    , m_recording(new RecordingControl(this))
{
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(tr("Robot memory"));
    setWindowIcon(applicationIcon());
    resize(1180, 760);
    m_watchModel->setTimeFormatter(timeOfDay);

    createBars();
    createViews();
    createMenus();
    createStatusBar();

    connect(m_recording, &RecordingControl::stateChanged, this, &MainWindow::updateState);
    connect(m_recording, &RecordingControl::rowsChanged, this, &MainWindow::updateStatus);
    connect(m_recording, &RecordingControl::message, m_messages, &MessageBar::showMessage);

    // What changes in one turn of the event loop is one change of the plot.
    m_plotTimer.setSingleShot(true);
    m_plotTimer.setInterval(0);
    connect(&m_plotTimer, &QTimer::timeout, this, &MainWindow::updatePlot);
    const auto schedulePlot = qOverload<>(&QTimer::start);
    connect(m_watchModel, &WatchModel::appearanceChanged, &m_plotTimer, schedulePlot);
    connect(m_watchModel, &WatchModel::rowsInserted, &m_plotTimer, schedulePlot);
    connect(m_watchModel, &WatchModel::rowsRemoved, &m_plotTimer, schedulePlot);
    connect(m_watchModel, &WatchModel::modelReset, &m_plotTimer, schedulePlot);
    connect(m_history, &SampleHistory::samplesDropped, &m_plotTimer, schedulePlot);
    connect(m_history, &SampleHistory::samplesAdded, this, [this] {
        if (plot()->isFollowing())
            m_plotTimer.start();
    });
    connect(plot(), &PlotView::followingChanged, &m_plotTimer, schedulePlot);
    connect(&m_statusTimer, &QTimer::timeout, this, &MainWindow::updateStatus);
    m_statusTimer.start(statusIntervalMs);

    setTheme(m_settings->theme());
    m_catalogue->setTree(m_settings->isCatalogueTree());
    m_robotBar->setRecentUrls(m_recentRobots.urls());
    m_robotBar->setUrl(m_recentRobots.urls().value(0));
    if (m_settings->samplingPeriod() > 0)
        m_period->setValue(m_settings->samplingPeriod());
    restoreGeometry(m_settings->geometry());
    restoreState(m_settings->windowState(), stateVersion);
    if (!m_settings->splitterState().isEmpty())
        m_splitter->restoreState(m_settings->splitterState());
    m_table->restoreColumns(m_settings->tableState());
    updateState();
    m_robotBar->focusUrl();
}

MainWindow::~MainWindow()
{
    // The models of the session are shown by views that still exist.
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

    m_watcherAction = createAction(QStringLiteral("watcherAction"), tr("&Sample"), Qt::Key_F5);
    m_watcherAction->setCheckable(true);
    m_watcherAction->setChecked(true);
    m_watcherAction->setToolTip(tr("Let the robot sample the watched keys, or pause it (F5)"));
    connect(m_watcherAction, &QAction::toggled, this, [this](bool isWanted) {
        if (m_session)
            m_session->setWatcherWanted(isWanted);
    });
    m_freezeAction = createAction(QStringLiteral("freezeAction"), tr("Free&ze table"), Qt::Key_F6);
    m_freezeAction->setCheckable(true);
    m_freezeAction->setToolTip(tr("Keep the values of the table as they are; sampling and recording go on (F6)"));
    connect(m_freezeAction, &QAction::toggled, m_watchModel, &WatchModel::setFrozen);
    m_recordAction = createAction(QStringLiteral("recordAction"), tr("Reco&rd"), QKeySequence(tr("Ctrl+R")));
    m_recordAction->setCheckable(true);
    m_recordAction->setToolTip(tr("Record every value of the watched keys, or stop recording (Ctrl+R)"));
    connect(m_recordAction, &QAction::triggered, this, &MainWindow::toggleRecording);
    m_saveAction = createAction(QStringLiteral("saveAction"), tr("Sa&ve recording…"), QKeySequence(QKeySequence::Save));
    m_saveAction->setToolTip(tr("Save the recording to a file (Ctrl+S)"));
    connect(m_saveAction, &QAction::triggered, this, &MainWindow::saveRecording);
    m_discardAction = createAction(QStringLiteral("discardAction"), tr("&Discard recording"), {});
    connect(m_discardAction, &QAction::triggered, this, [this] { settleRecording(tr("Discard the recording?")); });
    m_unwatchAction = createAction(QStringLiteral("unwatchAction"), tr("&Unwatch selected keys"), {});
    connect(m_unwatchAction, &QAction::triggered, this, [this] { unwatch(m_table->selectedKeys()); });

    auto* bar = new QToolBar(tr("Watching"), this);
    bar->setObjectName(QStringLiteral("watchBar"));
    m_period = new QSpinBox(bar);
    m_period->setObjectName(QStringLiteral("period"));
    m_period->setAccessibleName(tr("Sampling period in milliseconds"));
    m_period->setRange(1, 99999990);
    m_period->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_period->setSuffix(tr(" ms"));
    m_period->setValue(1000);
    m_period->setKeyboardTracking(false);
    connect(m_period, qOverload<int>(&QSpinBox::valueChanged), this, [this](int periodMs) {
        if (m_session)
            m_session->setWantedPeriod(periodMs);
    });
    auto* label = new QLabel(tr("&Period:"), bar);
    label->setContentsMargins(4, 0, 4, 0);
    label->setBuddy(m_period);
    bar->addAction(m_watcherAction);
    bar->addWidget(label);
    bar->addWidget(m_period);
    bar->addSeparator();
    bar->addAction(m_freezeAction);
    bar->addSeparator();
    bar->addAction(m_recordAction);
    bar->addAction(m_saveAction);
    addToolBar(bar);
    for (QWidget* button : bar->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (button->focusPolicy() == Qt::NoFocus && button->inherits("QToolButton"))
            button->setFocusPolicy(Qt::TabFocus);
    }
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
    QMenu* const robot = menuBar()->addMenu(tr("&Robot"));
    connect(robot->addAction(tr("&URL of the robot"), QKeySequence(tr("Ctrl+L"))), &QAction::triggered, m_robotBar,
            &RobotBar::focusUrl);
    connect(robot->addAction(tr("&Disconnect")), &QAction::triggered, this, &MainWindow::closeRobot);
    robot->addSeparator();
    connect(robot->addAction(tr("&Quit"), QKeySequence(QKeySequence::Quit)), &QAction::triggered, this,
            &MainWindow::close);

    QMenu* const keys = menuBar()->addMenu(tr("&Keys"));
    connect(keys->addAction(tr("&Search"), QKeySequence(QKeySequence::Find)), &QAction::triggered, m_catalogue,
            &CataloguePanel::focusSearch);
    keys->addAction(m_unwatchAction);
    connect(keys->addAction(tr("&Color of the key…")), &QAction::triggered, m_table, &WatchPanel::chooseColor);
    keys->addSeparator();
    keys->addAction(m_watcherAction);
    keys->addAction(m_freezeAction);

    QMenu* const plotMenu = menuBar()->addMenu(tr("&Plot"));
    QAction* const follow = plotMenu->addAction(tr("&Follow the newest values"), QKeySequence(Qt::Key_F7));
    follow->setCheckable(true);
    follow->setChecked(true);
    connect(follow, &QAction::toggled, plot(), &PlotView::setFollowing);
    connect(plot(), &PlotView::followingChanged, follow, &QAction::setChecked);
    connect(plotMenu->addAction(tr("Show a &shorter time"), QKeySequence(QKeySequence::ZoomIn)), &QAction::triggered,
            plot(), &PlotView::zoomIn);
    connect(plotMenu->addAction(tr("Show a &longer time"), QKeySequence(QKeySequence::ZoomOut)), &QAction::triggered,
            plot(), &PlotView::zoomOut);
    connect(plotMenu->addAction(tr("Zoom &in on the values")), &QAction::triggered, plot(), &PlotView::zoomValuesIn);
    connect(plotMenu->addAction(tr("Zoom &out of the values")), &QAction::triggered, plot(), &PlotView::zoomValuesOut);
    connect(plotMenu->addAction(tr("Fi&t everything"), QKeySequence(tr("Ctrl+0"))), &QAction::triggered, plot(),
            &PlotView::resetView);

    QMenu* const recording = menuBar()->addMenu(tr("Re&cording"));
    recording->addAction(m_recordAction);
    recording->addAction(m_saveAction);
    recording->addAction(m_discardAction);

    QMenu* const view = menuBar()->addMenu(tr("&View"));
    const QList<QDockWidget*> docks = findChildren<QDockWidget*>();
    for (const QDockWidget* dock : docks)
        view->addAction(dock->toggleViewAction());
    const QList<QToolBar*> bars = findChildren<QToolBar*>();
    for (const QToolBar* bar : bars)
        view->addAction(bar->toggleViewAction());
    QMenu* const themes = view->addMenu(tr("&Colors"));
    auto* themeGroup = new QActionGroup(this);
    for (const ColorTheme::Name theme : ColorTheme::names()) {
        QAction* const action = themes->addAction(ColorTheme::text(theme));
        action->setObjectName(QStringLiteral("theme-") + ColorTheme::toString(theme));
        action->setCheckable(true);
        action->setChecked(theme == m_settings->theme());
        themeGroup->addAction(action);
        connect(action, &QAction::triggered, this, [this, theme] { setTheme(theme); });
    }

    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    connect(help->addAction(tr("&About")), &QAction::triggered, this, &MainWindow::showAbout);
}

void MainWindow::createStatusBar()
{
    m_connectionLabel = new QLabel(this);
    m_connectionLabel->setObjectName(QStringLiteral("connectionStatus"));
    m_connectionLabel->setAccessibleName(tr("Connection"));
    m_periodLabel = new QLabel(this);
    m_periodLabel->setObjectName(QStringLiteral("periodStatus"));
    m_periodLabel->setAccessibleName(tr("Sampling period"));
    m_recordingLabel = new QLabel(this);
    m_recordingLabel->setObjectName(QStringLiteral("recordingStatus"));
    m_recordingLabel->setAccessibleName(tr("Recording"));
    for (QLabel* label : {m_connectionLabel, m_periodLabel, m_recordingLabel})
        label->setContentsMargins(6, 0, 10, 0);
    statusBar()->addWidget(m_connectionLabel);
    statusBar()->addWidget(m_periodLabel, 1);
    statusBar()->addPermanentWidget(m_recordingLabel);
}

QAction* MainWindow::createAction(const QString& name, const QString& text, const QKeySequence& shortcut)
{
    auto* action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    addAction(action);
    return action;
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

    // A recording of the robot before ends, and is kept until it is saved.
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
    m_session->setWatcherWanted(m_watcherAction->isChecked());
    m_session->setWantedPeriod(m_period->value());
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

// Showing

void MainWindow::updatePlot()
{
    plot()->setCurves(m_curves.shownCurves(), m_history->newestTime());
}

void MainWindow::updateState()
{
    const RobotLink::State state = m_session ? m_session->link()->state() : RobotLink::Disconnected;
    m_robotBar->setState(state);
    if (m_session)
        m_status.setState(state, QDateTime::currentDateTime());
    setWindowTitle(m_session ? tr("%1 – Robot memory").arg(m_session->link()->url()) : tr("Robot memory"));

    const RecordingControl::State recording = m_recording->state();
    m_recordAction->setChecked(recording == RecordingControl::Recording);
    m_recordAction->setEnabled(recording == RecordingControl::Recording || state == RobotLink::Connected);
    m_saveAction->setEnabled(recording != RecordingControl::Idle);
    m_discardAction->setEnabled(recording == RecordingControl::Unsaved);
    updateStatus();
}

void MainWindow::updateStatus()
{
    QString connection = m_status.text(QDateTime::currentDateTime());
    if (m_session && m_session->isWatcherRunning())
        connection += tr(", sampling");
    else if (m_session && m_session->link()->state() == RobotLink::Connected)
        connection += m_watcherAction->isChecked() ? tr(", nothing to sample") : tr(", sampling paused");
    m_connectionLabel->setText(connection);
    m_periodLabel->setText(m_session ? PeriodText::of(*m_session) : QString());
    m_recordingLabel->setText(m_recording->text());
}

void MainWindow::setTheme(ColorTheme::Name theme)
{
    m_theme = theme;
    // A style of the desktop may draw in its own colours, whatever the palette says.
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
    } else if (settleRecording(tr("The recording before is not saved."))) {
        m_recording->start();
    }
    // A start that failed leaves the action as it was.
    updateState();
}

bool MainWindow::saveRecording()
{
    m_recording->stop();
    if (m_recording->state() != RecordingControl::Unsaved)
        return true;
    const QString folder = m_settings->recordingFolder();
    const QString proposal = QStringLiteral("recording-%1.csv")
                                 .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss")));
    QFileDialog dialog(this, tr("Save recording"), folder.isEmpty() ? QDir::homePath() : folder,
                       tr("Recordings (*.csv);;All files (*)"));
    dialog.setObjectName(QStringLiteral("saveDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.selectFile(proposal);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false;

    const QString fileName = dialog.selectedFiles().constFirst();
    // The dialog has asked whether a file that exists is to be replaced.
    const RecordSaveResult result = m_recording->save(fileName, RecordFileSaver::ReplaceExisting);
    if (result.isSaved()) {
        m_settings->setRecordingFolder(QFileInfo(fileName).absolutePath());
        statusBar()->showMessage(tr("Saved to %1").arg(QDir::toNativeSeparators(fileName)), 5000);
    }
    if (!result.title.isEmpty() || !result.message.isEmpty())
        m_messages->showMessage(result.title, result.message);
    return result.isSaved();
}

bool MainWindow::settleRecording(const QString& question)
{
    if (m_recording->state() == RecordingControl::Idle)
        return true;
    QMessageBox box(QMessageBox::Question, tr("Recording"), question, QMessageBox::NoButton, this);
    box.setObjectName(QStringLiteral("recordingQuestion"));
    box.setInformativeText(m_recording->text());
    QPushButton* const save = box.addButton(tr("&Save…"), QMessageBox::AcceptRole);
    QPushButton* const discard = box.addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    QPushButton* const cancel = box.addButton(QMessageBox::Cancel);
    save->setObjectName(QStringLiteral("saveButton"));
    discard->setObjectName(QStringLiteral("discardButton"));
    cancel->setObjectName(QStringLiteral("cancelButton"));
    box.setDefaultButton(save);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == save)
        return saveRecording();
    if (box.clickedButton() != discard)
        return false;
    m_recording->stop();
    m_recording->discard();
    return true;
}

// Closing

void MainWindow::rememberAll()
{
    m_settings->setGeometry(saveGeometry());
    m_settings->setWindowState(saveState(stateVersion));
    m_settings->setSplitterState(m_splitter->saveState());
    m_settings->setTableState(m_table->saveColumns());
    m_settings->setRecentRobots(m_recentRobots.urls());
    m_settings->setSamplingPeriod(m_period->value());
    m_settings->setTheme(m_theme);
    m_settings->setCatalogueTree(m_catalogue->isTree());
    if (m_session) {
        QList<WatchedKey> keys;
        for (int row = 0; row < m_watchModel->count(); ++row) {
            const QString name = m_watchModel->key(row).name();
            keys.append({name, m_watchModel->color(name), m_watchModel->isShown(name)});
        }
        m_settings->setWatchedKeys(keys);
    }
    if (!m_settings->sync())
        qWarning("%s", qPrintable(tr("The settings could not be written to %1.").arg(m_settings->fileName())));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    const QString question = m_recording->state() == RecordingControl::Recording
                                 ? tr("A recording is running. It ends when the window is closed.")
                                 : tr("The recording is not saved.");
    if (!settleRecording(question)) {
        event->ignore();
        return;
    }
    rememberAll();
    event->accept();
}

} // namespace Velk
