// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_VIEWER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_VIEWER_H

#include <connections/redis/redis_link.h>
#include <robotconnection/memory_interface.h>

#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <memory>

/// A receiver of what a link delivers: opens it, watches keys again whenever the connection is there, and keeps all
/// that arrives.
class RedisViewer : public QObject
{
    Q_OBJECT

public:
    /// The connection counts as lost after `pongTimeoutMs` without an answer: later than in daily use, so that a
    /// machine with much to do does not end connections, unless a test is about that. A URL that is not valid ends the
    /// test program.
    explicit RedisViewer(const QString& url, int pongTimeoutMs = 60000);
    ~RedisViewer() override;

    Velk::RedisLink& link() { return *m_link; }
    boost::shared_ptr<Velk::MemoryInterface> memory() { return m_link->memoryInterface(); }

    /// Opens the link and waits until it is connected.
    bool connectToRobot();
    /// Watches the keys, now and after every reconnection, and starts the watcher.
    void watch(const QStringList& names, int samplingPeriodMs = 10);

    /// What was delivered for the key, in the order of delivery.
    QList<QVariant> values(const QString& name) const { return m_samples.value(name).values; }
    QList<double> stamps(const QString& name) const { return m_samples.value(name).stamps; }
    /// The values as text.
    QStringList texts(const QString& name) const;
    /// The same without repetitions in a row.
    QStringList changes(const QString& name) const;
    /// "B 2 after 3": the first sample that was not newer than the one before it of the same key; empty when there was
    /// none. A sample that is delivered twice is such a one.
    QString disorder() const { return m_disorder; }
    int batchCount() const { return m_batchCount; }

    /// "connected", "lost", "disconnected": the connection manager's signals, in order.
    QStringList connectionSignals() const { return m_connectionSignals; }
    /// "title: message" of everything that failed, in order, without repetitions.
    QStringList failures() const { return m_failures; }
    /// Whether the text occurs in any of the failures.
    bool hasFailure(const QString& text) const;

    /// The names of the list, sorted; "(not finished)" when the future does not finish, "(no result)" without a result.
    static QStringList names(QFuture<QStringList> future);

private:
    struct Samples
    {
        QList<double> stamps;
        QList<QVariant> values;
    };

    void onConnected();
    void startWatching();
    void onDataGathered(const QMap<QString, QMap<double, QVariant>>& data);

    std::unique_ptr<Velk::RedisLink> m_link;
    QStringList m_watched;
    int m_samplingPeriodMs = 0;
    QMap<QString, Samples> m_samples;
    QString m_disorder;
    int m_batchCount = 0;
    QStringList m_connectionSignals;
    QStringList m_failures;
};

#endif
