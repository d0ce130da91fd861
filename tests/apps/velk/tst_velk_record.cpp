// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

QStringList record(const QString& file, const QString& arguments, const QString& robot = QStringLiteral("test:"))
{
    return QStringList{QStringLiteral("record"), QStringLiteral("--output"), file, QStringLiteral("--robot"), robot} +
           arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The test cannot write its file.");
}

QStringList filesIn(const QString& directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

// The cells of each line, as a reader of quoted cells sees them; a last line without a line feed counts.
QVector<QStringList> cellsOf(const QByteArray& text)
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

// "10 lines of 3 cells", or the first line that differs.
QString shapeOf(const QByteArray& text)
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

// What the message promises: "N rows of …"; -1 without one.
int savedRows(const QString& messages)
{
    const auto match = QRegularExpression(QStringLiteral("velk: (\\d+) rows of \\d+ keys")).match(messages);
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

} // namespace

class TestVelkRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordingIsSavedWhenItsTimeIsOver();
    void everyRowHasAsManyCellsAsTheHeader();
    void thisComputerIsRecorded();
    void aRecordingToAnotherFileSystemIsSaved();
    void aPeriodIsSettledBeforeTheRecordingBegins_data();
    void aPeriodIsSettledBeforeTheRecordingBegins();
    void aKeyThatIsNotListedHasAnEmptyColumn();
    void ctrlCLeavesAUsableFile_data();
    void ctrlCLeavesAUsableFile();
    void aTerminationSignalLeavesAUsableFile();
    void aTerminalShowsTheProgress();
    void aRecordingIsSavedWhenNobodyReadsItsMessages();
    void anExistingFileIsKept();
    void anExistingFileIsReplacedWithForce();
    void aFileThatComesUpMeanwhileIsKept();
    void aDirectoryThatGoesAwayLeavesTheRecordingInItsTemporaryFile();
    void aLostConnectionSavesWhatThereIs();
    void aLostConnectionWithNowhereToSaveIsBothTold();
    void aFullDiskSavesTheCompleteRows();
    void aFullDiskThatOnlyClosingFindsSavesTheCompleteRows();
    void aRecordFileThatCannotBeMadeIsAnError();
};

void TestVelkRecord::aRecordingIsSavedWhenItsTimeIsOver()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;

    QCOMPARE(velk.run(record(file, QStringLiteral("Arm/Elbow/Position --period 10 --for 1"))), 0);

    const QByteArray content = contentOf(file);
    QVERIFY2(content.startsWith("Time;\"Arm/Elbow/Position\"\n0;1.5\n"), content.constData());
    QVERIFY(savedRows(velk.messages()) > 0);
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 2 cells").arg(savedRows(velk.messages()) + 1));
    QCOMPARE(filesIn(velk.temporaryDirectory()), QStringList());
    QCOMPARE(velk.output(), QString());
}

void TestVelkRecord::everyRowHasAsManyCellsAsTheHeader()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(record(file, QStringLiteral("Extra/* --period 10 --for 2"), QStringLiteral("sim:?keys=1000"))),
             0);

    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 1001 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecord::thisComputerIsRecorded()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(record(file, QStringLiteral("Host/Cpu/0/Load Host/Memory/* --period 200 --for 2"),
                             QStringLiteral("host:"))),
             0);

    QVERIFY2(contentOf(file).startsWith("Time;"), contentOf(file).constData());
    QVERIFY2(contentOf(file).contains("\"Host/Cpu/0/Load\""), contentOf(file).constData());
}

void TestVelkRecord::aRecordingToAnotherFileSystemIsSaved()
{
    QTemporaryDir directory(QStringLiteral("/dev/shm/record-XXXXXX"));
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;

    QCOMPARE(velk.run(record(file, QStringLiteral("--all --period 10 --for 0.5"))), 0);

    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 7 cells").arg(savedRows(velk.messages()) + 1));
    QCOMPARE(filesIn(directory.path()), QStringList{QStringLiteral("run.csv")});
    QCOMPARE(filesIn(velk.temporaryDirectory()), QStringList());
}

void TestVelkRecord::aPeriodIsSettledBeforeTheRecordingBegins_data()
{
    QTest::addColumn<QString>("robot");
    QTest::addColumn<QString>("period");

    QTest::newRow("real time") << QStringLiteral("test:") << QStringLiteral("6 keys every 10 ms");
    QTest::newRow("no real time") << QStringLiteral("test:?no-real-time") << QStringLiteral("6 keys every 200 ms");
    QTest::newRow("real time, reported late") << QStringLiteral("tardy:") << QStringLiteral("1 keys every 10 ms");
}

