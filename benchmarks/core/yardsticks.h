// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef BENCHMARKS_CORE_YARDSTICKS_H
#define BENCHMARKS_CORE_YARDSTICKS_H

#include "bench_robot.h"

#include <QFile>
#include <QHash>
#include <QStandardItemModel>
#include <QTextStream>
#include <QVector>

#include <cstdio>
#include <fstream>

namespace Velk {

// Code for the same work as a Qt or C++ developer writes it without this library.

/// Newest values in a hash, with a signal for each change.
class HashStore : public QObject
{
    Q_OBJECT

public:
    explicit HashStore(const QStringList& names);
    void take(const GatheredData& batch);

Q_SIGNALS:
    void valueChanged(const QString& name, const QVariant& value);

private:
    QHash<QString, QVariant> m_values;
};

/// Newest values in the rows of Qt's standard model.
class StandardModel
{
public:
    explicit StandardModel(const QStringList& names);
    void take(const GatheredData& batch);

    QStandardItemModel model;

private:
    QHash<QString, int> m_rows;
};

/// The rows of a batch. Every writer below writes one line for each time stamp.
using Row = QVector<QVariant>;
QMap<double, Row> sortIntoRows(const GatheredData& batch, const QHash<QString, int>& columns);
QHash<QString, int> columnsOf(const QStringList& names);

class TextStreamWriter
{
public:
    TextStreamWriter(const QString& fileName, const QStringList& names);
    void write(const GatheredData& batch);

private:
    QFile m_file;
    QTextStream m_stream;
    QHash<QString, int> m_columns;
    double m_origin = 0.0;
};

class OfstreamWriter
{
public:
    OfstreamWriter(const QString& fileName, const QStringList& names);
    void write(const GatheredData& batch);

private:
    std::ofstream m_stream;
    QHash<QString, int> m_columns;
    double m_origin = 0.0;
};

class PrintfWriter
{
public:
    PrintfWriter(const QString& fileName, const QStringList& names);
    ~PrintfWriter();
    void write(const GatheredData& batch);

private:
    std::FILE* m_file;
    QHash<QString, int> m_columns;
    double m_origin = 0.0;
};

} // namespace Velk

#endif
