// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_viewer.h"

#include <QFuture>
#include <QTest>

#include <algorithm>

using namespace Velk;

RedisViewer::RedisViewer(const QString& url, int pongTimeoutMs)
{
    const QChar separator = url.contains(QLatin1Char('?')) ? QLatin1Char('&') : QLatin1Char('?');
    QString error;
    m_link = RedisLink::fromUrl(url + separator + QStringLiteral("pong-timeout=%1").arg(pongTimeoutMs), &error);
    if (!m_link)
        qFatal("%s: %s", qPrintable(url), qPrintable(error));

    // First of all slots: what the connection delivers at once must find its receiver.
    connect(m_link.get(), &RedisLink::connectionEstablished, this, [this] {
        m_connectionSignals.append(QStringLiteral("connected"));
        startWatching();
    });
    connect(m_link.get(), &RedisLink::connectionLost, this,
            [this] { m_connectionSignals.append(QStringLiteral("lost")); });
    connect(m_link.get(), &RedisLink::disconnected, this,
            [this] { m_connectionSignals.append(QStringLiteral("disconnected")); });
    connect(m_link.get(), &RedisLink::failed, this, [this](const QString& title, const QString& message) {
        const QString text = title + QStringLiteral(" | ") + message;
        if (!m_messages.contains(text))
            m_messages.append(text);
    });
}

bool RedisViewer::connectToRobot()
{
    m_link->open();
    return QTest::qWaitFor([this] { return m_link->isConnected(); }, 60000);
}

void RedisViewer::watch(const QStringList& names, int samplingPeriodMs)
{
    m_watched = names;
    m_samplingPeriodMs = samplingPeriodMs;
    if (m_link->isConnected())
        startWatching();
}

void RedisViewer::startWatching()
{
    if (m_watched.isEmpty())
        return;
    const boost::shared_ptr<MemoryInterface> interface = memory();
    connect(interface.get(), &MemoryInterface::dataGathered, this, &RedisViewer::onDataGathered, Qt::UniqueConnection);
    interface->unwatchAll();
    for (const QString& name : m_watched)
        interface->watchKey(name, 100);
    interface->startWatcher(20, m_samplingPeriodMs);
}

void RedisViewer::onDataGathered(const QMap<QString, QMap<double, QVariant>>& data)
{
    ++m_batchCount;
    for (auto key = data.cbegin(); key != data.cend(); ++key) {
        QMap<double, QVariant>& samples = m_samples[key.key()];
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample) {
            m_hasDisorder = m_hasDisorder || (!samples.isEmpty() && samples.lastKey() >= sample.key());
            samples.insert(sample.key(), sample.value());
        }
    }
}

QStringList RedisViewer::values(const QString& name) const
{
    QStringList texts;
    const QMap<double, QVariant> samples = m_samples.value(name);
    for (const QVariant& value : samples)
        texts.append(value.toString());
    return texts;
}

QStringList RedisViewer::changes(const QString& name) const
{
    QStringList texts = values(name);
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    return texts;
}

QStringList RedisViewer::names(QFuture<QStringList> future)
{
    if (!QTest::qWaitFor([&future] { return future.isFinished(); }, 60000))
        return {QStringLiteral("(not finished)")};
    if (future.resultCount() != 1)
        return {QStringLiteral("(no result)")};
    QStringList names = future.result();
    names.sort();
    return names;
}