void TestVelkRecord::aPeriodIsSettledBeforeTheRecordingBegins()
{
    QFETCH(QString, robot);
    QFETCH(QString, period);
    QTemporaryDir directory;
    VelkRun velk;

    QCOMPARE(velk.run(record(directory.filePath(QStringLiteral("run.csv")),
                             QStringLiteral("--all --period 10 --for 0.1"), robot)),
             0);

    QVERIFY2(velk.messages().contains(QStringLiteral("Recording ") + period), qPrintable(velk.messages()));
}

void TestVelkRecord::aKeyThatIsNotListedHasAnEmptyColumn()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;

    QCOMPARE(velk.run(record(file, QStringLiteral("Foot Base/Odometer --period 10 --for 1"))), 0);

    const QVector<QStringList> lines = cellsOf(contentOf(file));
    QVERIFY(lines.size() > 1);
    const int column = int(lines.at(0).indexOf(QStringLiteral("Foot")));
    QVERIFY(column > 0);
    QCOMPARE(lines.at(1).at(column), QString());
    QCOMPARE(lines.at(1).at(3 - column), QStringLiteral("42"));
    QVERIFY2(velk.messages().contains(QStringLiteral("does not list Foot")), qPrintable(velk.messages()));
}

void TestVelkRecord::ctrlCLeavesAUsableFile_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");

    QTest::newRow("as the user wants it to end") << QString() << 0;
    QTest::newRow("before the time is over") << QStringLiteral(" --for 1000") << 130;
}

void TestVelkRecord::ctrlCLeavesAUsableFile()
{
    QFETCH(QString, arguments);
    QFETCH(int, status);
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkTerminal velk;
    velk.start(record(file, QStringLiteral("--all --period 10") + arguments));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d* rows")), qPrintable(velk.text()));
    QCOMPARE(filesIn(directory.path()), QStringList()); // the file is complete before its name appears

    velk.typeCtrlC();

    QCOMPARE(velk.end(), status);
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecord::aTerminationSignalLeavesAUsableFile()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;
    velk.start(record(file, QStringLiteral("--all --period 10")));
    QVERIFY2(velk.waitForMessage(QStringLiteral("Recording 6 keys")), qPrintable(velk.messages()));

    velk.sendSignal(SIGTERM);
    velk.sendSignal(SIGINT); // an impatient user does no harm

    QCOMPARE(velk.end(), 0);
    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 7 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecord::aTerminalShowsTheProgress()
{
    QTemporaryDir directory;
    VelkTerminal velk;
    velk.start(record(directory.filePath(QStringLiteral("run.csv")), QStringLiteral("--all --period 10")));

    QVERIFY2(velk.waitFor(QStringLiteral(
                 "\r\x1b\\[Krecording \\d+\\.\\d s, [1-9]\\d* rows, 6 keys, [\\d.]+ k?B\r\x1b\\[Krecording")),
             qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkRecord::aRecordingIsSavedWhenNobodyReadsItsMessages()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    QProcess shell;
    shell.start(
        QStringLiteral("/bin/sh"),
        QStringList{QStringLiteral("-c"),
                    QStringLiteral("exec 3>&1; { \"$0\" \"$@\" 2>&1 >/dev/null; echo \"status $?\" >&3; } | true"),
                    testVelkProgram} +
            record(file, QStringLiteral("--all --period 10 --for 0.5")));

    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.readAllStandardOutput(), QByteArray("status 0\n"));
    QVERIFY(contentOf(file).startsWith("Time;"));
}

void TestVelkRecord::anExistingFileIsKept()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    writeFile(file, "precious");
    VelkRun velk;

    // A robot out of reach: the file is looked at before the robot is.
    QCOMPARE(velk.run(record(file, QStringLiteral("--all --timeout 1000"), QStringLiteral("test:?out-of-reach"))), 8);

    QVERIFY2(velk.messages().contains(file), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("--force")), qPrintable(velk.messages()));
    QCOMPARE(contentOf(file), QByteArray("precious"));
}

