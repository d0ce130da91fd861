// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_reader.h>

#include <QBuffer>
#include <QTest>

using namespace Velk;

namespace {

/// Delivers one byte at a time.
class SlowDevice : public QBuffer
{
protected:
    qint64 readData(char* data, qint64 size) override { return QBuffer::readData(data, qMin<qint64>(size, 1)); }
};

/// Fails after the given bytes.
class FailingDevice : public QBuffer
{
protected:
    qint64 readData(char* data, qint64 size) override
    {
        if (pos() < this->size())
            return QBuffer::readData(data, size);
        setErrorString("the disk was removed");
        return -1;
    }
};

QString cellText(const RecordField& cell)
{
    const QString marks[] = {"", "#", "?", "'"};
    return marks[cell.type] + cell.text;
}

/// "time|cell|cell …" of each row: #number, ?truth value, 'text; at the end "!line: error", or "~unfinished line".
QStringList rows(RecordReader& reader)
{
    QStringList result;
    RecordRow row;
    while (reader.readRow(&row)) {
        QStringList cells{QString::number(row.time)};
        for (const RecordField& cell : row.cells)
            cells << cellText(cell);
        result << cells.join('|');
    }
    if (reader.hasError())
        result << QString("!%1: %2").arg(reader.errorLine()).arg(reader.errorString());
    if (!reader.unfinishedLine().isEmpty())
        result << '~' + QString::fromUtf8(reader.unfinishedLine());
    return result;
}

QStringList rows(const QByteArray& file)
{
    QBuffer buffer;
    buffer.setData(file);
    buffer.open(QIODevice::ReadOnly);
    RecordReader reader(&buffer);
    return rows(reader);
}

const char* const example = "Time;\"Arm/Elbow/Position\";\"Status\"\n"
                            "0;0.25;\"ready\"\n"
                            "0.2;0.5;\n"
                            "0.4;;\"say \"\"hello\"\"\"\n";
const QStringList exampleRows{"0|#0.25|'ready", "0.2|#0.5|", "0.4||'say \"hello\""};

} // namespace

class TestRecordReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theExampleOfTheFormatIsRead();
    void piecesAreReadLikeTheWhole();
    void columnsAreTheNamesOfTheHeader_data();
    void columnsAreTheNamesOfTheHeader();
    void cellsAreReadByTheirForm_data();
    void cellsAreReadByTheirForm();
    void rowsMayBeLongerOrShorterThanTheHeader();
    void anUnfinishedLastLineIsReturnedApart_data();
    void anUnfinishedLastLineIsReturnedApart();
    void aLineThatBreaksTheFormatEndsTheReading_data();
    void aLineThatBreaksTheFormatEndsTheReading();
    void aDeviceThatFailsIsAnError();
};

void TestRecordReader::theExampleOfTheFormatIsRead()
{
    QBuffer buffer;
    buffer.setData(example);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    RecordReader reader(&buffer);

    QCOMPARE(reader.columns(), (QStringList{"Arm/Elbow/Position", "Status"}));
    QCOMPARE(rows(reader), exampleRows);
    QVERIFY(!reader.hasError());
    QCOMPARE(reader.errorLine(), qint64(0));
}

void TestRecordReader::piecesAreReadLikeTheWhole()
{
    SlowDevice device;
    device.setData(example);
    QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    RecordReader reader(&device);

    QCOMPARE(reader.columns(), (QStringList{"Arm/Elbow/Position", "Status"}));
    QCOMPARE(rows(reader), exampleRows);
}

