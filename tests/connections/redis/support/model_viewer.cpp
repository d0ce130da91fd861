// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "model_viewer.h"

#include <QFile>
#include <QTemporaryFile>

#include <algorithm>

using namespace Velk;

namespace {

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

ModelViewer::ModelViewer(const QString& url, int pongTimeoutMs)
    : RedisViewer(url, pongTimeoutMs)
    , m_model(new DisplayedMemoryKeyListModel(&link()))
{
    m_model->setSamplingPeriod(200);
    connect(m_model, &DisplayedMemoryKeyListModel::error, this,
            [this](const QString& title, const QString& message) { errors << title + QStringLiteral(": ") + message; });
    connect(m_model, &DisplayedMemoryKeyListModel::recording, this,
            [this](bool isRecording) { states << QStringLiteral("recording ") + text(isRecording); });
    connect(m_model, &DisplayedMemoryKeyListModel::robotConnected, this, [this](bool isConnected) {
        states << QStringLiteral("robotConnected ") + text(isConnected);
        if (isConnected && !m_model->keys().isEmpty())
            m_model->startWatcher(false);
    });
}

ModelViewer::~ModelViewer()
{
    m_model->disconnect(this);
}

void ModelViewer::display(const QStringList& names)
{
    QSet<MemoryKey> keys;
    for (const QString& name : names)
        keys.insert(MemoryKey(name, QString(), UnknownNature));
    m_model->addKeys(keys);
}

QVariant ModelViewer::newestValue(const QString& name) const
{
    const QSet<DisplayedMemoryKey> keys = m_model->displayedKeys();
    const auto found = std::find_if(keys.cbegin(), keys.cend(),
                                    [&name](const DisplayedMemoryKey& key) { return key.key().name() == name; });
    return found == keys.cend() || found->valueHistory().isEmpty() ? QVariant() : found->valueHistory().last();
}

QStringList ModelViewer::takeRecordedCells(const QString& name)
{
    QTemporaryFile* const record = m_model->takeRecordFile();
    if (!record)
        return {QStringLiteral("no record file")};
    QFile file(record->fileName());
    file.open(QIODevice::ReadOnly);
    QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    const qsizetype column =
        lines.takeFirst().split(QLatin1Char(';')).indexOf(QLatin1Char('"') + name + QLatin1Char('"'));
    QStringList cells;
    for (const QString& line : std::as_const(lines)) {
        const QString cell = line.split(QLatin1Char(';')).value(column);
        if (!cell.isEmpty())
            cells << cell;
    }
    return cells;
}
