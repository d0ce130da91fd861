// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_PANEL_H
#define APPS_VELK_WATCH_PLOT_PANEL_H

#include <QWidget>

class QToolButton;

namespace Velk {

class PlotView;

/// The plot with the buttons that move it.
class PlotPanel : public QWidget
{
    Q_OBJECT

public:
    explicit PlotPanel(QWidget* parent = nullptr);

    PlotView* plot() const { return m_plot; }

private:
    QToolButton* addButton(const QString& text, const QString& name, const QString& toolTip);

    PlotView* m_plot;
    QWidget* m_buttons;
};

} // namespace Velk

#endif
