// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/name_pattern.h>

#include "text.h"
#include <keynames/name_path.h>

#include <QtTest>

using namespace Velk;

namespace {

using Maker = NamePattern (*)(const QString&, Qt::CaseSensitivity);

bool accepts(const NamePattern& pattern, const QString& name)
{
    return pattern.accepts(name, foldedCase(name));
}

NamePattern wildcard(const char* pattern)
{
    return NamePattern::ofWildcard(text(pattern), Qt::CaseSensitive);
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class TestNamePattern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsNames_data();
    void acceptsNames();
    void acceptsEverythingWhenItIsEmpty();
    void reportsWhatIsWrongWithAnExpression();
    void knowsWhatItNarrows_data();
    void knowsWhatItNarrows();
};

void TestNamePattern::acceptsNames_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refused");

    const Maker ofText = &NamePattern::ofText;
    const Maker ofWildcard = &NamePattern::ofWildcard;
    const Maker ofExpression = &NamePattern::ofRegularExpression;
    QTest::newRow("anywhere") << text("lb") << ofWildcard << text("Elbow") << text("Elow");
    QTest::newRow("pieces in order") << text("a*b") << ofWildcard << text("xaxbx") << text("ba");
    QTest::newRow("pieces do not overlap") << text("aa*aa") << ofWildcard << text("aaaa") << text("aaa");
    QTest::newRow("any one character") << text("a?c") << ofWildcard << text("a/c") << text("ac");
    QTest::newRow("one of a set") << text("J[1-3]") << ofWildcard << text("J2") << text("J4");
    QTest::newRow("none of a set") << text("J[!1-3]") << ofWildcard << text("J4") << text("J2");
    QTest::newRow("an open bracket") << text("J[1") << ofWildcard << text("J[12]") << text("J1");
    QTest::newRow("characters with a meaning in expressions")
        << text("a.(b)?+") << ofWildcard << text("a.(b)x+") << text("ax(b)x+");
    QTest::newRow("a fixed text") << text("a*[b]?") << ofText << text("xa*[b]?x") << text("ab");
    QTest::newRow("an expression") << text("^J\\d+$") << ofExpression << text("J12") << text("J12a");
    QTest::newRow("an expression of alternatives") << text("a|b") << ofExpression << text("xb") << text("c");
}

void TestNamePattern::acceptsNames()
{
    QFETCH(QString, pattern);
    QFETCH(Maker, make);
    QFETCH(QString, accepted);
    QFETCH(QString, refused);

    const NamePattern exact = make(pattern, Qt::CaseSensitive);
    QVERIFY(exact.errorString().isEmpty());
    QVERIFY(accepts(exact, accepted));
    QVERIFY(!accepts(exact, refused));

    const NamePattern folded = make(pattern, Qt::CaseInsensitive);
    QVERIFY(accepts(folded, accepted.toUpper()));
    QVERIFY(accepts(folded, accepted.toLower()));
    QVERIFY(!accepts(folded, refused.toUpper()));
}

void TestNamePattern::acceptsEverythingWhenItIsEmpty()
{
    for (const Maker make : {&NamePattern::ofText, &NamePattern::ofWildcard, &NamePattern::ofRegularExpression}) {
        const NamePattern pattern = make(QString(), Qt::CaseSensitive);
        QVERIFY(pattern.acceptsEverything());
        QVERIFY(accepts(pattern, QString()));
        QVERIFY(accepts(pattern, text("x")));
    }
    QVERIFY(wildcard("**").acceptsEverything());
}

void TestNamePattern::reportsWhatIsWrongWithAnExpression()
{
    QVERIFY(!NamePattern::ofRegularExpression(text("("), Qt::CaseSensitive).errorString().isEmpty());
    QVERIFY(!wildcard("[3-1]").errorString().isEmpty());
}

void TestNamePattern::knowsWhatItNarrows_data()
{
    QTest::addColumn<QByteArray>("narrow");
    QTest::addColumn<QByteArray>("wide");
    QTest::addColumn<bool>("expected");

    QTest::newRow("a character more") << QByteArray("ab") << QByteArray("a") << true;
    QTest::newRow("a character before") << QByteArray("ba") << QByteArray("a") << true;
    QTest::newRow("a character less") << QByteArray("a") << QByteArray("ab") << false;
    QTest::newRow("another piece") << QByteArray("ab*c") << QByteArray("b") << true;
    QTest::newRow("a piece less") << QByteArray("a") << QByteArray("a*b") << false;
    QTest::newRow("all of everything") << QByteArray("a?") << QByteArray() << true;
    QTest::newRow("expressions are not compared") << QByteArray("a?b") << QByteArray("a") << false;
    QTest::newRow("pieces in another order") << QByteArray("b*a") << QByteArray("a*b") << false;
}

void TestNamePattern::knowsWhatItNarrows()
{
    QFETCH(QByteArray, narrow);
    QFETCH(QByteArray, wide);

    QTEST(wildcard(narrow).narrows(wildcard(wide)), "expected");
    QVERIFY(!wildcard(narrow).narrows(NamePattern::ofWildcard(text("a"), Qt::CaseInsensitive)));
}

QTEST_APPLESS_MAIN(TestNamePattern)

#include "tst_name_pattern.moc"
