// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "any_record.h"
#include "support/fuzz_time.h"

#include <recordtext/record_field.h>
#include <recordtext/record_reader.h>
#include <recordtext/record_scan.h>

#include <QBuffer>
#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Velk;

namespace {

/// Delivers pieces of random lengths.
class PiecewiseDevice : public QBuffer
{
public:
    explicit PiecewiseDevice(quint32 seed)
        : m_random(seed)
    {}

protected:
    qint64 readData(char* data, qint64 size) override
    {
        return QBuffer::readData(data, std::min<qint64>(size, 1 + m_random.bounded(20)));
    }

private:
    QRandomGenerator m_random;
};

/// Everything that a reader returned for a file.
struct Reading
{
    QStringList columns;
    std::vector<RecordRow> rows;
    qint64 errorLine = 0;
    QString error;
    bool hasError = false;
    QByteArray unfinishedLine;
    bool isReadAfterEnd = false; ///< readRow() returned a row after it had returned none
};

Reading read(QIODevice* device)
{
    RecordReader reader(device);
    Reading reading;
    reading.columns = reader.columns();
    RecordRow row;
    while (reader.readRow(&row))
        reading.rows.push_back(row);
    reading.errorLine = reader.errorLine();
    reading.error = reader.errorString();
    reading.unfinishedLine = reader.unfinishedLine();
    reading.hasError = reader.hasError();
    reading.isReadAfterEnd = reader.readRow(&row);
    return reading;
}

/// The complete lines of a file, each with its line feed.
QList<QByteArray> lines(const QByteArray& file)
{
    QList<QByteArray> result;
    RecordScan scan;
    const char* const end = file.constData() + file.size();
    for (const char* line = file.constData(); const char* const next = scan.addLine(line, end); line = next)
        result << QByteArray(line, int(next - line));
    return result;
}

QByteArray quoted(const QString& text)
{
    std::string field;
    appendQuoted(&field, text);
    return QByteArray::fromStdString(field);
}

/// The fields behind the first one, with their separators and the line feed, as they are in the file.
QByteArray cellsOf(const RecordRow& row)
{
    QByteArray result;
    for (const RecordField& cell : row.cells)
        result += ';' + (cell.type == RecordField::Text ? quoted(cell.text) : cell.text.toUtf8());
    return result + '\n';
}

QByteArray headerOf(const Reading& reading)
{
    QByteArray result = "Time";
    for (const QString& column : reading.columns)
        result += ';' + quoted(column);
    return result + '\n';
}

bool isSameTime(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

/// What holds for every file: what was read is what the file holds, and the reading ended at an error or at the end.
void compareWithFile(const Reading& reading, const QByteArray& file)
{
    const QList<QByteArray> fileLines = lines(file);
    const int readLines = int(reading.rows.size()) + 1;
    QCOMPARE(reading.errorLine > 0, !reading.error.isEmpty());
    QCOMPARE(reading.hasError, !reading.error.isEmpty());
    QVERIFY(!reading.isReadAfterEnd);
    if (reading.error.isEmpty()) {
        QCOMPARE(readLines, std::max(int(fileLines.size()), 1));
        QCOMPARE(reading.unfinishedLine, file.mid(int(fileLines.join().size())));
    } else {
        QVERIFY(reading.unfinishedLine.isEmpty());
        QVERIFY(reading.errorLine <= file.count('\n') + 1);
        // The line of the error is not before the end of the last line that was read.
        const bool hasHeader = !reading.columns.isEmpty() || !reading.rows.empty();
        const QByteArray readText = hasHeader ? fileLines.mid(0, readLines).join() : QByteArray();
        QVERIFY(reading.errorLine > readText.count('\n'));
    }

    if (!reading.columns.isEmpty() || !reading.rows.empty())
        QCOMPARE(headerOf(reading), fileLines[0]);
    for (int row = 0; row + 1 < readLines; ++row) {
        const QByteArray cells = cellsOf(reading.rows[std::size_t(row)]);
        const QByteArray& line = fileLines[row + 1];
        QVERIFY2(line.endsWith(cells), line.constData());
        QVERIFY(isSameTime(line.left(int(line.size() - cells.size())).toDouble(), reading.rows[std::size_t(row)].time));
    }
}

/// Reads the file twice, at once and in pieces of random lengths.
void readAndCompare(const QByteArray& file, quint32 seed)
{
    QBuffer whole;
    whole.setData(file);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    PiecewiseDevice pieces(seed);
    pieces.setData(file);
    QVERIFY(pieces.open(QIODevice::ReadOnly | QIODevice::Unbuffered));

    const Reading reading = read(&whole);
    const Reading readingOfPieces = read(&pieces);

    compareWithFile(reading, file);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(readingOfPieces.columns, reading.columns);
    QCOMPARE(readingOfPieces.rows.size(), reading.rows.size());
    QCOMPARE(readingOfPieces.error, reading.error);
    QCOMPARE(readingOfPieces.errorLine, reading.errorLine);
    QCOMPARE(readingOfPieces.unfinishedLine, reading.unfinishedLine);
}

/// Reads random files for a third of the time that is set, because three tests do. A failure prints the file.
template <typename MakeFile>
void readManyFiles(const MakeFile& makeFile)
{
    QRandomGenerator random(QRandomGenerator::global()->generate());
    const QDeadlineTimer time(fuzzTime().remainingTime() / 3);
    while (!time.hasExpired()) {
        const QByteArray file = makeFile(random);
        readAndCompare(file, random.generate());
        if (QTest::currentTestFailed()) {
            qWarning("The file is, in hexadecimal digits: %s", file.toHex().constData());
            return;
        }
    }
}

QByteArray anyBytes(QRandomGenerator& random, int mostBytes)
{
    static const QByteArray alphabet("01.e+-;;;\"\"\"\n\nnaif true\xc3\xa9\0", 26);
    QByteArray bytes;
    for (int size = random.bounded(mostBytes + 1); size > 0; --size)
        bytes += random.bounded(10) ? alphabet[random.bounded(int(alphabet.size()))] : char(random.bounded(256));
    return bytes;
}

/// Removes, replaces, inserts or repeats some bytes, once or several times.
QByteArray damaged(QByteArray file, QRandomGenerator& random)
{
    for (int damages = 1 + random.bounded(4); damages > 0; --damages) {
        const int begin = random.bounded(int(file.size()) + 1);
        const int size = random.bounded(int(file.size()) - begin + 1);
        switch (random.bounded(5)) {
        case 0:
            file.truncate(begin);
            break;
        case 1:
            file.remove(begin, std::min(size, 3));
            break;
        case 2:
            file.replace(begin, std::min(size, 3), anyBytes(random, 3));
            break;
        case 3:
            file.insert(begin, anyBytes(random, 3));
            break;
        case 4:
            file.insert(begin, file.mid(begin, size));
            break;
        }
    }
    return file;
}

} // namespace

/// Files that are no whole records: the reader reads them to their end or to an error.
class TestDamagedRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyBytesAreReadToTheirEndOrToAnError();
    void aDamagedRecordIsReadToItsEndOrToAnError();
    void theRestOfAnotherRecordIsReadToItsEndOrToAnError();
    void aLongFileIsReadPieceByPiece();
};

