// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_APPS_VELK_VELK_RECORDING_H
#define TESTS_APPS_VELK_VELK_RECORDING_H

#include "velk_run.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVector>

/// A directory of the test's own, and the path of a recording in it. There is no such file yet.
struct RecordDirectory
{
    QTemporaryDir directory;
    QString file = directory.filePath(QStringLiteral("run.csv"));
};

inline QStringList record(const QString& file, const QString& arguments, const QString& robot = QStringLiteral("test:"))
{
    return QStringList{QStringLiteral("record"), QStringLiteral("--output"), file, QStringLiteral("--robot"), robot} +
           arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// Starts to record all keys of the test's robot into the file, and waits until the recording runs.
inline bool startRecording(VelkRun& velk, const QString& file)
{
    velk.start(record(file, QStringLiteral("--all --period 10")));
    return velk.waitForMessage(QStringLiteral("Recording 6 keys"));
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

inline QStringList filesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

/// The cells of each line, as a reader of quoted cells sees them; a last line without a line feed counts.
inline QVector<QStringList> cellsOf(const QByteArray& text)
{
    QVector<QStringList> lines;
    QStringList cells;
    QString cell;
    bool isQuoted = false;
    for (const QChar character : QString::fromUtf8(text)) {
        if (character == QLatin1Char('"')) {
            isQuoted = !isQuoted;
        } else if (!isQuoted && (character == QLatin1Char(';') || character == QLatin1Char('\n'))) {
            cells << cell;
            cell.clear();
            if (character == QLatin1Char('\n')) {
                lines << cells;
                cells.clear();
            }
        } else {
            cell += character;
        }
    }
    if (!cell.isEmpty() || !cells.isEmpty())
        lines << (cells << cell);
    return lines;
}

/// "10 lines of 3 cells", or the first line that differs.
inline QString shapeOf(const QByteArray& text)
{
    const QVector<QStringList> lines = cellsOf(text);
    if (lines.isEmpty() || !text.endsWith('\n'))
        return QStringLiteral("not a record: %1").arg(QString::fromUtf8(text.left(200)));
    for (int i = 1; i < lines.size(); ++i) {
        if (lines.at(i).size() != lines.at(0).size())
            return QStringLiteral("line %1 has %2 cells").arg(i).arg(lines.at(i).size());
    }
    return QStringLiteral("%1 lines of %2 cells").arg(lines.size()).arg(lines.at(0).size());
}

/// What the message promises: "N rows of …"; -1 without one.
inline int savedRows(const QString& messages)
{
    const auto match = QRegularExpression(QStringLiteral("velk: (\\d+) rows of \\d+ keys")).match(messages);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

#endif