void TestVelkRecord::anExistingFileIsReplacedWithForce()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    writeFile(file, "old");
    VelkRun velk;

    QCOMPARE(velk.run(record(file, QStringLiteral("--all --period 10 --for 0.5 --force"))), 0);

    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 7 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecord::aFileThatComesUpMeanwhileIsKept()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;
    velk.start(record(file, QStringLiteral("--all --period 10")));
    QVERIFY(velk.waitForMessage(QStringLiteral("Recording 6 keys")));
    writeFile(file, "precious");

    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 8);
    QCOMPARE(contentOf(file), QByteArray("precious"));
    const QStringList kept = filesIn(velk.temporaryDirectory());
    QCOMPARE(kept.size(), 1);
    QVERIFY2(velk.messages().contains(kept.first()), qPrintable(velk.messages()));
    QVERIFY(contentOf(QDir(velk.temporaryDirectory()).filePath(kept.first())).startsWith("Time;"));
}

void TestVelkRecord::aDirectoryThatGoesAwayLeavesTheRecordingInItsTemporaryFile()
{
    QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("runs")));
    VelkRun velk;
    velk.start(record(directory.filePath(QStringLiteral("runs/run.csv")), QStringLiteral("--all --period 10")));
    QVERIFY(velk.waitForMessage(QStringLiteral("Recording 6 keys")));
    QVERIFY(QDir(directory.path()).rmdir(QStringLiteral("runs")));

    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 8);
    QCOMPARE(filesIn(velk.temporaryDirectory()).size(), 1);
    QVERIFY2(velk.messages().contains(filesIn(velk.temporaryDirectory()).first()), qPrintable(velk.messages()));
}

void TestVelkRecord::aLostConnectionSavesWhatThereIs()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkTerminal velk;
    velk.start(record(file, QStringLiteral("--all --period 10 --for 1000")));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d* rows")), qPrintable(velk.text()));

    velk.sendSignal(SIGUSR1);

    QCOMPARE(velk.end(), 5);
    QVERIFY2(velk.text().contains(QStringLiteral("connection was lost: the recording ends there")),
             qPrintable(velk.text()));
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    QCOMPARE(shapeOf(contentOf(file)), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecord::aLostConnectionWithNowhereToSaveIsBothTold()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;
    velk.start(record(file, QStringLiteral("--all --period 10")));
    QVERIFY(velk.waitForMessage(QStringLiteral("Recording 6 keys")));
    writeFile(file, "precious");

    velk.sendSignal(SIGUSR1);

    QCOMPARE(velk.end(), 8);
    QVERIFY2(velk.messages().contains(QStringLiteral("The connection was lost")), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("exists already")), qPrintable(velk.messages()));
}

void TestVelkRecord::aFullDiskSavesTheCompleteRows()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;
    velk.setFileSizeLimit(100); // 51200 bytes, past what the file object keeps in its buffer

    // 200 keys fill that within a few batches; nothing but the full disk ends this recording.
    QCOMPARE(velk.run(record(file, QStringLiteral("Extra/* --period 10"), QStringLiteral("test:?keys=200"))), 7);

    const QByteArray content = contentOf(file);
    QVERIFY2(content.size() <= 51200 && content.size() > 40000, qPrintable(QString::number(content.size())));
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 201 cells").arg(savedRows(velk.messages()) + 1));
    QVERIFY2(velk.messages().contains(QStringLiteral("Could not write data")), qPrintable(velk.messages()));
    QCOMPARE(velk.messages().count(QStringLiteral("Could not write data")), 1);
}

void TestVelkRecord::aFullDiskThatOnlyClosingFindsSavesTheCompleteRows()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkTerminal velk(QStringLiteral("/bin/sh"));
    // 512 bytes, much less than the file object keeps in its buffer.
    velk.start(QStringList{QStringLiteral("-c"), QStringLiteral("ulimit -f 1; exec \"$0\" \"$@\""), testVelkProgram} +
               record(file, QStringLiteral("--all --period 10")));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d\\d+ rows")), qPrintable(velk.text()));

    velk.typeCtrlC();

    QCOMPARE(velk.end(), 7);
    QVERIFY2(velk.text().contains(QStringLiteral("Recording incomplete")), qPrintable(velk.text()));
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    const QByteArray content = contentOf(file);
    QVERIFY(content.size() <= 512);
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecord::aRecordFileThatCannotBeMadeIsAnError()
{
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("run.csv"));
    VelkRun velk;
    velk.setVariable(QStringLiteral("TMPDIR"), QStringLiteral("/proc"));

    QCOMPARE(velk.run(record(file, QStringLiteral("--all --period 10"))), 8);

    QVERIFY2(velk.messages().contains(QStringLiteral("Could not open temporary file")), qPrintable(velk.messages()));
    QCOMPARE(filesIn(directory.path()), QStringList());
}

QTEST_GUILESS_MAIN(TestVelkRecord)

#include "tst_velk_record.moc"
