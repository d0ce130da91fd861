// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window_menus.h"

#include "catalogue_panel.h"
#include "plot_view.h"
#include "robot_bar.h"
#include "watch_bar.h"
#include "watch_panel.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

namespace Velk {

WindowMenus::WindowMenus(QMainWindow* window, const Parts& parts, ColorTheme::Name theme)
    : QObject(window)
    , m_window(window)
{
    QMenuBar* const menuBar = window->menuBar();
    QMenu* const robot = menuBar->addMenu(tr("&Robot"));
    connect(robot->addAction(tr("&URL of the robot"), QKeySequence(tr("Ctrl+L"))), &QAction::triggered, parts.robotBar,
            &RobotBar::focusUrl);
    connect(robot->addAction(tr("&Disconnect")), &QAction::triggered, this, &WindowMenus::disconnectRequested);
    robot->addSeparator();
    connect(robot->addAction(tr("&Quit"), QKeySequence(QKeySequence::Quit)), &QAction::triggered, window,
            &QWidget::close);

    QMenu* const keys = menuBar->addMenu(tr("&Keys"));
    connect(keys->addAction(tr("&Search"), QKeySequence(QKeySequence::Find)), &QAction::triggered, parts.catalogue,
            &CataloguePanel::focusSearch);
    QAction* const unwatch = keys->addAction(tr("&Unwatch selected keys"));
    unwatch->setObjectName(QStringLiteral("unwatchAction"));
    connect(unwatch, &QAction::triggered, parts.table, &WatchPanel::removeSelected);
    connect(keys->addAction(tr("&Color of the key…")), &QAction::triggered, parts.table, &WatchPanel::chooseColor);
    keys->addSeparator();
    keys->addAction(parts.watchBar->sampleAction());
    keys->addAction(parts.watchBar->freezeAction());

    createPlotMenu(parts.plot);

    QMenu* const recording = menuBar->addMenu(tr("Re&cording"));
    recording->addAction(parts.watchBar->recordAction());
    recording->addAction(parts.watchBar->saveAction());
    recording->addAction(parts.watchBar->discardAction());

    createViewMenu(theme);

    QMenu* const help = menuBar->addMenu(tr("&Help"));
    connect(help->addAction(tr("&About")), &QAction::triggered, this, &WindowMenus::aboutRequested);
}

void WindowMenus::createPlotMenu(PlotView* plot)
{
    QMenu* const menu = m_window->menuBar()->addMenu(tr("&Plot"));
    QAction* const follow = menu->addAction(tr("&Follow the newest values"), QKeySequence(Qt::Key_F7));
    follow->setCheckable(true);
    follow->setChecked(true);
    connect(follow, &QAction::toggled, plot, &PlotView::setFollowing);
    connect(plot, &PlotView::followingChanged, follow, &QAction::setChecked);
    connect(menu->addAction(tr("Show a &shorter time"), QKeySequence(QKeySequence::ZoomIn)), &QAction::triggered, plot,
            &PlotView::zoomIn);
    connect(menu->addAction(tr("Show a &longer time"), QKeySequence(QKeySequence::ZoomOut)), &QAction::triggered, plot,
            &PlotView::zoomOut);
    connect(menu->addAction(tr("Zoom &in on the values")), &QAction::triggered, plot, &PlotView::zoomValuesIn);
    connect(menu->addAction(tr("Zoom &out of the values")), &QAction::triggered, plot, &PlotView::zoomValuesOut);
    connect(menu->addAction(tr("Fi&t everything"), QKeySequence(tr("Ctrl+0"))), &QAction::triggered, plot,
            &PlotView::resetView);
}

void WindowMenus::createViewMenu(ColorTheme::Name theme)
{
    QMenu* const menu = m_window->menuBar()->addMenu(tr("&View"));
    const QList<QDockWidget*> docks = m_window->findChildren<QDockWidget*>();
    for (const QDockWidget* dock : docks)
        menu->addAction(dock->toggleViewAction());
    const QList<QToolBar*> bars = m_window->findChildren<QToolBar*>();
    for (const QToolBar* bar : bars)
        menu->addAction(bar->toggleViewAction());
    QMenu* const themes = menu->addMenu(tr("&Colors"));
    auto* const group = new QActionGroup(this);
    for (const ColorTheme::Name name : ColorTheme::names()) {
        QAction* const action = themes->addAction(ColorTheme::text(name));
        action->setObjectName(QStringLiteral("theme-") + ColorTheme::toString(name));
        action->setCheckable(true);
        action->setChecked(name == theme);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, name] { emit themeChosen(name); });
    }
}

} // namespace Velk
