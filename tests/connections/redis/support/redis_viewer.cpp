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
    connect(m_link.get(), &RedisLink::connectionEstablished, this, &RedisViewer::onConnected);
    connect(m_link.get(), &RedisLink::connectionLost, this,
            [this] { m_connectionSignals.append(QStringLiteral("lost")); });
    connect(m_link.get(), &RedisLink::disconnected, this,
            [this] { m_connectionSignals.append(QStringLiteral("disconnected")); });
    connect(m_link.get(), &RedisLink::failed, this, [this](const QString& title, const QString& message) {
        const QString failure = title + QStringLiteral(": ") + message;
        if (!m_failures.contains(failure))
            m_failures.append(failure);
    });
}

RedisViewer::~RedisViewer()
{
    m_link->disconnect(this);
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

void RedisViewer::onConnected()
{
    m_connectionSignals.append(QStringLiteral("connected"));
    connect(memory().get(), &MemoryInterface::dataGathered, this, &RedisViewer::onDataGathered);
    if (!m_watched.isEmpty())
        startWatching();
}

void RedisViewer::startWatching()
{
    const boost::shared_ptr<MemoryInterface> interface = memory();
    interface->unwatchAll();
    for (const QString& name : std::as_const(m_watched))
        interface->watchKey(name, 100);
    interface->startWatcher(20, m_samplingPeriodMs);
}

void RedisViewer::onDataGathered(const QMap<QString, QMap<double, QVariant>>& data)
{
    ++m_batchCount;
    for (auto key = data.cbegin(); key != data.cend(); ++key) {
        Samples& samples = m_samples[key.key()];
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample) {
            if (!samples.stamps.isEmpty() && sample.key() <= samples.stamps.constLast() && m_disorder.isEmpty())
                m_disorder = QStringLiteral("%1 %2 after %3")
                                 .arg(key.key())
                                 .arg(sample.key(), 0, 'f', 6)
                                 .arg(samples.stamps.constLast(), 0, 'f', 6);
            samples.stamps.append(sample.key());
            samples.values.append(sample.value());
        }
    }
}

QStringList RedisViewer::texts(const QString& name) const
{
    QStringList result;
    const QList<QVariant> all = values(name);
    for (const QVariant& value : all)
        result.append(value.toString());
    return result;
}

QStringList RedisViewer::changes(const QString& name) const
{
    QStringList result = texts(name);
    result.erase(std::unique(result.begin(), result.end()), result.end());
    return result;
}

bool RedisViewer::hasFailure(const QString& text) const
{
    return std::any_of(m_failures.cbegin(), m_failures.cend(),
                       [&text](const QString& failure) { return failure.contains(text); });
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
