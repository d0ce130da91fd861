// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_recording.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>

class TestVelkRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordingIsSavedWhenItsTimeIsOver();
    void everyRowHasAsManyCellsAsTheHeader();
    void thisComputerIsRecorded();
    void aRecordingToAnotherFileSystemIsSaved();
    void aPeriodIsKnownBeforeTheRecordingBegins_data();
    void aPeriodIsKnownBeforeTheRecordingBegins();
    void aKeyThatIsNotListedHasAnEmptyColumn();
    void ctrlCLeavesAUsableFile_data();
    void ctrlCLeavesAUsableFile();
    void aTerminationSignalLeavesAUsableFile();
    void aTerminalShowsTheProgress();
    void aRecordingIsSavedWhenNobodyReadsItsMessages();
};

void TestVelkRecord::aRecordingIsSavedWhenItsTimeIsOver()
{
    const RecordDirectory records;
    VelkRun velk;

    QCOMPARE(velk.run(record(records.file, QStringLiteral("Arm/Elbow/Position --period 10 --for 1"))), 0);

    const QByteArray content = contentOf(records.file);
    QVERIFY2(content.startsWith("Time;\"Arm/Elbow/Position\"\n0;1.5\n"), content.constData());
    QVERIFY(savedRows(velk.messages()) > 0);
    QCOMPARE(shapeOf(content), QStringLiteral("%1 lines of 2 cells").arg(savedRows(velk.messages()) + 1));
    QCOMPARE(filesIn(velk.temporaryDirectory()), QStringList());
    QCOMPARE(velk.output(), QString());
}

void TestVelkRecord::everyRowHasAsManyCellsAsTheHeader()
{
    const RecordDirectory records;
    VelkRun velk(velkProgram);

    QCOMPARE(
        velk.run(record(records.file, QStringLiteral("Extra/* --period 10 --for 2"), QStringLiteral("sim:?keys=1000"))),
        0);

    QCOMPARE(shapeOf(contentOf(records.file)),
             QStringLiteral("%1 lines of 1001 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecord::thisComputerIsRecorded()
{
    const RecordDirectory records;
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(record(records.file, QStringLiteral("Host/Cpu/0/Load Host/Memory/* --period 200 --for 2"),
                             QStringLiteral("host:"))),
             0);

    QVERIFY2(contentOf(records.file).startsWith("Time;"), contentOf(records.file).constData());
    QVERIFY2(contentOf(records.file).contains("\"Host/Cpu/0/Load\""), contentOf(records.file).constData());
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

void TestVelkRecord::aPeriodIsKnownBeforeTheRecordingBegins_data()
{
    QTest::addColumn<QString>("robot");
    QTest::addColumn<QString>("period");

    QTest::newRow("real time") << QStringLiteral("test:") << QStringLiteral("6 keys every 10 ms");
    QTest::newRow("no real time") << QStringLiteral("test:?no-real-time") << QStringLiteral("6 keys every 200 ms");
    QTest::newRow("real time, reported late") << QStringLiteral("tardy:") << QStringLiteral("1 keys every 10 ms");
}

void TestVelkRecord::aPeriodIsKnownBeforeTheRecordingBegins()
{
    QFETCH(QString, robot);
    QFETCH(QString, period);
    const RecordDirectory records;
    VelkRun velk;

    QCOMPARE(velk.run(record(records.file, QStringLiteral("--all --period 10 --for 0.1"), robot)), 0);

    QVERIFY2(velk.messages().contains(QStringLiteral("Recording ") + period), qPrintable(velk.messages()));
}

void TestVelkRecord::aKeyThatIsNotListedHasAnEmptyColumn()
{
    const RecordDirectory records;
    VelkRun velk;

    QCOMPARE(velk.run(record(records.file, QStringLiteral("Foot Base/Odometer --period 10 --for 1"))), 0);

    const QVector<QStringList> lines = cellsOf(contentOf(records.file));
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
    const RecordDirectory records;
    VelkTerminal velk;
    velk.start(record(records.file, QStringLiteral("--all --period 10") + arguments));
    QVERIFY2(velk.waitFor(QStringLiteral(", [1-9]\\d* rows")), qPrintable(velk.text()));
    QCOMPARE(filesIn(records.directory.path()), QStringList()); // the file is complete before its name appears

    velk.typeCtrlC();

    QCOMPARE(velk.end(), status);
    const int rows = savedRows(velk.text());
    QVERIFY2(rows > 0, qPrintable(velk.text()));
    QCOMPARE(shapeOf(contentOf(records.file)), QStringLiteral("%1 lines of 7 cells").arg(rows + 1));
}

void TestVelkRecord::aTerminationSignalLeavesAUsableFile()
{
    const RecordDirectory records;
    VelkRun velk;
    QVERIFY2(startRecording(velk, records.file), qPrintable(velk.messages()));

    velk.sendSignal(SIGTERM);
    velk.sendSignal(SIGINT); // an impatient user does no harm

    QCOMPARE(velk.end(), 0);
    QCOMPARE(shapeOf(contentOf(records.file)),
             QStringLiteral("%1 lines of 7 cells").arg(savedRows(velk.messages()) + 1));
}

void TestVelkRecord::aTerminalShowsTheProgress()
{
    const RecordDirectory records;
    VelkTerminal velk;
    velk.start(record(records.file, QStringLiteral("--all --period 10")));

    QVERIFY2(velk.waitFor(QStringLiteral(
                 "\r\x1b\\[Krecording \\d+\\.\\d s, [1-9]\\d* rows, 6 keys, [\\d.]+ k?B\r\x1b\\[Krecording")),
             qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkRecord::aRecordingIsSavedWhenNobodyReadsItsMessages()
{
    const RecordDirectory records;
    QProcess shell;
    shell.start(
        QStringLiteral("/bin/sh"),
        QStringList{QStringLiteral("-c"),
                    QStringLiteral("exec 3>&1; { \"$0\" \"$@\" 2>&1 >/dev/null; echo \"status $?\" >&3; } | true"),
                    testVelkProgram} +
            record(records.file, QStringLiteral("--all --period 10 --for 0.5")));

    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.readAllStandardOutput(), QByteArray("status 0\n"));
    QVERIFY(contentOf(records.file).startsWith("Time;"));
}

QTEST_GUILESS_MAIN(TestVelkRecord)

#include "tst_velk_record.moc"
