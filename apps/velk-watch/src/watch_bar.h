// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_WATCH_BAR_H
#define APPS_VELK_WATCH_WATCH_BAR_H

#include "recording_control.h"

#include <QKeySequence>
#include <QToolBar>

class QAction;
class QSpinBox;

namespace Velk {

/// The tool bar for the watched keys: sampling with its period, the frozen table, recording. Its
/// actions are in the menus of the window too, and their shortcuts work in the whole window.
class WatchBar : public QToolBar
{
    Q_OBJECT

public:
    explicit WatchBar(QWidget* window);

    /// Checked while the robot is to sample; at first it is.
    QAction* sampleAction() const { return m_sample; }
    /// Checked while the table is to keep its values.
    QAction* freezeAction() const { return m_freeze; }
    /// Checked while a recording runs; triggered to start or stop one.
    QAction* recordAction() const { return m_record; }
    QAction* saveAction() const { return m_save; }
    QAction* discardAction() const { return m_discard; }

    /// The period that the user asks for, in milliseconds.
    int period() const;
    void setPeriod(int periodMs);

    /// Enables and checks the actions of a recording in this state, on a robot that is connected or not.
    void setRecordingState(RecordingControl::State state, bool isConnected);

Q_SIGNALS:
    void periodChanged(int periodMs);

private:
    QAction* createAction(const QString& name, const QString& text, const QKeySequence& shortcut,
                          const QString& toolTip);

    QAction* m_sample;
    QAction* m_freeze;
    QAction* m_record;
    QAction* m_save;
    QAction* m_discard;
    QSpinBox* m_period;
};

} // namespace Velk

#endif
