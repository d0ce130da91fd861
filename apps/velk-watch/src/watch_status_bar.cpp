// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "watch_status_bar.h"

#include <QDir>
#include <QLabel>

namespace Velk {

namespace {

constexpr int savedMs = 5000;

} // namespace

WatchStatusBar::WatchStatusBar(QWidget* parent)
    : QStatusBar(parent)
    , m_connection(createLabel(QStringLiteral("connectionStatus"), tr("Connection")))
    , m_period(createLabel(QStringLiteral("periodStatus"), tr("Sampling period")))
    , m_recording(createLabel(QStringLiteral("recordingStatus"), tr("Recording")))
{
    addWidget(m_connection);
    addWidget(m_period, 1);
    addPermanentWidget(m_recording);
}

QLabel* WatchStatusBar::createLabel(const QString& name, const QString& accessibleName)
{
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAccessibleName(accessibleName);
    label->setContentsMargins(6, 0, 10, 0);
    return label;
}

void WatchStatusBar::setTexts(const QString& connection, const QString& period, const QString& recording)
{
    m_connection->setText(connection);
    m_period->setText(period);
    m_recording->setText(recording);
}

void WatchStatusBar::showSaved(const QString& fileName)
{
    showMessage(tr("Saved to %1").arg(QDir::toNativeSeparators(fileName)), savedMs);
}

} // namespace Velk
