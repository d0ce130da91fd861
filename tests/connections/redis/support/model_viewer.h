// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_MODEL_VIEWER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_MODEL_VIEWER_H

#include "redis_viewer.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>

/// A viewer with the displayed keys' model between itself and the link, as an application has it: sampled every 200 ms,
/// the watcher started on every connection.
class ModelViewer : public RedisViewer
{
    Q_OBJECT

public:
    explicit ModelViewer(const QString& url, int pongTimeoutMs = 60000);
    ~ModelViewer() override;

    Velk::DisplayedMemoryKeyListModel& model() { return *m_model; }

    /// Displays the keys, as a user does.
    void display(const QStringList& names);
    QVariant newestValue(const QString& name) const;
    /// Takes the record file: the cells in the key's column that are not empty, in order.
    QStringList takeRecordedCells(const QString& name);

    /// "robotConnected true", "robotConnected false", "recording true" …: the model's signals, in order.
    QStringList states;
    /// "title: message" of every error of the model.
    QStringList errors;

private:
    Velk::DisplayedMemoryKeyListModel* m_model; // the link's child
};

#endif
