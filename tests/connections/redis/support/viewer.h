// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_VIEWER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_VIEWER_H

#include <connections/redis/redis_link.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QVariant>

#include <memory>

/// What an application makes of a link: the displayed keys' model on it, sampled every 200 ms, the watcher started on
/// every connection, and a book of everything that arrived.
class Viewer : public QObject
{
    Q_OBJECT

public:
    /// The connection counts as lost after `pongTimeoutMs` without an answer: later than in daily use, so that a
    /// machine with much to do does not end connections, unless a test is about that. A URL that is not valid ends the
    /// test program.
    explicit Viewer(const QString& url, int pongTimeoutMs = 60000);
    ~Viewer() override;

    Velk::RedisLink& link() { return *m_link; }
    Velk::DisplayedMemoryKeyListModel& model() { return *m_model; }

    /// Displays the keys, as a user does.
    void watch(const QStringList& names);

    /// Every sample that was delivered, by key, in the order of delivery.
    QList<QVariant> values(const QString& name) const;
    QList<double> stamps(const QString& name) const;
    QVariant newestValue(const QString& name) const;
    /// "B 2 after 3": the first sample that was not newer than the one before it of the same key; empty when there was
    /// none. A sample that is delivered twice is such a one.
    QString disorder() const { return m_disorder; }
    int batchCount() const { return m_batchCount; }

    /// "robotConnected true", "robotConnected false", "recording true" …, in order.
    QStringList changes;
    /// "title: message" of everything that failed, in order, without repetitions in a row.
    QStringList failures;
    /// "title: message" of every error of the model.
    QStringList errors;

    /// Whether the text occurs in any of the failures.
    bool hasFailure(const QString& text) const;

    /// Takes the record file: the cells in the key's column that are not empty, in order.
    QStringList takeRecordedCells(const QString& name);

private:
    void onData(const QMap<QString, QMap<double, QVariant>>& data);

    std::unique_ptr<Velk::RedisLink> m_link;
    Velk::DisplayedMemoryKeyListModel* m_model; // the link's child
    QMap<QString, QList<std::pair<double, QVariant>>> m_samples;
    QString m_disorder;
    int m_batchCount = 0;
};

#endif
