// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

// What holds for every command: how velk ends, and where it says what.
class TestVelk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void helpAndVersionAreData_data();
    void helpAndVersionAreData();
    void aFailureHasItsStatusAndAMessage_data();
    void aFailureHasItsStatusAndAMessage();
    void anUnknownSchemeSaysWhichExist();
    void aUrlInBracketsIsReadAsItWasTyped();
    void theRobotsThatExistAreListed();
    void aConnectionThatCannotBeLoadedIsNamedBesideTheRobots();
    void theVariableNamesTheRobot();
    void anOptionWinsOverTheVariable();
    void aReaderThatHasGoneIsNoError();
    void aFullDiskBehindStandardOutputIsAnError();
    void aSignalBeforeTheConnectionEndsIt_data();
    void aSignalBeforeTheConnectionEndsIt();
};

void TestVelk::helpAndVersionAreData_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("beginning");

    QTest::newRow("--help") << QStringList{QStringLiteral("--help")} << QStringLiteral("Shows and records");
    QTest::newRow("-h") << QStringList{QStringLiteral("-h")} << QStringLiteral("Shows and records");
    QTest::newRow("watch --help") << QStringList{QStringLiteral("watch"), QStringLiteral("--help")}
                                  << QStringLiteral("Show the newest values");
    QTest::newRow("--version") << QStringList{QStringLiteral("--version")} << QStringLiteral("velk ");
}

void TestVelk::helpAndVersionAreData()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, beginning);
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(arguments), 0);

    QVERIFY2(velk.output().startsWith(beginning), qPrintable(velk.output()));
    QCOMPARE(velk.messages(), QString());
}

void TestVelk::aFailureHasItsStatusAndAMessage_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");

    const auto row = [](const char* name, const char* arguments, int status, const char* message) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << status << QString::fromLatin1(message);
    };
    row("no command", "", 2, "A subcommand is required");
    row("an unknown command", "dance", 2, "dance");
    row("an unknown option", "keys --robot test: --loud", 2, "--loud");
    row("no robot", "keys", 2, "--robot URL or the variable VELK_ROBOT");
    row("a time-out that is no time", "keys --robot test: --timeout 0", 2, "is not a number of seconds");
    row("an unknown nature", "keys --robot test: --nature data,noise", 2, "noise");
    row("nothing to watch", "watch --robot test:", 2, "name at least one key or pattern");
    row("nothing to record", "record --robot test: -o x.csv", 2, "name at least one key or pattern");
    row("a period of nothing", "watch --all --robot test: --period 0", 2, "--period");
    row("a period that is no number", "watch --all --robot test: --period soon", 2, "--period");
    row("a duration of nothing", "watch --all --robot test: --for 0", 2, "--for");
    row("a duration that no timer holds", "watch --all --robot test: --for 1e9", 2, "--for");
    row("no file to record to", "record --all --robot test:", 2, "--output");
    row("an unknown robot", "keys --robot toast:", 3, "toast:");
    row("a robot out of reach", "keys --robot test:?out-of-reach --timeout 0.2", 4, "No connection to");
    row("a robot that refuses", "keys --robot refusing:", 4, "Refused: The robot does not let you in");
    row("a robot that never lists its keys", "keys --robot mute: --timeout 0.2", 4, "has not reported its keys");
    row("a robot that never lists, watched", "watch A --robot mute: --timeout 0.2", 4, "has not reported its keys");
    row("a robot that never lists, recorded", "record A -o x.csv --robot mute: --timeout 0.2", 4, "has not reported");
    row("no key to watch", "watch Foot* --robot test:", 6, "No key of the robot matches Foot*");
    row("no key to record", "record Foot* -o x.csv --robot test:", 6, "No key of the robot matches Foot*");
    row("nowhere to record to", "record --all -o /nowhere/x.csv --robot test:", 8, "/nowhere does not exist");
}

void TestVelk::aFailureHasItsStatusAndAMessage()
{
    QFETCH(QString, arguments);
    QFETCH(int, status);
    QFETCH(QString, message);
    VelkRun velk;

    QCOMPARE(velk.run(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts)), status);

    QVERIFY2(velk.messages().contains(message), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().startsWith(QStringLiteral("velk: ")), qPrintable(velk.messages()));
    QCOMPARE(velk.output(), QString());
}

