// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "robot_bar.h"

#include <connections/links/robot_links.h>

#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace Velk {

RobotBar::RobotBar(QWidget* parent)
    : QToolBar(parent)
    , m_url(new QComboBox(this))
    , m_button(new QPushButton(this))
{
    setObjectName(QStringLiteral("robotBar"));
    setWindowTitle(tr("Robot"));

    m_url->setObjectName(QStringLiteral("robotUrl"));
    m_url->setEditable(true);
    m_url->setInsertPolicy(QComboBox::NoInsert);
    m_url->completer()->setCaseSensitivity(Qt::CaseSensitive);
    m_url->setMinimumContentsLength(22);
    m_url->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_url->setAccessibleName(tr("URL of the robot"));
    m_url->lineEdit()->setObjectName(QStringLiteral("robotUrlField"));
    m_url->lineEdit()->setAccessibleName(tr("URL of the robot"));
    m_url->lineEdit()->setPlaceholderText(tr("URL of the robot, for example sim:"));
    QStringList lines{tr("The robots that can be opened:")};
    const QList<UrlScheme> schemes = RobotLinks::schemes();
    for (const UrlScheme& scheme : schemes)
        lines << scheme.synopsis;
    m_url->setToolTip(lines.join(QLatin1Char('\n')));
    connect(m_url->lineEdit(), &QLineEdit::returnPressed, this, &RobotBar::onReturn);

    m_button->setObjectName(QStringLiteral("connectButton"));
    connect(m_button, &QPushButton::clicked, this, &RobotBar::onButton);

    auto* label = new QLabel(tr("&Robot:"), this);
    label->setBuddy(m_url);
    label->setContentsMargins(4, 0, 4, 0);
    addWidget(label);
    addWidget(m_url);
    addWidget(m_button);
    setState(RobotLink::Disconnected);
}

QString RobotBar::url() const
{
    return m_url->currentText().trimmed();
}

void RobotBar::setUrl(const QString& url)
{
    m_url->setEditText(url);
}

void RobotBar::setRecentUrls(const QStringList& urls)
{
    const QString text = m_url->currentText();
    m_url->clear();
    m_url->addItems(urls);
    m_url->setEditText(text);
}

void RobotBar::setState(RobotLink::State state)
{
    m_state = state;
    m_button->setText(state == RobotLink::Disconnected ? tr("&Connect") : tr("Dis&connect"));
}

void RobotBar::focusUrl()
{
    m_url->setFocus(Qt::ShortcutFocusReason);
    m_url->lineEdit()->selectAll();
}

void RobotBar::onButton()
{
    if (m_state == RobotLink::Disconnected)
        emit openRequested(url());
    else
        emit closeRequested();
}

void RobotBar::onReturn()
{
    // Also while another robot is open: Enter opens this one in its place.
    emit openRequested(url());
}

} // namespace Velk
