// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/wildcard.h>

#include "text.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Velk;

namespace {

bool matches(const QString& pattern, WildcardBrackets brackets, const QString& name)
{
    const QRegularExpression expression(QRegularExpression::anchoredPattern(wildcardExpression(pattern, brackets)),
                                        QRegularExpression::DotMatchesEverythingOption);
    return expression.match(name).hasMatch();
}

} // namespace

class TestWildcard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void matchesNames_data();
    void matchesNames();
    void matchesASet_data();
    void matchesASet();
    void matchesLiteralBrackets_data();
    void matchesLiteralBrackets();
    void findsSets_data();
    void findsSets();
};

void TestWildcard::matchesNames_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");

    QTest::newRow("a star is any text") << text("A*n") << text("Arm/Elbow/Position") << true;
    QTest::newRow("a star is no text") << text("A*rm") << text("Arm") << true;
    QTest::newRow("a star is a line break") << text("a*b") << text("a\nb") << true;
    QTest::newRow("a question mark is one character") << text("a?c") << text("a/c") << true;
    QTest::newRow("a question mark is one character beyond 16 bits") << text("a?c") << text("a\U0001F600c") << true;
    QTest::newRow("a question mark is not two characters") << text("a?") << text("abc") << false;
    QTest::newRow("a dot is a dot") << text("a.?") << text("axy") << false;
    QTest::newRow("a character beyond 16 bits") << text("\U0001F600*") << text("\U0001F600!") << true;
    QTest::newRow("letters keep their case") << text("a*") << text("Arm") << false;
}

void TestWildcard::matchesNames()
{
    QFETCH(QString, pattern);
    QFETCH(QString, name);

    QTEST(matches(pattern, WildcardBrackets::Set, name), "expected");
    QTEST(matches(pattern, WildcardBrackets::Literal, name), "expected");
}

void TestWildcard::matchesASet_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("matched");
    QTest::addColumn<QString>("refused");

    QTest::newRow("one of a range") << text("J[1-3]") << text("J2") << text("J4");
    QTest::newRow("none of a range") << text("J[!1-3]") << text("J4") << text("J2");
    QTest::newRow("none of a set, with a caret") << text("J[^1]") << text("J2") << text("J1");
    QTest::newRow("a closing bracket in a set") << text("J[]]") << text("J]") << text("J[");
    QTest::newRow("an opening bracket in a set") << text("J[[]2") << text("J[2") << text("J2");
    QTest::newRow("a backslash in a set") << text("[\\]x") << text("\\x") << text("]x");
    QTest::newRow("a caret in a set") << text("[a^]x") << text("^x") << text("bx");
    QTest::newRow("a bracket that is not closed") << text("J[1") << text("J[1") << text("J1");
}

void TestWildcard::matchesASet()
{
    QFETCH(QString, pattern);
    QFETCH(QString, matched);
    QFETCH(QString, refused);

    QVERIFY(matches(pattern, WildcardBrackets::Set, matched));
    QVERIFY(!matches(pattern, WildcardBrackets::Set, refused));
}

void TestWildcard::matchesLiteralBrackets_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("matched");
    QTest::addColumn<QString>("refused");

    QTest::newRow("an index in a name") << text("Motor[0]/*") << text("Motor[0]/Speed") << text("Motor0/Speed");
    QTest::newRow("any index") << text("Motor[*]") << text("Motor[12]") << text("Motor1");
    QTest::newRow("a negation") << text("J[!1]") << text("J[!1]") << text("J2");
}

void TestWildcard::matchesLiteralBrackets()
{
    QFETCH(QString, pattern);
    QFETCH(QString, matched);
    QFETCH(QString, refused);

    QVERIFY(matches(pattern, WildcardBrackets::Literal, matched));
    QVERIFY(!matches(pattern, WildcardBrackets::Literal, refused));
}

void TestWildcard::findsSets_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("expected");

    QTest::newRow("no bracket") << text("a*b?") << false;
    QTest::newRow("a set") << text("x[ab]") << true;
    QTest::newRow("an open bracket") << text("x[ab") << false;
    QTest::newRow("brackets with nothing between them") << text("x[]") << false;
    QTest::newRow("a set after an open bracket") << text("[] [a]") << true;
}

void TestWildcard::findsSets()
{
    QFETCH(QString, pattern);

    QTEST(hasWildcardSet(pattern), "expected");
}

QTEST_APPLESS_MAIN(TestWildcard)

#include "tst_wildcard.moc"
