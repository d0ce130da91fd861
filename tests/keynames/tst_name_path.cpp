// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/name_path.h>

#include "text.h"

#include <QtTest>

#include <algorithm>

using namespace Velk;

class TestNamePath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparesPaths_data();
    void comparesPaths();
    void putsWhatIsBelowAPathBesideIt();
    void foldsCaseAndKeepsTheLength_data();
    void foldsCaseAndKeepsTheLength();
    void givesSegments();
};

void TestNamePath::comparesPaths_data()
{
    QTest::addColumn<QString>("lesser");
    QTest::addColumn<QString>("greater");

    QTest::newRow("letters") << text("Arm") << text("Leg");
    QTest::newRow("letters of any case") << text("arm") << text("Leg");
    QTest::newRow("upper case before lower, at last") << text("Arm") << text("arm");
    QTest::newRow("numbers by their value") << text("J9") << text("J10");
    QTest::newRow("long numbers") << text("J99999999999999999998") << text("J99999999999999999999");
    QTest::newRow("leading zeros decide last") << text("J09") << text("J9");
    QTest::newRow("a number within") << text("J2b") << text("J10a");
    QTest::newRow("a path before what is below") << text("Arm") << text("Arm/Elbow");
    QTest::newRow("what is below before the next") << text("Arm/Elbow") << text("Arm-x");
    QTest::newRow("an ending separator is a segment") << text("Arm") << text("Arm/");
    QTest::newRow("an empty segment before a full one") << text("Arm//b") << text("Arm/a");
    QTest::newRow("the empty name first") << QString() << text("/");
    QTest::newRow("the first segment decides, also by case") << text("Arm/b") << text("arm/a");
    QTest::newRow("umlauts by code point") << text("z") << QString::fromUtf8("\u00c4");
}

void TestNamePath::comparesPaths()
{
    QFETCH(QString, lesser);
    QFETCH(QString, greater);

    QVERIFY(comparePaths(lesser, greater) < 0);
    QVERIFY(comparePaths(greater, lesser) > 0);
    QCOMPARE(comparePaths(lesser, lesser), 0);
    QCOMPARE(comparePaths(greater, greater), 0);
}

void TestNamePath::putsWhatIsBelowAPathBesideIt()
{
    QStringList names = list("arm/1|Arm/2|arm/3|Arm|Arm-1|arm|Arm/10|Arm |arm.b/2");

    std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) { return comparePaths(a, b) < 0; });

    QCOMPARE(names, list("Arm|Arm/2|Arm/10|arm|arm/1|arm/3|Arm |Arm-1|arm.b/2"));
}

void TestNamePath::foldsCaseAndKeepsTheLength_data()
{
    QTest::addColumn<QString>("original");
    QTest::addColumn<QString>("folded");

    QTest::newRow("ascii") << text("AZaz[@09_") << text("azaz[@09_");
    QTest::newRow("umlauts") << QString::fromUtf8("\u00c4\u00df") << QString::fromUtf8("\u00e4\u00df");
    QTest::newRow("beyond the basic plane") << QString::fromUtf8("a\U00010400") << QString::fromUtf8("a\U00010428");
    QTest::newRow("half a character") << QString(QChar(0xd801)) << QString(QChar(0xd801));
    QTest::newRow("empty") << QString() << QString();
}

void TestNamePath::foldsCaseAndKeepsTheLength()
{
    QFETCH(QString, original);

    QTEST(foldedCase(original), "folded");
}

void TestNamePath::givesSegments()
{
    const QString name = text("Arm//Elbow");

    QCOMPARE(pathSegment(name, 0).toString(), text("Arm"));
    QCOMPARE(pathSegment(name, 4).toString(), QString());
    QCOMPARE(pathSegment(name, 5).toString(), text("Elbow"));
    QCOMPARE(pathSegment(name, 10).toString(), QString());
}

QTEST_APPLESS_MAIN(TestNamePath)

#include "tst_name_path.moc"
