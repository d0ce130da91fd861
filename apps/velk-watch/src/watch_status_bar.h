// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_WATCH_STATUS_BAR_H
#define APPS_VELK_WATCH_WATCH_STATUS_BAR_H

#include <QStatusBar>

class QLabel;

namespace Velk {

/// The status bar of the window: connection, sampling period and recording.
class WatchStatusBar : public QStatusBar
{
    Q_OBJECT

public:
    explicit WatchStatusBar(QWidget* parent = nullptr);

    void setTexts(const QString& connection, const QString& period, const QString& recording);
    /// Shows for some seconds where a recording was saved.
    void showSaved(const QString& fileName);

private:
    QLabel* createLabel(const QString& name, const QString& accessibleName);

    QLabel* m_connection;
    QLabel* m_period;
    QLabel* m_recording;
};

} // namespace Velk

#endif
