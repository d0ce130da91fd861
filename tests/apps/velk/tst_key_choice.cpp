// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/velk/src/key_choice.h>

#include <QTest>

using namespace Velk;

namespace {

QSet<MemoryKey> listedKeys()
{
    QSet<MemoryKey> keys;
    for (const char* name : {"Arm/Wrist/Position", "Arm/Elbow/Position", "Base/Speed", "Odd*Name"})
        keys.insert(MemoryKey(QString::fromLatin1(name), QString(), DataNature));
    keys.insert(MemoryKey(QStringLiteral("Bumper"), QString(), EventNature));
    return keys;
}

QStringList shown(const QVector<MemoryKey>& keys)
{
    QStringList texts;
    for (const MemoryKey& key : keys)
        texts << key.natureToString() + QLatin1Char(' ') + key.name();
    return texts;
}

} // namespace

class TestKeyChoice : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsChooseKeys_data();
    void argumentsChooseKeys();
    void aPatternMatchesTheWholeName_data();
    void aPatternMatchesTheWholeName();
};

void TestKeyChoice::argumentsChooseKeys_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("all");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QStringList>("unlistedNames");
    QTest::addColumn<QStringList>("patternsWithoutAMatch");

    const QStringList none;
    QTest::newRow("nothing") << none << false << none << none << none;
    QTest::newRow("names in the order of the arguments")
        << QStringList{QStringLiteral("Bumper"), QStringLiteral("Base/Speed")} << false
        << QStringList{QStringLiteral("EVENT Bumper"), QStringLiteral("DATA Base/Speed")} << none << none;
    QTest::newRow("a pattern across slashes, sorted")
        << QStringList{QStringLiteral("Arm*")} << false
        << QStringList{QStringLiteral("DATA Arm/Elbow/Position"), QStringLiteral("DATA Arm/Wrist/Position")} << none
        << none;
    QTest::newRow("a key that two arguments choose comes once")
        << QStringList{QStringLiteral("Arm/Wrist/Position"), QStringLiteral("*Position")} << false
        << QStringList{QStringLiteral("DATA Arm/Wrist/Position"), QStringLiteral("DATA Arm/Elbow/Position")} << none
        << none;
    QTest::newRow("an unlisted name is unknown")
        << QStringList{QStringLiteral("Foot"), QStringLiteral("Foot")} << false
        << QStringList{QStringLiteral("UNKNOWN Foot")} << QStringList{QStringLiteral("Foot")} << none;
    QTest::newRow("names are case-sensitive")
        << QStringList{QStringLiteral("bumper"), QStringLiteral("b*")} << false
        << QStringList{QStringLiteral("UNKNOWN bumper")} << QStringList{QStringLiteral("bumper")}
        << QStringList{QStringLiteral("b*")};
    QTest::newRow("a pattern without a match")
        << QStringList{QStringLiteral("Foot*")} << false << none << none << QStringList{QStringLiteral("Foot*")};
    QTest::newRow("a listed name that looks like a pattern")
        << QStringList{QStringLiteral("Odd*Name")} << false << QStringList{QStringLiteral("DATA Odd*Name")} << none
        << none;
    QTest::newRow("all, after the unlisted one") << QStringList{QStringLiteral("Foot")} << true
                                                 << QStringList{QStringLiteral("UNKNOWN Foot"),
                                                                QStringLiteral("DATA Arm/Elbow/Position"),
                                                                QStringLiteral("DATA Arm/Wrist/Position"),
                                                                QStringLiteral("DATA Base/Speed"),
                                                                QStringLiteral("EVENT Bumper"),
                                                                QStringLiteral("DATA Odd*Name")}
                                                 << QStringList{QStringLiteral("Foot")} << none;
}

void TestKeyChoice::argumentsChooseKeys()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, all);

    const KeyChoice choice = chooseKeys(listedKeys(), arguments, all);

    QTEST(shown(choice.keys), "keys");
    QTEST(choice.unlistedNames, "unlistedNames");
    QTEST(choice.patternsWithoutAMatch, "patternsWithoutAMatch");
}

void TestKeyChoice::aPatternMatchesTheWholeName_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("matches");

    QTest::newRow("across slashes") << QStringLiteral("Arm/*") << QStringLiteral("Arm/Elbow/Position") << true;
    QTest::newRow("not the beginning alone")
        << QStringLiteral("*Elbow") << QStringLiteral("Arm/Elbow/Position") << false;
    QTest::newRow("not the end alone") << QStringLiteral("Elbow*") << QStringLiteral("Arm/Elbow/Position") << false;
    QTest::newRow("one character") << QStringLiteral("K?") << QStringLiteral("K1") << true;
    QTest::newRow("not two") << QStringLiteral("K?") << QStringLiteral("K12") << false;
    QTest::newRow("a dot is a dot") << QStringLiteral("K.?") << QStringLiteral("Kx1") << false;
    QTest::newRow("brackets are brackets") << QStringLiteral("Joint[*]") << QStringLiteral("Joint[3]") << true;
    QTest::newRow("a line feed is a character") << QStringLiteral("a*b") << QStringLiteral("a\nb") << true;
}

void TestKeyChoice::aPatternMatchesTheWholeName()
{
    QFETCH(QString, pattern);
    QFETCH(QString, name);

    QTEST(keyPattern(pattern).match(name).hasMatch(), "matches");
}

QTEST_APPLESS_MAIN(TestKeyChoice)

#include "tst_key_choice.moc"
