// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_CONTRACT_CONTRACT_HELPERS_H
#define TESTS_CONNECTIONS_CONTRACT_CONTRACT_HELPERS_H

#include "contract_subject.h"

#include <robotconnection/memory_interface.h>

#include <QJsonArray>
#include <QJsonValue>
#include <QMap>
#include <QObject>
#include <QPair>
#include <QStringList>
#include <QThread>

namespace Velk {

/// Generous: a slow machine that runs many tests at once must not fail one.
constexpr int contractTimeoutMs = 60000;

#define CONTRACT_TRY_VERIFY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, contractTimeoutMs)
#define CONTRACT_TRY_COMPARE(actual, expected) QTRY_COMPARE_WITH_TIMEOUT(actual, expected, contractTimeoutMs)

/// Opens the link and waits until it is connected.
bool connectLink(RobotLink& link);

/// Everything that one memory interface delivers.
class BatchLog : public QObject
{
public:
    explicit BatchLog(MemoryInterface& memory);

    int count() const { return m_count; }
    /// All names that had a sample, sorted.
    QStringList names() const { return m_samples.keys(); }
    /// How many samples the key had.
    int sampleCount(const QString& name) const { return static_cast<int>(m_samples.value(name).size()); }
    /// The values of the key, in the order of delivery, as JSON has them: 1 and 1.0 are one number there.
    QJsonArray values(const QString& name) const;
    /// The number of samples of the key in each batch that had any.
    int largestBatchOf(const QString& name) const { return m_largestBatch.value(name); }
    /// Whether the time stamps of every key ascend strictly, over all batches; else the key and the stamps.
    QString misplacedTimeStamp() const { return m_misplacedTimeStamp; }
    /// Invalid before the first one.
    QVariant lastValue(const QString& name) const;
    bool wasAlwaysOnThread(const QThread* thread) const;

private:
    void add(const QMap<QString, QMap<double, QVariant>>& batch);

    int m_count = 0;
    QMap<QString, QList<QPair<double, QVariant>>> m_samples;
    QMap<QString, int> m_largestBatch;
    QString m_misplacedTimeStamp;
    QList<QThread*> m_threads;
};

inline const QString probe = QStringLiteral("Contract/Probe");

/// Watches the names and the data key `probe` with the period, starts the watcher, and waits until the probe's
/// first value is delivered: what the robot writes from then on is watched for certain.
bool startWatching(ContractSubject& subject, MemoryInterface& memory, const BatchLog& log, const QStringList& names,
                   int watchPeriod = 20, int gatherPeriod = 200, int samplingPeriod = 0);

/// Waits, on a link of its own, until the robot has delivered some batches: time enough for a delivery that must not
/// happen to be noticed.
bool waitForSomeBatches(ContractSubject& subject);

} // namespace Velk

#endif
