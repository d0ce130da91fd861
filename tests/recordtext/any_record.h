// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_RECORDTEXT_ANY_RECORD_H
#define TESTS_RECORDTEXT_ANY_RECORD_H

#include <recordtext/record_lines.h>

#include <QByteArray>
#include <QMap>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include <cstring>
#include <string>

namespace Velk {

/// A record file of one batch: columns, and the samples of each.
struct Table
{
    QStringList columns;
    QVector<QMap<double, QVariant>> samples;

    /// The file.
    QByteArray written() const
    {
        SamplesByColumn byColumn;
        for (const auto& column : samples)
            byColumn.push_back(column.isEmpty() ? nullptr : &column);
        const RecordCells cells = recordCells(byColumn);
        std::string text = recordHeader(columns);
        std::string line;
        for (auto row = cells.cbegin(); row != cells.cend();) {
            const auto end = endOfRow(row, cells.cend());
            makeRecordLine(&line, row->time, row, end, int(columns.size()));
            text += line;
            row = end;
        }
        return QByteArray::fromStdString(text);
    }
};

inline QString anyText(QRandomGenerator& random)
{
    static const QString alphabet =
        QString::fromUtf8("ab\"\";\n\r\t 1#\xc3\xa9\xe2\x82\xac\xef\xbb\xbf") + QChar(0x80) + QChar(0);
    QString text;
    for (int length = random.bounded(8); length > 0; --length)
        text += alphabet[random.bounded(int(alphabet.size()))];
    return text;
}

inline double anyDouble(QRandomGenerator& random)
{
    const quint64 bits = random.generate64();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return random.bounded(2) ? value : random.bounded(2000000) / 1000.0 - 1000.0;
}

inline QVariant anyValue(QRandomGenerator& random)
{
    switch (random.bounded(8)) {
    case 0:
        return QVariant();
    case 1:
        return random.bounded(2) == 1;
    case 2:
        return int(random.generate());
    case 3:
        return qulonglong(random.generate64());
    case 4:
        return anyDouble(random);
    case 5:
        return QVariant::fromValue(float(anyDouble(random)));
    case 6:
        return QVariantList{1, 2}; // a type without text
    default:
        return anyText(random);
    }
}

/// Up to five columns with up to four samples each, at times that columns share.
inline Table anyTable(QRandomGenerator& random)
{
    Table table;
    for (int columns = random.bounded(6); columns > 0; --columns) {
        QMap<double, QVariant> samples;
        for (int count = random.bounded(5); count > 0; --count)
            samples.insert(random.bounded(10) / 8.0 - 0.5, anyValue(random));
        table.columns << anyText(random);
        table.samples << samples;
    }
    return table;
}

} // namespace Velk

#endif
