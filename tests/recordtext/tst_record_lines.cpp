// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_lines.h>

#include <QTest>

using namespace Velk;

namespace {

using Samples = QMap<double, QVariant>;

const double notANumber = qQNaN();

/// The lines of a batch whose times count from 0.
QByteArray lines(const QVector<Samples>& columns)
{
    SamplesByColumn samples;
    for (const Samples& column : columns)
        samples.push_back(column.isEmpty() ? nullptr : &column);
    const RecordCells cells = recordCells(samples);
    QByteArray text;
    std::string line;
    for (auto row = cells.cbegin(); row != cells.cend();) {
        const auto end = endOfRow(row, cells.cend());
        makeRecordLine(&line, row->time, row, end, int(columns.size()));
        text += QByteArray::fromStdString(line);
        row = end;
    }
    return text;
}

} // namespace

class TestRecordLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theHeaderNamesTheColumns();
    void aBatchMakesItsRows_data();
    void aBatchMakesItsRows();
    void aLineReplacesTheOneBefore();
};

void TestRecordLines::theHeaderNamesTheColumns()
{
    QCOMPARE(recordHeader({}), std::string("Time\n"));
    QCOMPARE(recordHeader({"A", "B\"x", ""}), std::string("Time;\"A\";\"B\"\"x\";\"\"\n"));
}

void TestRecordLines::aBatchMakesItsRows_data()
{
    QTest::addColumn<QVector<Samples>>("columns");
    QTest::addColumn<QByteArray>("rows");

    QTest::newRow("no column") << QVector<Samples>{} << QByteArray();
    QTest::newRow("no sample") << QVector<Samples>{{}, {}} << QByteArray();
    QTest::newRow("one row") << QVector<Samples>{{{1, 5}}, {{1, 6}}} << QByteArray("1;5;6\n");
    QTest::newRow("empty cells") << QVector<Samples>{{}, {{1, 5}}, {}} << QByteArray("1;;5;\n");
    QTest::newRow("rows ascend by time") << QVector<Samples>{{{2, 5}, {4, 6}}, {{1, 7}, {3, 8}}}
                                         << QByteArray("1;;7\n2;5;\n3;;8\n4;6;\n");
    QTest::newRow("equal times share a row")
        << QVector<Samples>{{{1, 5}, {2, 6}}, {{2, 7}}} << QByteArray("1;5;\n2;6;7\n");
    QTest::newRow("times that are no number share the last row")
        << QVector<Samples>{{{notANumber, 5}}, {{1, 6}}, {{notANumber, 7}}, {{-1, 8}}}
        << QByteArray("-1;;;;8\n1;;6;;\nnan;5;;7;\n");
    QTest::newRow("infinite times come first and last")
        << QVector<Samples>{{{qInf(), 5}}, {{1, 6}}, {{-qInf(), 7}}} << QByteArray("-inf;;;7\n1;;6;\ninf;5;;\n");
}

void TestRecordLines::aBatchMakesItsRows()
{
    QFETCH(QVector<Samples>, columns);
    QFETCH(QByteArray, rows);

    QCOMPARE(lines(columns), rows);
}

void TestRecordLines::aLineReplacesTheOneBefore()
{
    const QVariant value = 5;
    const RecordCells cells{{1.0, 0, &value}};
    std::string line = "a line that was longer";

    makeRecordLine(&line, 1.0, cells.cbegin(), cells.cend(), 1);

    QCOMPARE(line, std::string("1;5\n"));
}

QTEST_APPLESS_MAIN(TestRecordLines)
#include "tst_record_lines.moc"
