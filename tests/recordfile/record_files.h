// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_RECORDFILE_RECORD_FILES_H
#define TESTS_RECORDFILE_RECORD_FILES_H

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryFile>

namespace Velk {

/// A whole record of two rows.
inline const QByteArray record = "Time;\"Arm/Position\"\n0;1.5\n0.2;1.75\n";

/// A record file as the displayed key set leaves it after a recording, closed, but in the given directory.
inline QTemporaryFile* recordFile(const QString& directory, const QByteArray& content)
{
    auto* file = new QTemporaryFile(QDir(directory).filePath(QStringLiteral("MemoryWatcher")));
    if (!file->open() || file->write(content) != content.size())
        qFatal("The test cannot write its record file.");
    file->close();
    return file;
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline QStringList namesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace Velk

#endif