void TestRecordReader::columnsAreTheNamesOfTheHeader_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QStringList>("columns");

    QTest::newRow("none") << QByteArray("Time\n") << QStringList();
    QTest::newRow("one") << QByteArray("Time;\"A\"\n") << QStringList{"A"};
    QTest::newRow("an empty name") << QByteArray("Time;\"\"\n") << QStringList{""};
    QTest::newRow("separator, quote and line feed")
        << QByteArray("Time;\"a;b\"\"c\nd\";\"e\"\n") << QStringList{"a;b\"c\nd", "e"};
    QTest::newRow("UTF-8") << QByteArray("Time;\"Gr\xc3\xb6\xc3\x9f"
                                         "e\"\n")
                           << QStringList{QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                                            "e")};
    QTest::newRow("a byte-order mark inside a name")
        << QByteArray("Time;\"\xef\xbb\xbf\"\n") << QStringList{QString(QChar(0xfeff))};
    QTest::newRow("not written to its end") << QByteArray("Time;\"A") << QStringList();
    QTest::newRow("an empty file") << QByteArray() << QStringList();
}

void TestRecordReader::columnsAreTheNamesOfTheHeader()
{
    QFETCH(QByteArray, header);
    QFETCH(QStringList, columns);
    QBuffer buffer;
    buffer.setData(header);
    QVERIFY(buffer.open(QIODevice::ReadOnly));

    const RecordReader reader(&buffer);

    QCOMPARE(reader.columns(), columns);
    QVERIFY(!reader.hasError());
}

void TestRecordReader::cellsAreReadByTheirForm_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("row");

    QTest::newRow("no cell") << QByteArray("0\n") << "0";
    QTest::newRow("empty") << QByteArray("0;\n") << "0|";
    QTest::newRow("integer, with all digits") << QByteArray("0;18446744073709551615\n") << "0|#18446744073709551615";
    QTest::newRow("negative") << QByteArray("0;-7\n") << "0|#-7";
    QTest::newRow("fraction") << QByteArray("0;0.1\n") << "0|#0.1";
    QTest::newRow("exponent") << QByteArray("0;1e+05;-2.5e-10\n") << "0|#1e+05|#-2.5e-10";
    QTest::newRow("not finite") << QByteArray("0;inf;-inf;nan\n") << "0|#inf|#-inf|#nan";
    QTest::newRow("truth values") << QByteArray("0;true;false\n") << "0|?true|?false";
    QTest::newRow("text") << QByteArray("0;\"x\"\n") << "0|'x";
    QTest::newRow("empty text") << QByteArray("0;\"\"\n") << "0|'";
    QTest::newRow("text that looks like a number") << QByteArray("0;\"7\"\n") << "0|'7";
    QTest::newRow("quotes only") << QByteArray("0;\"\"\"\"\"\"\n") << "0|'\"\"";
    QTest::newRow("separator and line feed in a text") << QByteArray("0;\"a;b\nc\"\n") << "0|'a;b\nc";
    QTest::newRow("time with an exponent") << QByteArray("1.23457e+06;7\n") << "1.23457e+06|#7";
    QTest::newRow("negative time") << QByteArray("-0.5;7\n") << "-0.5|#7";
    QTest::newRow("time that is not finite") << QByteArray("-inf;7\n") << "-inf|#7";
}

void TestRecordReader::cellsAreReadByTheirForm()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, row);

    QCOMPARE(rows("Time;\"A\"\n" + line), QStringList{row});
}

void TestRecordReader::rowsMayBeLongerOrShorterThanTheHeader()
{
    QCOMPARE(rows("Time;\"A\"\n0;1;2\n1\n"), (QStringList{"0|#1|#2", "1"}));
}

void TestRecordReader::anUnfinishedLastLineIsReturnedApart_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("half a row") << QByteArray("1;");
    QTest::newRow("no line feed") << QByteArray("1;2");
    QTest::newRow("inside a text") << QByteArray("1;\"x\ny");
    QTest::newRow("inside a character") << QByteArray("1;\"\xc3");
}

void TestRecordReader::anUnfinishedLastLineIsReturnedApart()
{
    QFETCH(QByteArray, rest);
    QBuffer buffer;
    buffer.setData("Time;\"A\"\n0;1\n" + rest);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    RecordReader reader(&buffer);
    RecordRow row;

    QVERIFY(reader.readRow(&row));
    QVERIFY(!reader.readRow(&row));

    QVERIFY(!reader.hasError());
    QCOMPARE(reader.unfinishedLine(), rest);
}

