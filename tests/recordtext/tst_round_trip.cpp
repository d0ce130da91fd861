// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fuzz_time.h"

#include <recordtext/record_lines.h>
#include <recordtext/record_reader.h>

#include <QBuffer>
#include <QRandomGenerator>
#include <QtTest>

#include <cstring>
#include <limits>

using namespace Velk;

namespace {

using Samples = QMap<double, QVariant>;

/// A record file of one batch: columns, and the samples of each.
struct Table
{
    QStringList columns;
    QVector<Samples> samples;

    QByteArray written() const
    {
        SamplesByColumn byColumn;
        for (const Samples& column : samples)
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

    /// Each row as "time|cell|cell …", made from the values without the writer.
    QStringList rows() const
    {
        QMap<double, QStringList> rows;
        for (int column = 0; column < samples.size(); ++column) {
            for (auto sample = samples[column].cbegin(); sample != samples[column].cend(); ++sample) {
                QStringList& row = rows[sample.key()];
                while (row.size() < columns.size())
                    row << QString();
                row[column] = cellOf(*sample);
            }
        }
        QStringList result;
        for (auto row = rows.cbegin(); row != rows.cend(); ++row)
            result << (QStringList{QString::number(row.key(), 'g', 6)} + *row).join('|');
        return result;
    }

private:
    static QString cellOf(const QVariant& value)
    {
        switch (value.userType()) {
        case QMetaType::UnknownType:
        case QMetaType::VoidStar:
            return QString();
        case QMetaType::Bool:
            return "?" + value.toString();
        case QMetaType::Int:
        case QMetaType::ULongLong:
        case QMetaType::LongLong:
        case QMetaType::Double:
        case QMetaType::Float:
            return "#" + value.toString();
        default:
            return "'" + value.toString();
        }
    }
};

QStringList rowsRead(RecordReader& reader)
{
    const QString marks[] = {"", "#", "?", "'"};
    QStringList result;
    RecordRow row;
    while (reader.readRow(&row)) {
        QStringList cells{QString::number(row.time, 'g', 6)};
        for (const RecordField& cell : row.cells)
            cells << marks[cell.type] + cell.text;
        result << cells.join('|');
    }
    return result;
}

void compare(const Table& table)
{
    QByteArray file = table.written();
    QBuffer buffer(&file);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    RecordReader reader(&buffer);

    QCOMPARE(reader.columns(), table.columns);
    QCOMPARE(rowsRead(reader), table.rows());
    QCOMPARE(reader.errorString(), QString());
    QCOMPARE(reader.unfinishedLine(), QByteArray());
}

QString anyText(QRandomGenerator& random)
{
    static const QString alphabet =
        QString::fromUtf8("ab\"\";\n\r\t 1#\xc3\xa9\xe2\x82\xac\xef\xbb\xbf") + QChar(0x80) + QChar(0);
    QString text;
    for (int length = random.bounded(8); length > 0; --length)
        text += alphabet[random.bounded(int(alphabet.size()))];
    return text;
}

double anyDouble(QRandomGenerator& random)
{
    const quint64 bits = random.generate64();
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return random.bounded(2) ? value : random.bounded(2000000) / 1000.0 - 1000.0;
}

QVariant anyValue(QRandomGenerator& random)
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

} // namespace

/// The reader returns the values that the writer wrote.
class TestRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void specialValuesAreReadBack_data();
    void specialValuesAreReadBack();
    void anyTableIsReadBack();
};

void TestRoundTrip::specialValuesAreReadBack_data()
{
    using Limits = std::numeric_limits<double>;
    QTest::addColumn<QVariant>("value");
    QTest::newRow("invalid") << QVariant();
    QTest::newRow("false") << QVariant(false);
    QTest::newRow("the greatest integer") << QVariant(std::numeric_limits<qulonglong>::max());
    QTest::newRow("the least integer") << QVariant(std::numeric_limits<qlonglong>::min());
    QTest::newRow("negative zero") << QVariant(-0.0);
    QTest::newRow("infinity") << QVariant(Limits::infinity());
    QTest::newRow("minus infinity") << QVariant(-Limits::infinity());
    QTest::newRow("not a number") << QVariant(Limits::quiet_NaN());
    QTest::newRow("the greatest double") << QVariant(Limits::max());
    QTest::newRow("the least double above zero") << QVariant(Limits::denorm_min());
    QTest::newRow("empty text") << QVariant(QString(""));
    QTest::newRow("quotes") << QVariant(QString("\"\"\""));
    QTest::newRow("separators and line ends") << QVariant(QString(";\n\r\n;"));
    QTest::newRow("a zero character") << QVariant(QString(QChar(0)));
    QTest::newRow("a byte-order mark") << QVariant(QString(QChar(0xfeff)));
    QTest::newRow("a text that looks like a truth value") << QVariant(QString("true"));
    QTest::newRow("a text longer than a piece of the reader") << QVariant(QString(200000, QChar(0xe9)));
}

void TestRoundTrip::specialValuesAreReadBack()
{
    QFETCH(QVariant, value);

    compare({{"A", "B"}, {{{0.5, value}}, {{0.5, 1}, {0.75, value}}}});
    compare({{value.toString()}, {{{1.0, value}}}});
}

void TestRoundTrip::anyTableIsReadBack()
{
    QRandomGenerator random(QRandomGenerator::global()->generate());
    const QDeadlineTimer time = fuzzTime();
    while (!time.hasExpired()) {
        Table table;
        for (int columns = random.bounded(6); columns > 0; --columns) {
            Samples samples;
            for (int count = random.bounded(5); count > 0; --count)
                samples.insert(random.bounded(10) / 8.0 - 0.5, anyValue(random));
            table.columns << anyText(random);
            table.samples << samples;
        }

        compare(table);
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_APPLESS_MAIN(TestRoundTrip)
#include "tst_round_trip.moc"
