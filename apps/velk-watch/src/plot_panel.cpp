// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_panel.h"

#include "plot_view.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

namespace Velk {

PlotPanel::PlotPanel(QWidget* parent)
    : QWidget(parent)
    , m_plot(new PlotView(this))
    , m_buttons(new QWidget(this))
{
    setObjectName(QStringLiteral("plotPanel"));
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins(4, 4, 4, 0);
    buttons->setSpacing(4);

    QToolButton* const follow =
        addButton(tr("&Follow"), tr("Follow the newest values"), tr("Follow the newest values, or freeze (Space)"));
    follow->setObjectName(QStringLiteral("follow"));
    follow->setCheckable(true);
    follow->setChecked(true);
    connect(follow, &QToolButton::toggled, m_plot, &PlotView::setFollowing);
    connect(m_plot, &PlotView::followingChanged, follow, &QToolButton::setChecked);

    buttons->addSpacing(8);
    connect(addButton(QStringLiteral("◀"), tr("To the past"), tr("To the past (Left)")), &QToolButton::clicked, m_plot,
            &PlotView::panToPast);
    connect(addButton(QStringLiteral("▶"), tr("To now"), tr("To now (Right)")), &QToolButton::clicked, m_plot,
            &PlotView::panToNow);
    connect(addButton(QStringLiteral("−"), tr("Show a longer time"), tr("Show a longer time (-)")),
            &QToolButton::clicked, m_plot, &PlotView::zoomOut);
    connect(addButton(QStringLiteral("+"), tr("Show a shorter time"), tr("Show a shorter time (+)")),
            &QToolButton::clicked, m_plot, &PlotView::zoomIn);
    QToolButton* const reset = addButton(tr("Fi&t"), tr("Show the newest values, all of them"),
                                         tr("Show the newest values, all of them (Home)"));
    reset->setObjectName(QStringLiteral("resetPlot"));
    connect(reset, &QToolButton::clicked, m_plot, &PlotView::resetView);
    buttons->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_buttons);
    layout->addWidget(m_plot, 1);
}

QToolButton* PlotPanel::addButton(const QString& text, const QString& name, const QString& toolTip)
{
    auto* button = new QToolButton(m_buttons);
    button->setText(text);
    button->setAccessibleName(name);
    button->setToolTip(toolTip);
    button->setFocusPolicy(Qt::StrongFocus);
    m_buttons->layout()->addWidget(button);
    return button;
}

} // namespace Velk
