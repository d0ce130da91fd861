// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestVelkKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysAreListedSortedWithTheirNatures_data();
    void keysAreListedSortedWithTheirNatures();
    void jsonIsOneArray();
    void theSimulatedRobotHasItsExtraKeys();
    void thisComputerHasItsKeys();
};

void TestVelkKeys::keysAreListedSortedWithTheirNatures_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("output");

    const auto row = [](const char* name, const char* arguments, const char* output) {
        QTest::newRow(name) << QString::fromLatin1(arguments) << QString::fromLatin1(output);
    };
    row("all", "",
        "DATA     Arm/Elbow/Position\n"
        "EVENT    Arm/LimitReached\n"
        "DATA     Arm/Wrist/Position\n"
        "DATA     Base/Odometer\n"
        "EVENT    Bumper/Front\n"
        "DATA     Speech/Text\n");
    row("one nature", "--nature event", "EVENT    Arm/LimitReached\nEVENT    Bumper/Front\n");
    row("two natures", "--nature event,unknown Foot",
        "EVENT    Arm/LimitReached\nEVENT    Bumper/Front\nUNKNOWN  Foot\n");
    row("a pattern", "--filter Arm/*Position", "DATA     Arm/Elbow/Position\nDATA     Arm/Wrist/Position\n");
    row("two patterns", "--filter B* --filter S*",
        "DATA     Base/Odometer\nEVENT    Bumper/Front\nDATA     Speech/Text\n");
    row("a pattern and a nature", "--filter Arm/* --nature event", "EVENT    Arm/LimitReached\n");
    row("a pattern without a match", "--filter Foot*", "");
    row("names that the robot does not list", "--nature unknown Foot Base/Odometer Tail",
        "UNKNOWN  Foot\nUNKNOWN  Tail\n");
    row("names in brackets", "--nature unknown [Foot,Tail] [Toe]", "UNKNOWN  [Foot,Tail]\nUNKNOWN  [Toe]\n");
    row("a pattern in brackets", "--filter=[Foot,B*]", "");
    row("JSON without a key", "--filter Foot* --json", "[\n]\n");
}

void TestVelkKeys::keysAreListedSortedWithTheirNatures()
{
    QFETCH(QString, arguments);
    VelkRun velk;

    QCOMPARE(velk.run(QStringList{QStringLiteral("keys"), QStringLiteral("--robot=test:")} +
                      arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts)),
             0);

    QTEST(velk.output(), "output");
    QCOMPARE(velk.messages(), QString());
}

void TestVelkKeys::jsonIsOneArray()
{
    VelkRun velk;

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot=test:"), QStringLiteral("--json"),
                       QStringLiteral("--filter=B*")}),
             0);

    const QJsonArray keys = QJsonDocument::fromJson(velk.output().toUtf8()).array();
    QCOMPARE(keys, (QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("Base/Odometer")},
                                           {QStringLiteral("nature"), QStringLiteral("DATA")}},
                               QJsonObject{{QStringLiteral("name"), QStringLiteral("Bumper/Front")},
                                           {QStringLiteral("nature"), QStringLiteral("EVENT")}}}));
}

void TestVelkKeys::theSimulatedRobotHasItsExtraKeys()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot=sim:?keys=5000"),
                       QStringLiteral("--filter=Extra/*")}),
             0);

    QCOMPARE(velk.output().count(QLatin1Char('\n')), 5000);
}

void TestVelkKeys::thisComputerHasItsKeys()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({QStringLiteral("keys"), QStringLiteral("--robot=host:")}), 0);

    QVERIFY2(velk.output().contains(QStringLiteral("DATA     Host/Cpu/0/Load\n")), qPrintable(velk.output()));
    QVERIFY2(velk.output().contains(QStringLiteral("EVENT    Host/")), qPrintable(velk.output()));
}

QTEST_GUILESS_MAIN(TestVelkKeys)

#include "tst_velk_keys.moc"
