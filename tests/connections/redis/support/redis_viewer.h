// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_VIEWER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_VIEWER_H

#include <connections/redis/redis_link.h>
#include <robotconnection/memory_interface.h>

#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <memory>

/// Somebody who looks at a robot through the link: opens it, watches keys again whenever the connection is there, and
/// keeps all that is delivered.
class RedisViewer : public QObject
{
    Q_OBJECT

public:
    /// The URL must be valid. The connection is lost after `pongTimeoutMs` without an answer: longer than in daily use,
    /// so that a machine with much to do does not end connections, unless a test is about that.
    explicit RedisViewer(const QString& url, int pongTimeoutMs = 30000);

    Velk::RedisLink& link() { return *m_link; }
    boost::shared_ptr<Velk::MemoryInterface> memory() { return m_link->memoryInterface(); }

    /// Opens the link and waits until it is connected.
    bool connectToRobot();
    /// Watches the keys, now and after every reconnection, and starts the watcher.
    void watch(const QStringList& names, int samplingPeriodMs = 10);

    /// What was delivered for the key: the values as text, in the order of their time stamps, without repetitions in a
    /// row.
    QStringList changes(const QString& name) const;
    /// All of them.
    QStringList values(const QString& name) const;
    QMap<double, QVariant> samples(const QString& name) const { return m_samples.value(name); }
    /// Whether a time stamp was delivered that was not newer than all before it of the same key.
    bool hasDisorder() const { return m_hasDisorder; }
    int batchCount() const { return m_batchCount; }

    /// "connected", "lost", "disconnected": the connection manager's signals, in order.
    QStringList connectionSignals() const { return m_connectionSignals; }
    /// The messages of failed(), without repetitions.
    QStringList messages() const { return m_messages; }

    /// The names of the list, sorted; "(not finished)" when the future does not finish, "(no result)" without a result.
    static QStringList names(QFuture<QStringList> future);

private:
    void startWatching();
    void onDataGathered(const QMap<QString, QMap<double, QVariant>>& data);

    std::unique_ptr<Velk::RedisLink> m_link;
    QStringList m_watched;
    int m_samplingPeriodMs = 0;
    QMap<QString, QMap<double, QVariant>> m_samples;
    bool m_hasDisorder = false;
    int m_batchCount = 0;
    QStringList m_connectionSignals;
    QStringList m_messages;
};

#endif
