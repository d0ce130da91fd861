// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "watch_bar.h"

#include <QAction>
#include <QLabel>
#include <QSpinBox>

namespace Velk {

WatchBar::WatchBar(QWidget* window)
    : QToolBar(window)
    , m_period(new QSpinBox(this))
{
    setObjectName(QStringLiteral("watchBar"));
    setWindowTitle(tr("Watching"));

    m_sample = createAction(QStringLiteral("watcherAction"), tr("&Sample"), Qt::Key_F5,
                            tr("Sample the watched keys, or pause the sampling (F5)"));
    m_sample->setCheckable(true);
    m_sample->setChecked(true);
    m_freeze = createAction(QStringLiteral("freezeAction"), tr("Free&ze table"), Qt::Key_F6,
                            tr("Keep the values of the table as they are; sampling and recording go on (F6)"));
    m_freeze->setCheckable(true);
    m_record = createAction(QStringLiteral("recordAction"), tr("Reco&rd"), QKeySequence(tr("Ctrl+R")),
                            tr("Record every value of the watched keys, or stop recording (Ctrl+R)"));
    m_record->setCheckable(true);
    m_save = createAction(QStringLiteral("saveAction"), tr("Sa&ve recording…"), QKeySequence(QKeySequence::Save),
                          tr("Save the recording to a file (Ctrl+S)"));
    m_discard = createAction(QStringLiteral("discardAction"), tr("&Discard recording"), {}, {});

    m_period->setObjectName(QStringLiteral("period"));
    m_period->setAccessibleName(tr("Sampling period in milliseconds"));
    m_period->setRange(1, 99999990);
    m_period->setStepType(QAbstractSpinBox::AdaptiveDecimalStepType);
    m_period->setSuffix(tr(" ms"));
    m_period->setValue(1000);
    m_period->setKeyboardTracking(false);
    connect(m_period, qOverload<int>(&QSpinBox::valueChanged), this, &WatchBar::periodChanged);
    auto* label = new QLabel(tr("&Period:"), this);
    label->setContentsMargins(4, 0, 4, 0);
    label->setBuddy(m_period);

    addAction(m_sample);
    addWidget(label);
    addWidget(m_period);
    addSeparator();
    addAction(m_freeze);
    addSeparator();
    addAction(m_record);
    addAction(m_save);
    // Otherwise Tab does not reach the buttons of a tool bar.
    const QList<QWidget*> buttons = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* button : buttons) {
        if (button->focusPolicy() == Qt::NoFocus && button->inherits("QToolButton"))
            button->setFocusPolicy(Qt::TabFocus);
    }
}

QAction* WatchBar::createAction(const QString& name, const QString& text, const QKeySequence& shortcut,
                                const QString& toolTip)
{
    auto* action = new QAction(text, parentWidget());
    action->setObjectName(name);
    action->setShortcut(shortcut);
    if (!toolTip.isEmpty())
        action->setToolTip(toolTip);
    // A shortcut works where its action is, also while the tool bar is hidden.
    parentWidget()->addAction(action);
    return action;
}

int WatchBar::period() const
{
    return m_period->value();
}

void WatchBar::setPeriod(int periodMs)
{
    m_period->setValue(periodMs);
}

void WatchBar::setRecordingState(RecordingControl::State state, bool isConnected)
{
    m_record->setChecked(state == RecordingControl::Recording);
    m_record->setEnabled(state == RecordingControl::Recording || isConnected);
    m_save->setEnabled(state != RecordingControl::Idle);
    m_discard->setEnabled(state == RecordingControl::Unsaved);
}

} // namespace Velk
