// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_RECORDING_ROBOT_H
#define TESTS_SUPPORT_RECORDING_ROBOT_H

#include "fake_robot.h"
#include "key_text.h"

#include <QFile>

namespace Velk {

/// A displayed key set on a connected robot, and its record file.
struct RecordingRobot
{
    explicit RecordingRobot(const QStringList& names)
        : model(&connection)
    {
        connection.connected = true;
        // One call for each key: the columns have the order of the resulting set.
        for (const QString& name : names)
            model.addKeys(keySet({name}));
        logSignals(model, connection);
        connection.takeLog();
    }

    QStringList takeLog() { return connection.takeLog(); }
    void deliver(const Batch& batch) { connection.memory->deliver(batch); }

    /// The names of the displayed keys in the order of the columns.
    QStringList columns() const
    {
        QStringList result;
        const QSet<DisplayedMemoryKey> keys = model.displayedKeys();
        for (const DisplayedMemoryKey& displayed : keys)
            result << displayed.key().name();
        return result;
    }

    /// The header line of the present columns.
    QByteArray header() const
    {
        QByteArray line = "Time";
        const QStringList columnNames = columns();
        for (const QString& name : columnNames)
            line += ";\"" + name.toUtf8() + '"';
        return line + '\n';
    }

    /// The content of the record file, including the bytes that are still buffered.
    QByteArray recorded() const
    {
        QTemporaryFile* const file = recordFile();
        if (!file)
            return "no record file";
        file->flush();
        QFile onDisk(file->fileName());
        return onDisk.open(QIODevice::ReadOnly) ? onDisk.readAll() : "cannot be read";
    }

    /// The data lines, without the header.
    QByteArray rows() const
    {
        const QByteArray text = recorded();
        return text.mid(text.indexOf('\n') + 1);
    }

    QTemporaryFile* recordFile() const { return model.findChild<QTemporaryFile*>(); }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
};

} // namespace Velk

#endif
