// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <csignal>

namespace {

QStringList watch(const QString& arguments, const QString& robot = QStringLiteral("test:"))
{
    return QStringList{QStringLiteral("watch"), QStringLiteral("--robot"), robot} +
           arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList lines(const QString& text)
{
    return text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

class TestVelkWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valuesComeLineByLine();
    void valuesComeAsJsonLines();
    void aPatternIsWatched();
    void everyKeyIsWatched();
    void anEventIsWatched();
    void aPeriodBelowTheMinimumIsToldWithWhatIsGranted_data();
    void aPeriodBelowTheMinimumIsToldWithWhatIsGranted();
    void aPeriodThatTheRobotGrantsIsNotMentioned_data();
    void aPeriodThatTheRobotGrantsIsNotMentioned();
    void aKeyThatIsNotListedIsWatchedAllTheSame();
    void watchingGoesOnAfterAReconnection();
    void lossesAreReportedAtTheEnd();
    void ticksThatAStoppedProcessMissesAreReported();
    void ctrlCEndsIt_data();
    void ctrlCEndsIt();
    void aReaderThatHasGoneEndsItQuietly();
    void aTerminalIsRefreshedInPlace();
    void aTerminalShowsUnknownKeys();
    void aTerminalShowsAMessageAboveTheTable();
    void aTerminalIsNotCommandedByAValue();
    void jsonLinesAreJsonLinesOnATerminalToo();
    void aTardyRobotIsWatchedWhenItHasAnswered_data();
    void aTardyRobotIsWatchedWhenItHasAnswered();
    void theSimulatedRobotIsWatched();
    void thisComputerIsWatched();
};

void TestVelkWatch::valuesComeLineByLine()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Speech/Text Arm/Elbow/Position --period 200")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("(Elbow.*){2}\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);

    // One time stamp, in seconds since the Unix epoch, for what is sampled at once; in the order of the arguments.
    const QRegularExpression twoLines(
        QStringLiteral("^(\\d{10,}\\.\\d{6})\tSpeech/Text\tsay \"a;b\"\\\\u000aand \\\\u001b\\[31mred\n"
                       "\\1\tArm/Elbow/Position\t1\\.5\n"));
    QVERIFY2(twoLines.match(velk.output()).hasMatch(), qPrintable(velk.output()));
    QCOMPARE(velk.messagesButMissedTicks(), QString());
}

void TestVelkWatch::valuesComeAsJsonLines()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Speech/Text --period 200 --json")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGTERM);
    QCOMPARE(velk.end(), 0);

    const QJsonObject sample = QJsonDocument::fromJson(lines(velk.output()).first().toUtf8()).object();
    QCOMPARE(sample.keys(), (QStringList{QStringLiteral("key"), QStringLiteral("nature"), QStringLiteral("time"),
                                         QStringLiteral("value")}));
    QCOMPARE(sample.value(QStringLiteral("key")).toString(), QStringLiteral("Speech/Text"));
    QCOMPARE(sample.value(QStringLiteral("nature")).toString(), QStringLiteral("DATA"));
    QCOMPARE(sample.value(QStringLiteral("value")).toString(), QStringLiteral("say \"a;b\"\nand \x1b[31mred"));
    QVERIFY(sample.value(QStringLiteral("time")).toDouble() > 1e9);
}

