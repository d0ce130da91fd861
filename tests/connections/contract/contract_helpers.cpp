// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_helpers.h"

#include <QTest>

#include <algorithm>

namespace Velk {

bool connectLink(RobotLink& link)
{
    link.open();
    return QTest::qWaitFor([&link] { return link.isConnected(); }, contractTimeoutMs);
}

BatchLog::BatchLog(MemoryInterface& memory)
{
    connect(
        &memory, &MemoryInterface::dataGathered, this,
        [this](const QMap<QString, QMap<double, QVariant>>& batch) { add(batch); }, Qt::DirectConnection);
}

QJsonArray BatchLog::values(const QString& name) const
{
    QJsonArray values;
    for (const auto& sample : m_samples.value(name))
        values.append(QJsonValue::fromVariant(sample.second));
    return values;
}

QVariant BatchLog::lastValue(const QString& name) const
{
    const QList<QPair<double, QVariant>> samples = m_samples.value(name);
    return samples.isEmpty() ? QVariant() : samples.last().second;
}

bool BatchLog::wasAlwaysOnThread(const QThread* thread) const
{
    return std::all_of(m_threads.begin(), m_threads.end(), [thread](const QThread* t) { return t == thread; });
}

void BatchLog::add(const QMap<QString, QMap<double, QVariant>>& batch)
{
    ++m_count;
    m_threads.append(QThread::currentThread());
    for (auto key = batch.begin(); key != batch.end(); ++key) {
        QList<QPair<double, QVariant>>& samples = m_samples[key.key()];
        for (auto sample = key->begin(); sample != key->end(); ++sample) {
            if (!samples.isEmpty() && !(sample.key() > samples.last().first) && m_misplacedTimeStamp.isEmpty()) {
                m_misplacedTimeStamp = QStringLiteral("%1: %2 after %3")
                                           .arg(key.key(), QString::number(sample.key(), 'f', 9),
                                                QString::number(samples.last().first, 'f', 9));
            }
            samples.append({sample.key(), sample.value()});
        }
        m_largestBatch[key.key()] = std::max(m_largestBatch.value(key.key()), static_cast<int>(key->size()));
    }
}

bool startWatching(ContractSubject& subject, MemoryInterface& memory, const BatchLog& log, const QStringList& names,
                   int watchPeriod, int gatherPeriod, int samplingPeriod)
{
    subject.setData(probe, 1);
    for (const QString& name : names)
        memory.watchKey(name, watchPeriod);
    memory.watchKey(probe, watchPeriod);
    memory.startWatcher(gatherPeriod, samplingPeriod);
    return QTest::qWaitFor([&log] { return log.sampleCount(probe) > 0; }, contractTimeoutMs);
}

bool waitForSomeBatches(ContractSubject& subject)
{
    const std::unique_ptr<RobotLink> link = subject.createLink();
    if (!connectLink(*link))
        return false;
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    const BatchLog log(*memory);
    memory->startWatcher(200, 0);
    return QTest::qWaitFor([&log] { return log.count() >= 3; }, contractTimeoutMs);
}

} // namespace Velk
