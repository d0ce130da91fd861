// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "any_record.h"
#include "support/fuzz_time.h"

#include <recordtext/record_reader.h>

#include <QBuffer>
#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QTest>

#include <limits>

using namespace Velk;

namespace {

using Samples = QMap<double, QVariant>;

QString cellOf(const QVariant& value)
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

/// Each row as "time|cell|cell …", made from the values without the writer.
QStringList rowsOf(const Table& table)
{
    QMap<double, QStringList> rows;
    for (int column = 0; column < table.samples.size(); ++column) {
        for (auto sample = table.samples[column].cbegin(); sample != table.samples[column].cend(); ++sample) {
            QStringList& row = rows[sample.key()];
            while (row.size() < table.columns.size())
                row << QString();
            row[column] = cellOf(*sample);
        }
    }
    QStringList result;
    for (auto row = rows.cbegin(); row != rows.cend(); ++row)
        result << (QStringList{QString::number(row.key(), 'g', 6)} + *row).join('|');
    return result;
}

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
    QCOMPARE(rowsRead(reader), rowsOf(table));
    QCOMPARE(reader.errorString(), QString());
    QCOMPARE(reader.unfinishedLine(), QByteArray());
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
        compare(anyTable(random));
        if (QTest::currentTestFailed())
            return;
    }
}

QTEST_APPLESS_MAIN(TestRoundTrip)
#include "tst_round_trip.moc"