void TestVelk::anUnknownSchemeSaysWhichExist()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot"), QStringLiteral("toast:")}), 3);

    QVERIFY2(velk.messages().contains(QStringLiteral("toast")), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("sim")), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains(QStringLiteral("host")), qPrintable(velk.messages()));
}

void TestVelk::aUrlInBracketsIsReadAsItWasTyped()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot"), QStringLiteral("[toast]")}), 3);

    QVERIFY2(velk.messages().contains(QStringLiteral("“[toast]” is not the URL of a robot")),
             qPrintable(velk.messages()));
}

void TestVelk::theRobotsThatExistAreListed()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({QStringLiteral("robots")}), 0);

    QVERIFY2(velk.output().contains(QStringLiteral("sim:")), qPrintable(velk.output()));
    QVERIFY2(velk.output().contains(QStringLiteral("host:")), qPrintable(velk.output()));
}

void TestVelk::aConnectionThatCannotBeLoadedIsNamedBesideTheRobots()
{
    const QTemporaryDir folder;
    QFile broken(folder.filePath(QStringLiteral("broken.so")));
    QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no library") > 0);
    broken.close();
    VelkRun velk(velkProgram);
    velk.setVariable(QStringLiteral("MEMORYKEYMODEL_CONNECTIONS"), folder.path());

    QCOMPARE(velk.run({QStringLiteral("robots")}), 0);

    QVERIFY2(velk.output().contains(QStringLiteral("host:")), qPrintable(velk.output()));
    QVERIFY2(velk.messages().contains(broken.fileName() + QStringLiteral(" cannot be loaded: ")),
             qPrintable(velk.messages()));
}

void TestVelk::theVariableNamesTheRobot()
{
    VelkRun velk;
    velk.setVariable(QStringLiteral("VELK_ROBOT"), QStringLiteral("test:"));

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--nature"), QStringLiteral("event")}), 0);

    QCOMPARE(velk.output(), QStringLiteral("EVENT    Arm/LimitReached\nEVENT    Bumper/Front\n"));
}

void TestVelk::anOptionWinsOverTheVariable()
{
    VelkRun velk;
    velk.setVariable(QStringLiteral("VELK_ROBOT"), QStringLiteral("toast:"));

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot=test:")}), 0);
}

void TestVelk::aReaderThatHasGoneIsNoError()
{
    QProcess shell;
    // More than a pipe holds; `true` reads nothing of it.
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"),
                 QStringLiteral("{ \"$0\" keys --robot 'test:?keys=100000'; echo \"status $?\" >&2; } | true"),
                 testVelkProgram});

    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.readAllStandardError(), QByteArray("status 141\n"));
}

void TestVelk::aFullDiskBehindStandardOutputIsAnError()
{
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("\"$0\" keys --robot test: > /dev/full"), testVelkProgram});

    QVERIFY(shell.waitForFinished(60000));
    QCOMPARE(shell.exitCode(), 9);
    QVERIFY(shell.readAllStandardError().contains("No space left"));
}

void TestVelk::aSignalBeforeTheConnectionEndsIt_data()
{
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<int>("status");

    QTest::newRow("SIGINT") << int(SIGINT) << 130;
    QTest::newRow("SIGTERM") << int(SIGTERM) << 143;
    QTest::newRow("SIGHUP") << int(SIGHUP) << 129;
}

void TestVelk::aSignalBeforeTheConnectionEndsIt()
{
    QFETCH(int, signalNumber);
    QFETCH(int, status);
    VelkRun velk;
    velk.start({QStringLiteral("watch"), QStringLiteral("--all"), QStringLiteral("--robot=test:?out-of-reach"),
                QStringLiteral("--timeout=1000")});
    QVERIFY(velk.waitForMessage(QStringLiteral("out of reach")));

    velk.sendSignal(signalNumber);

    QCOMPARE(velk.end(), status);
}

QTEST_GUILESS_MAIN(TestVelk)

#include "tst_velk.moc"