void TestDamagedRecord::anyBytesAreReadToTheirEndOrToAnError()
{
    readManyFiles([](QRandomGenerator& random) {
        return QByteArray(random.bounded(4) ? "Time;\"A\"\n" : "Time") + anyBytes(random, 40);
    });
}

void TestDamagedRecord::aDamagedRecordIsReadToItsEndOrToAnError()
{
    readManyFiles([](QRandomGenerator& random) { return damaged(anyTable(random).written(), random); });
}

void TestDamagedRecord::theRestOfAnotherRecordIsReadToItsEndOrToAnError()
{
    readManyFiles([](QRandomGenerator& random) {
        const QByteArray rest = anyTable(random).written();
        return anyTable(random).written() + rest.mid(random.bounded(int(rest.size())));
    });
}

void TestDamagedRecord::aLongFileIsReadPieceByPiece()
{
    const QByteArray line = "0;" + QByteArray(96, '1') + '\n';
    QBuffer file;
    file.setData("Time;\"A\"\n" + line.repeated(100000));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    RecordReader reader(&file);
    RecordRow row;
    qint64 returned = 9;
    qint64 mostHeld = 0;

    while (reader.readRow(&row)) {
        returned += line.size();
        mostHeld = std::max(mostHeld, file.pos() - returned);
    }

    QCOMPARE(returned, file.size());
    QVERIFY2(mostHeld <= 1 << 16, qPrintable(QString::number(mostHeld)));
}

QTEST_APPLESS_MAIN(TestDamagedRecord)
#include "tst_damaged_record.moc"
