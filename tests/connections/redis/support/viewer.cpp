// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "viewer.h"

#include <QFile>
#include <QTemporaryFile>

#include <algorithm>

using namespace Velk;

namespace {

std::unique_ptr<RedisLink> createLink(const QString& url, int pongTimeoutMs)
{
    const QString separator = url.contains(QLatin1Char('?')) ? QStringLiteral("&") : QStringLiteral("?");
    QString error;
    std::unique_ptr<RedisLink> link =
        RedisLink::fromUrl(url + separator + QStringLiteral("pong-timeout=") + QString::number(pongTimeoutMs), &error);
    if (!link)
        qFatal("%s", qPrintable(error));
    return link;
}

QString text(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

Viewer::Viewer(const QString& url, int pongTimeoutMs)
    : m_link(createLink(url, pongTimeoutMs))
    , m_model(new DisplayedMemoryKeyListModel(m_link.get()))
{
    m_model->setSamplingPeriod(200);
    connect(m_link.get(), &RobotLink::failed, this, [this](const QString& title, const QString& message) {
        const QString failure = title + QStringLiteral(": ") + message;
        if (failures.isEmpty() || failures.constLast() != failure)
            failures << failure;
    });
    connect(m_model, &DisplayedMemoryKeyListModel::error, this,
            [this](const QString& title, const QString& message) { errors << title + QStringLiteral(": ") + message; });
    connect(m_model, &DisplayedMemoryKeyListModel::recording, this,
            [this](bool isRecording) { changes << QStringLiteral("recording ") + text(isRecording); });
    connect(m_model, &DisplayedMemoryKeyListModel::robotConnected, this, [this](bool isConnected) {
        changes << QStringLiteral("robotConnected ") + text(isConnected);
        if (!isConnected)
            return;
        connect(m_link->memoryInterface().get(), &MemoryInterface::dataGathered, this, &Viewer::onData);
        if (!m_model->keys().isEmpty())
            m_model->startWatcher(false);
    });
}

Viewer::~Viewer()
{
    m_link->disconnect(this);
    m_model->disconnect(this);
}

void Viewer::watch(const QStringList& names)
{
    QSet<MemoryKey> keys;
    for (const QString& name : names)
        keys.insert(MemoryKey(name, QString(), UnknownNature));
    m_model->addKeys(keys);
}

void Viewer::onData(const QMap<QString, QMap<double, QVariant>>& data)
{
    ++m_batchCount;
    for (auto key = data.cbegin(); key != data.cend(); ++key) {
        QList<std::pair<double, QVariant>>& samples = m_samples[key.key()];
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample) {
            if (!samples.isEmpty() && sample.key() <= samples.constLast().first && m_disorder.isEmpty())
                m_disorder = QStringLiteral("%1 %2 after %3")
                                 .arg(key.key())
                                 .arg(sample.key(), 0, 'f', 6)
                                 .arg(samples.constLast().first, 0, 'f', 6);
            samples.append({sample.key(), sample.value()});
        }
    }
}

QList<QVariant> Viewer::values(const QString& name) const
{
    QList<QVariant> result;
    for (const auto& sample : m_samples.value(name))
        result << sample.second;
    return result;
}

QList<double> Viewer::stamps(const QString& name) const
{
    QList<double> result;
    for (const auto& sample : m_samples.value(name))
        result << sample.first;
    return result;
}

QVariant Viewer::newestValue(const QString& name) const
{
    const QSet<DisplayedMemoryKey> keys = m_model->displayedKeys();
    const auto found = std::find_if(keys.cbegin(), keys.cend(),
                                    [&name](const DisplayedMemoryKey& key) { return key.key().name() == name; });
    return found == keys.cend() || found->valueHistory().isEmpty() ? QVariant() : found->valueHistory().last();
}

bool Viewer::hasFailure(const QString& failure) const
{
    return std::any_of(failures.cbegin(), failures.cend(),
                       [&failure](const QString& reported) { return reported.contains(failure); });
}

QStringList Viewer::takeRecordedCells(const QString& name)
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