void TestVelkWatch::aPatternIsWatched()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Arm/*Position Foot* --period 200")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("Arm/Elbow/Position\t1.5\n.*Arm/Wrist/Position\t-0.25\n")),
             qPrintable(velk.output()));
    QVERIFY2(velk.messages().contains(QStringLiteral("No key of the robot matches Foot*")),
             qPrintable(velk.messages()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::everyKeyIsWatched()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("--all --period 200"), QStringLiteral("test:?keys=30")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("Arm/Elbow.*Base/Odometer.*Extra/1\t.*Extra/30\t.*Speech/Text\t")),
             qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::anEventIsWatched()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Bumper/Front Base/Odometer --period 200 --json")));
    QVERIFY(velk.waitForOutput(QStringLiteral("Odometer")));

    velk.sendSignal(SIGUSR2);

    QVERIFY2(velk.waitForOutput(
                 QStringLiteral("\"Bumper/Front\",\"nature\":\"EVENT\",\"time\":[\\d.]+,\"value\":true\\}\n")),
             qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::aPeriodBelowTheMinimumIsToldWithWhatIsGranted_data()
{
    QTest::addColumn<QString>("robot");
    QTest::addColumn<int>("period");
    QTest::addColumn<QString>("message");

    QTest::newRow("real time") << QStringLiteral("test:") << 5
                               << QStringLiteral("5 ms asked for; this robot grants 10 ms");
    QTest::newRow("no real time") << QStringLiteral("test:?no-real-time") << 10
                                  << QStringLiteral("10 ms asked for; this robot grants 200 ms");
    QTest::newRow("longer than any") << QStringLiteral("test:") << 2000000000
                                     << QStringLiteral("this robot grants 9999990 ms");
}

void TestVelkWatch::aPeriodBelowTheMinimumIsToldWithWhatIsGranted()
{
    QFETCH(QString, robot);
    QFETCH(int, period);
    QFETCH(QString, message);
    VelkRun velk;

    QCOMPARE(velk.run(watch(QStringLiteral("Base/Odometer --for 0.1 --period %1").arg(period), robot)), 0);

    QVERIFY2(velk.messages().contains(message), qPrintable(velk.messages()));
}

void TestVelkWatch::aPeriodThatTheRobotGrantsIsNotMentioned_data()
{
    QTest::addColumn<QString>("robot");
    QTest::addColumn<int>("period");

    QTest::newRow("real time") << QStringLiteral("test:") << 10;
    QTest::newRow("no real time") << QStringLiteral("test:?no-real-time") << 200;
}

void TestVelkWatch::aPeriodThatTheRobotGrantsIsNotMentioned()
{
    QFETCH(QString, robot);
    QFETCH(int, period);
    VelkRun velk;

    QCOMPARE(velk.run(watch(QStringLiteral("Base/Odometer --for 0.1 --period %1").arg(period), robot)), 0);

    QCOMPARE(velk.messagesButMissedTicks(), QString());
}

void TestVelkWatch::aKeyThatIsNotListedIsWatchedAllTheSame()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Foot/Position Base/Odometer --period 200 --json")));
    QVERIFY(velk.waitForOutput(QStringLiteral("Odometer")));
    QVERIFY2(velk.messages().contains(QStringLiteral("does not list Foot/Position")), qPrintable(velk.messages()));

    velk.sendSignal(SIGUSR2); // the robot gets a foot

    QVERIFY2(velk.waitForOutput(QStringLiteral("\"key\":\"Foot/Position\",\"nature\":\"UNKNOWN\"[^\n]*\"value\":7\\}")),
             qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::watchingGoesOnAfterAReconnection()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Foot/Position Base/Odometer --period 200")));
    QVERIFY(velk.waitForOutput(QStringLiteral("Odometer")));
    velk.sendSignal(SIGUSR1);
    QVERIFY2(velk.waitForMessage(QStringLiteral("Connection lost")), qPrintable(velk.messages()));

    velk.sendSignal(SIGUSR2);

    QVERIFY2(velk.waitForMessage(QStringLiteral("Connected again")), qPrintable(velk.messages()));
    // The robot has this key since it came back.
    QVERIFY2(velk.waitForOutput(QStringLiteral("Foot/Position\t7\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::lossesAreReportedAtTheEnd()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period 10"), QStringLiteral("test:?queue=1")));
    QVERIFY(velk.waitForOutput(QStringLiteral("(Odometer.*){3}")));

    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 0);
    QVERIFY2(velk.messages().contains(
                 QRegularExpression(QStringLiteral("delivered: [1-9]\\d* samples and occurrences dropped"))),
             qPrintable(velk.messages()));
}

void TestVelkWatch::ticksThatAStoppedProcessMissesAreReported()
{
    VelkRun velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period 10"), QStringLiteral("test:")));
    QVERIFY(velk.waitForOutput(QStringLiteral("(Odometer.*){3}")));

    velk.sendSignal(SIGSTOP);
    QTest::qSleep(200);
    velk.sendSignal(SIGCONT);
    QVERIFY(velk.waitForOutput(QStringLiteral("(Odometer.*){6}")));
    velk.sendSignal(SIGINT);

    QCOMPARE(velk.end(), 0);
    QVERIFY2(
        velk.messages().contains(QRegularExpression(QStringLiteral("delivered: .*[1-9]\\d* sampling ticks missed"))),
        qPrintable(velk.messages()));
}

void TestVelkWatch::ctrlCEndsIt_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");

    QTest::newRow("as the user wants it to end") << QString() << 0;
    QTest::newRow("before the time is over") << QStringLiteral("--for 1000") << 130;
}

void TestVelkWatch::ctrlCEndsIt()
{
    QFETCH(QString, arguments);
    QFETCH(int, status);
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period 200 ") + arguments));
    QVERIFY2(velk.waitFor(QStringLiteral("42")), qPrintable(velk.text()));

    velk.typeCtrlC();

    QCOMPARE(velk.end(), status);
}

void TestVelkWatch::aReaderThatHasGoneEndsItQuietly()
{
    QProcess shell;
    shell.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"),
         QStringLiteral("{ \"$0\" watch --all --period 200 --robot test:; echo \"status $?\" >&2; } | head -n 1"),
         testVelkProgram});

    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.readAllStandardError(), QByteArray("status 141\n"));
    QCOMPARE(shell.readAllStandardOutput().count('\n'), 1);
}

void TestVelkWatch::aTerminalIsRefreshedInPlace()
{
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Base/Odometer Arm/Elbow/Position --period 200")));

    // The table, and the table again three lines further up.
    QVERIFY2(velk.waitFor(QStringLiteral("KEY +NATURE +TIME +VALUE\x1b\\[K\r\n"
                                         "Base/Odometer +DATA +\\d\\d:\\d\\d:\\d\\d\\.\\d\\d\\d +42\x1b\\[K\r\n"
                                         "Arm/Elbow/Position +DATA +[\\d:.]+ +1\\.5\x1b\\[K\r\n"
                                         "\x1b\\[J\x1b\\[3A\rKEY")),
             qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::aTerminalShowsUnknownKeys()
{
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Foot/Position --period 200")));
    QVERIFY2(velk.waitFor(QStringLiteral("Foot/Position +UNKNOWN +\x1b")), qPrintable(velk.text()));

    velk.sendSignal(SIGUSR2);

    QVERIFY2(velk.waitFor(QStringLiteral("Foot/Position +UNKNOWN +[\\d:.]+ +7\x1b")), qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::aTerminalShowsAMessageAboveTheTable()
{
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period 200")));
    QVERIFY2(velk.waitFor(QStringLiteral("42")), qPrintable(velk.text()));

    velk.sendSignal(SIGUSR1);

    QVERIFY2(velk.waitFor(QStringLiteral("\x1b\\[2A\r\x1b\\[Jvelk: Connection lost[^\x1b]*\r\nKEY +NATURE")),
             qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::aTerminalIsNotCommandedByAValue()
{
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Speech/Text --period 200")));

    QVERIFY2(velk.waitFor(QStringLiteral("and \\\\u001b\\[31mred")), qPrintable(velk.text()));
    QVERIFY2(!velk.text().contains(QStringLiteral("\x1b[31m")), qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::jsonLinesAreJsonLinesOnATerminalToo()
{
    VelkTerminal velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period 200 --json")));

    QVERIFY2(velk.waitFor(QStringLiteral("\"value\":42\\}\r\n")), qPrintable(velk.text()));
    QVERIFY2(!velk.text().contains(QLatin1Char('\x1b')), qPrintable(velk.text()));
    velk.typeCtrlC();
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::aTardyRobotIsWatchedWhenItHasAnswered_data()
{
    QTest::addColumn<int>("period");

    QTest::newRow("a period that every robot grants") << 200;
    QTest::newRow("a period that waits for the last answer") << 100;
}

void TestVelkWatch::aTardyRobotIsWatchedWhenItHasAnswered()
{
    QFETCH(int, period);
    VelkRun velk;
    velk.start(watch(QStringLiteral("Base/Odometer --period %1").arg(period), QStringLiteral("tardy:")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("Base/Odometer\t42\n.*Base/Odometer\t42\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
    QCOMPARE(velk.messagesButMissedTicks(), QString());
}

void TestVelkWatch::theSimulatedRobotIsWatched()
{
    VelkRun velk(velkProgram);
    velk.start(watch(QStringLiteral("Arm/* Battery/* --period 200"), QStringLiteral("sim:")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("\tArm/[^\n]*\n.*\tBattery/[^\n]*\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

void TestVelkWatch::thisComputerIsWatched()
{
    VelkRun velk(velkProgram);
    velk.start(watch(QStringLiteral("Host/Cpu/0/Load --period 200"), QStringLiteral("host:")));

    QVERIFY2(velk.waitForOutput(QStringLiteral("Host/Cpu/0/Load\t[\\d.]+\n")), qPrintable(velk.output()));
    velk.sendSignal(SIGINT);
    QCOMPARE(velk.end(), 0);
}

QTEST_GUILESS_MAIN(TestVelkWatch)

#include "tst_velk_watch.moc"
