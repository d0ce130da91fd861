// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "yardsticks.h"

namespace Velk {

HashStore::HashStore(const QStringList& names)
{
    for (const QString& name : names)
        m_values.insert(name, QVariant());
}

void HashStore::take(const GatheredData& batch)
{
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        const auto value = m_values.find(samples.key());
        if (value == m_values.end() || samples->isEmpty())
            continue;
        *value = samples->last();
        emit valueChanged(samples.key(), *value);
    }
}

StandardModel::StandardModel(const QStringList& names)
    : model(int(names.size()), 2)
{
    for (int row = 0; row < names.size(); ++row) {
        model.setItem(row, 0, new QStandardItem(names[row]));
        model.setItem(row, 1, new QStandardItem());
        m_rows.insert(names[row], row);
    }
}

void StandardModel::take(const GatheredData& batch)
{
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        const auto row = m_rows.constFind(samples.key());
        if (row != m_rows.cend() && !samples->isEmpty())
            model.setData(model.index(*row, 1), samples->last(), Qt::DisplayRole);
    }
}

QHash<QString, int> columnsOf(const QStringList& names)
{
    QHash<QString, int> columns;
    for (int column = 0; column < names.size(); ++column)
        columns.insert(names[column], column);
    return columns;
}

QMap<double, Row> sortIntoRows(const GatheredData& batch, const QHash<QString, int>& columns)
{
    QMap<double, Row> rows;
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        const auto column = columns.constFind(samples.key());
        if (column == columns.cend())
            continue;
        for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample) {
            Row& row = rows[sample.key()];
            if (row.isEmpty())
                row.resize(columns.size());
            row[*column] = sample.value();
        }
    }
    return rows;
}

TextStreamWriter::TextStreamWriter(const QString& fileName, const QStringList& names)
    : m_file(fileName)
    , m_stream(&m_file)
    , m_columns(columnsOf(names))
{
    m_file.open(QIODevice::WriteOnly);
}

void TextStreamWriter::write(const GatheredData& batch)
{
    const QMap<double, Row> rows = sortIntoRows(batch, m_columns);
    if (m_origin == 0.0 && !rows.isEmpty())
        m_origin = rows.firstKey();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        m_stream.setRealNumberPrecision(6);
        m_stream << row.key() - m_origin;
        m_stream.setRealNumberPrecision(17);
        for (const QVariant& value : *row) {
            m_stream << ';';
            switch (value.userType()) {
            case QMetaType::UnknownType:
                break;
            case QMetaType::Double:
                m_stream << value.toDouble();
                break;
            case QMetaType::Int:
                m_stream << value.toInt();
                break;
            case QMetaType::Bool:
                m_stream << (value.toBool() ? "true" : "false");
                break;
            default:
                m_stream << '"' << value.toString().replace(QLatin1Char('"'), QLatin1String("\"\"")) << '"';
            }
        }
        m_stream << '\n';
    }
}

OfstreamWriter::OfstreamWriter(const QString& fileName, const QStringList& names)
    : m_stream(fileName.toStdString())
    , m_columns(columnsOf(names))
{}

void OfstreamWriter::write(const GatheredData& batch)
{
    const QMap<double, Row> rows = sortIntoRows(batch, m_columns);
    if (m_origin == 0.0 && !rows.isEmpty())
        m_origin = rows.firstKey();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        m_stream.precision(6);
        m_stream << row.key() - m_origin;
        m_stream.precision(17);
        for (const QVariant& value : *row) {
            m_stream << ';';
            switch (value.userType()) {
            case QMetaType::UnknownType:
                break;
            case QMetaType::Double:
                m_stream << value.toDouble();
                break;
            case QMetaType::Int:
                m_stream << value.toInt();
                break;
            case QMetaType::Bool:
                m_stream << (value.toBool() ? "true" : "false");
                break;
            default:
                m_stream << '"' << value.toString().replace(QLatin1Char('"'), QLatin1String("\"\"")).toStdString()
                         << '"';
            }
        }
        m_stream << '\n';
    }
}

PrintfWriter::PrintfWriter(const QString& fileName, const QStringList& names)
    : m_file(std::fopen(fileName.toLocal8Bit().constData(), "w"))
    , m_columns(columnsOf(names))
{}

PrintfWriter::~PrintfWriter()
{
    std::fclose(m_file);
}

void PrintfWriter::write(const GatheredData& batch)
{
    const QMap<double, Row> rows = sortIntoRows(batch, m_columns);
    if (m_origin == 0.0 && !rows.isEmpty())
        m_origin = rows.firstKey();
    for (auto row = rows.cbegin(); row != rows.cend(); ++row) {
        std::fprintf(m_file, "%g", row.key() - m_origin);
        for (const QVariant& value : *row) {
            switch (value.userType()) {
            case QMetaType::UnknownType:
                std::fprintf(m_file, ";");
                break;
            case QMetaType::Double:
                std::fprintf(m_file, ";%.17g", value.toDouble());
                break;
            case QMetaType::Int:
                std::fprintf(m_file, ";%d", value.toInt());
                break;
            case QMetaType::Bool:
                std::fprintf(m_file, ";%s", value.toBool() ? "true" : "false");
                break;
            default:
                std::fprintf(m_file, ";\"%s\"",
                             value.toString().replace(QLatin1Char('"'), QLatin1String("\"\"")).toUtf8().constData());
            }
        }
        std::fprintf(m_file, "\n");
    }
}

} // namespace Velk