void TestRecordReader::aLineThatBreaksTheFormatEndsTheReading_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("rowsAndError");

    const auto add = [](const char* name, const QByteArray& file, const QStringList& rowsAndError) {
        QTest::newRow(name) << file << rowsAndError;
    };
    const QString notARecord = "the file does not begin with \"Time\", so it is not a record file";
    add("another file", "name,value\n", {"!1: " + notARecord});
    add("another first column", "Times;\"A\"\n", {"!1: " + notARecord});
    add("a byte-order mark", "\xef\xbb\xbfTime;\"A\"\n", {"!1: " + notARecord});
    add("another file without an end of a line", "%PDF", {"!1: " + notARecord});
    add("a name without quotes", "Time;\"A\nB\";C\n", {"!2: the name of a column is not quoted"});
    add("a name that is not UTF-8", "Time;\"\xff\"\n", {"!1: the name of a column is not UTF-8"});
    add("text after the quotes of a name", "Time;\"A\"x\n",
        {"!1: a quoted text is followed by neither a semicolon nor the end of the line"});
    add("no time", "Time;\"A\"\n0;1\n;2\n3;4\n", {"0|#1", "!3: the time is not a number"});
    add("an empty line", "Time;\"A\"\n\n0;1\n", {"!2: the time is not a number"});
    add("a quoted time", "Time;\"A\"\n\"0\";1\n", {"!2: the time is not a number"});
    add("a time without digits after the point", "Time;\"A\"\n1.;1\n", {"!2: the time is not a number"});
    add("a time with a blank", "Time;\"A\"\n 1;1\n", {"!2: the time is not a number"});
    add("a time beyond all doubles", "Time;\"A\"\n1e+999;1\n", {"!2: the time is not a number"});
    const QString badCell = "a cell is neither a number nor \"true\", \"false\" or quoted";
    add("a text without quotes", "Time;\"A\"\n0;\"x\ny\"\n1;ready\n", {"0|'x\ny", "!4: " + badCell});
    add("a carriage return", "Time;\"A\"\n0;1\r\n", {"!2: " + badCell});
    add("a number with an exponent without sign", "Time;\"A\"\n0;1e5\n", {"!2: " + badCell});
    add("a number with a plus sign", "Time;\"A\"\n0;+1\n", {"!2: " + badCell});
    add("a number with a comma", "Time;\"A\"\n0;1,5\n", {"!2: " + badCell});
    add("a negative NaN", "Time;\"A\"\n0;-nan\n", {"!2: " + badCell});
    add("a zero byte", QByteArray("Time;\"A\"\n0;1") + '\0' + "\n", {"!2: " + badCell});
    add("a quote inside a field", "Time;\"A\"\n0;x\"\n\"\n",
        {"!2: a quote is inside a field that does not begin with one"});
    add("text after the quotes of a cell", "Time;\"A\";\"B\"\n0;\"x\n\";\"y\"z\n",
        {"!3: a quoted text is followed by neither a semicolon nor the end of the line"});
    add("a text that is not UTF-8", "Time;\"A\"\n0;\"\xc3\"\n", {"!2: a text is not UTF-8"});
    add("the rest of a longer recording in the same file",
        "Time;\"B\"\n0;\"a long first recording\"\n1;2\nmiddle\";3\n",
        {"0|'a long first recording", "1|#2", "~middle\";3\n"});
}

void TestRecordReader::aLineThatBreaksTheFormatEndsTheReading()
{
    QFETCH(QByteArray, file);
    QFETCH(QStringList, rowsAndError);

    QCOMPARE(rows(file), rowsAndError);
}

void TestRecordReader::aDeviceThatFailsIsAnError()
{
    FailingDevice device;
    device.setData("Time;\"A\"\n0;1\n1;");
    QVERIFY(device.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    RecordReader reader(&device);

    QCOMPARE(rows(reader), (QStringList{"0|#1", "!3: the file cannot be read: the disk was removed"}));
}

QTEST_APPLESS_MAIN(TestRecordReader)
#include "tst_record_reader.moc"
