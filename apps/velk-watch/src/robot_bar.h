// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_ROBOT_BAR_H
#define APPS_VELK_WATCH_ROBOT_BAR_H

#include <connections/link/robot_link.h>

#include <QToolBar>

class QComboBox;
class QPushButton;

namespace Velk {

/// The robot's URL, the URLs that were opened last, and the button that connects and disconnects.
class RobotBar : public QToolBar
{
    Q_OBJECT

public:
    explicit RobotBar(QWidget* parent = nullptr);

    QString url() const;
    void setUrl(const QString& url);
    void setRecentUrls(const QStringList& urls);
    void setState(RobotLink::State state);
    void focusUrl();

Q_SIGNALS:
    void openRequested(const QString& url);
    void closeRequested();

private:
    void onButton();
    void onReturn();

    QComboBox* m_url;
    QPushButton* m_button;
    RobotLink::State m_state = RobotLink::Disconnected;
};

} // namespace Velk

#endif
