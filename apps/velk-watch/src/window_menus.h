// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_WINDOW_MENUS_H
#define APPS_VELK_WATCH_WINDOW_MENUS_H

#include "color_theme.h"

#include <QObject>

class QMainWindow;

namespace Velk {

class CataloguePanel;
class PlotView;
class RobotBar;
class WatchBar;
class WatchPanel;

/// The menus of the window: the actions of its parts and its own.
class WindowMenus : public QObject
{
    Q_OBJECT

public:
    /// The parts that the menus act on. All exist as long as the window.
    struct Parts
    {
        RobotBar* robotBar;
        WatchBar* watchBar;
        CataloguePanel* catalogue;
        WatchPanel* table;
        PlotView* plot;
    };

    /// Fills the menu bar of the window, which has its docks and tool bars already.
    WindowMenus(QMainWindow* window, const Parts& parts, ColorTheme::Name theme);

Q_SIGNALS:
    void disconnectRequested();
    void themeChosen(Velk::ColorTheme::Name theme);
    void aboutRequested();

private:
    void createPlotMenu(PlotView* plot);
    void createViewMenu(ColorTheme::Name theme);

    QMainWindow* m_window;
};

} // namespace Velk

#endif
