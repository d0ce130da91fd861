// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "watch_settings.h"

#include <algorithm>

namespace Velk {

namespace {

const QString geometryEntry = QStringLiteral("window/geometry");
const QString windowStateEntry = QStringLiteral("window/state");
const QString splitterStateEntry = QStringLiteral("window/splitter");
const QString tableStateEntry = QStringLiteral("window/table");
const QString themeEntry = QStringLiteral("window/theme");
const QString catalogueTreeEntry = QStringLiteral("catalogue/tree");
const QString recentRobotsEntry = QStringLiteral("robots/recent");
const QString samplingPeriodEntry = QStringLiteral("watch/period");
const QString watchedKeysEntry = QStringLiteral("watch/keys");
const QString nameEntry = QStringLiteral("name");
const QString colorEntry = QStringLiteral("color");
const QString shownEntry = QStringLiteral("shown");
const QString recordingFolderEntry = QStringLiteral("recording/folder");

// The settings file of the user is organisation/application.ini.
const QString organisation = QStringLiteral("memorykeymodel");
const QString application = QStringLiteral("velk-watch");

QString fileNameOrOwn(const QString& fileName)
{
    if (!fileName.isEmpty())
        return fileName;
    return QSettings(QSettings::IniFormat, QSettings::UserScope, organisation, application).fileName();
}

} // namespace

WatchSettings::WatchSettings(const QString& fileName)
    : m_settings(fileNameOrOwn(fileName), QSettings::IniFormat)
{}

bool WatchSettings::sync()
{
    m_settings.sync();
    return m_settings.status() == QSettings::NoError;
}

QByteArray WatchSettings::geometry() const
{
    return m_settings.value(geometryEntry).toByteArray();
}

void WatchSettings::setGeometry(const QByteArray& geometry)
{
    m_settings.setValue(geometryEntry, geometry);
}

QByteArray WatchSettings::windowState() const
{
    return m_settings.value(windowStateEntry).toByteArray();
}

void WatchSettings::setWindowState(const QByteArray& state)
{
    m_settings.setValue(windowStateEntry, state);
}

QByteArray WatchSettings::splitterState() const
{
    return m_settings.value(splitterStateEntry).toByteArray();
}

void WatchSettings::setSplitterState(const QByteArray& state)
{
    m_settings.setValue(splitterStateEntry, state);
}

QByteArray WatchSettings::tableState() const
{
    return m_settings.value(tableStateEntry).toByteArray();
}

void WatchSettings::setTableState(const QByteArray& state)
{
    m_settings.setValue(tableStateEntry, state);
}

QStringList WatchSettings::recentRobots() const
{
    return m_settings.value(recentRobotsEntry).toStringList();
}

void WatchSettings::setRecentRobots(const QStringList& urls)
{
    m_settings.setValue(recentRobotsEntry, urls);
}

QList<WatchedKey> WatchSettings::watchedKeys() const
{
    QList<WatchedKey> keys;
    const int count = m_settings.beginReadArray(watchedKeysEntry);
    for (int index = 0; index < count; ++index) {
        m_settings.setArrayIndex(index);
        const QString name = m_settings.value(nameEntry).toString();
        if (!name.isEmpty())
            keys.append(
                {name, QColor(m_settings.value(colorEntry).toString()), m_settings.value(shownEntry, true).toBool()});
    }
    m_settings.endArray();
    return keys;
}

void WatchSettings::setWatchedKeys(const QList<WatchedKey>& keys)
{
    // Otherwise the entries of a longer list stay in the file.
    m_settings.remove(watchedKeysEntry);
    m_settings.beginWriteArray(watchedKeysEntry, int(keys.size()));
    for (int index = 0; index < keys.size(); ++index) {
        const WatchedKey& key = keys.at(index);
        m_settings.setArrayIndex(index);
        m_settings.setValue(nameEntry, key.name);
        m_settings.setValue(colorEntry, key.color.isValid() ? key.color.name() : QString());
        m_settings.setValue(shownEntry, key.isShown);
    }
    m_settings.endArray();
}

int WatchSettings::samplingPeriod() const
{
    return std::max(0, m_settings.value(samplingPeriodEntry).toInt());
}

void WatchSettings::setSamplingPeriod(int periodMs)
{
    m_settings.setValue(samplingPeriodEntry, periodMs);
}

ColorTheme::Name WatchSettings::theme() const
{
    return ColorTheme::fromString(m_settings.value(themeEntry).toString());
}

void WatchSettings::setTheme(ColorTheme::Name theme)
{
    m_settings.setValue(themeEntry, ColorTheme::toString(theme));
}

bool WatchSettings::isCatalogueTree() const
{
    return m_settings.value(catalogueTreeEntry, true).toBool();
}

void WatchSettings::setCatalogueTree(bool isTree)
{
    m_settings.setValue(catalogueTreeEntry, isTree);
}

QString WatchSettings::recordingFolder() const
{
    return m_settings.value(recordingFolderEntry).toString();
}

void WatchSettings::setRecordingFolder(const QString& folder)
{
    m_settings.setValue(recordingFolderEntry, folder);
}

} // namespace Velk
