#include "itemmodels/src/name_pattern.h"

#include "itemmodels/src/name_path.h"
#include "model_text.h"

#include <QtTest>

using namespace Velk;

namespace {

bool accepts(const NamePattern& pattern, const QString& name)
{
    return pattern.accepts(name, foldedCase(name));
}

} // namespace

class TestNamePattern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptsNames_data();
    void acceptsNames();
    void acceptsEverythingWhenItIsEmpty();
    void tellsWhatIsWrongWithAnExpression();
    void knowsWhatItNarrows_data();
    void knowsWhatItNarrows();
};

void TestNamePattern::acceptsNames_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<int>("syntax");
    QTest::addColumn<QString>("accepted");
    QTest::addColumn<QString>("refused");

    const int wildcard = NamePattern::Wildcard;
    const int fixed = NamePattern::FixedString;
    const int expression = NamePattern::RegularExpression;
    QTest::newRow("anywhere") << text("lb") << wildcard << text("Elbow") << text("Elow");
    QTest::newRow("pieces in order") << text("a*b") << wildcard << text("xaxbx") << text("ba");
    QTest::newRow("pieces do not overlap") << text("aa*aa") << wildcard << text("aaaa") << text("aaa");
    QTest::newRow("any one") << text("a?c") << wildcard << text("a/c") << text("ac");
    QTest::newRow("one of a set") << text("J[1-3]") << wildcard << text("J2") << text("J4");
    QTest::newRow("none of a set") << text("J[!1-3]") << wildcard << text("J4") << text("J2");
    QTest::newRow("none of a set, as in shells") << text("J[^1]") << wildcard << text("J2") << text("J1");
    QTest::newRow("a bracket in a set") << text("J[]]") << wildcard << text("J]") << text("J[");
    QTest::newRow("an opening bracket in a set") << text("J[[]2") << wildcard << text("J[2]") << text("J2");
    QTest::newRow("a backslash in a set") << text("[\\]x") << wildcard << text("\\x") << text("]x");
    QTest::newRow("an open bracket") << text("J[1") << wildcard << text("J[12]") << text("J1");
    QTest::newRow("what means something elsewhere")
        << text("a.(b)?+") << wildcard << text("a.(b)x+") << text("ax(b)x+");
    QTest::newRow("a fixed text") << text("a*[b]?") << fixed << text("xa*[b]?x") << text("ab");
    QTest::newRow("an expression") << text("^J\\d+$") << expression << text("J12") << text("J12a");
    QTest::newRow("an expression of alternatives") << text("a|b") << expression << text("xb") << text("c");
}

void TestNamePattern::acceptsNames()
{
    QFETCH(QString, pattern);
    QFETCH(int, syntax);
    QFETCH(QString, accepted);
    QFETCH(QString, refused);

    const NamePattern exact(pattern, NamePattern::Syntax(syntax), Qt::CaseSensitive);
    QVERIFY(exact.errorString().isEmpty());
    QVERIFY(accepts(exact, accepted));
    QVERIFY(!accepts(exact, refused));

    const NamePattern folded(pattern, NamePattern::Syntax(syntax), Qt::CaseInsensitive);
    QVERIFY(accepts(folded, accepted.toUpper()));
    QVERIFY(accepts(folded, accepted.toLower()));
    QVERIFY(!accepts(folded, refused.toUpper()));
}

void TestNamePattern::acceptsEverythingWhenItIsEmpty()
{
    for (const NamePattern::Syntax syntax :
         {NamePattern::FixedString, NamePattern::Wildcard, NamePattern::RegularExpression}) {
        const NamePattern pattern(QString(), syntax, Qt::CaseSensitive);
        QVERIFY(pattern.acceptsEverything());
        QVERIFY(accepts(pattern, QString()));
        QVERIFY(accepts(pattern, text("x")));
    }
    QVERIFY(NamePattern(text("**"), NamePattern::Wildcard, Qt::CaseSensitive).acceptsEverything());
}

void TestNamePattern::tellsWhatIsWrongWithAnExpression()
{
    QVERIFY(!NamePattern(text("("), NamePattern::RegularExpression, Qt::CaseSensitive).errorString().isEmpty());
    QVERIFY(!NamePattern(text("[3-1]"), NamePattern::Wildcard, Qt::CaseSensitive).errorString().isEmpty());
}

void TestNamePattern::knowsWhatItNarrows_data()
{
    QTest::addColumn<QString>("narrow");
    QTest::addColumn<QString>("wide");
    QTest::addColumn<bool>("expected");

    QTest::newRow("a character more") << text("ab") << text("a") << true;
    QTest::newRow("a character before") << text("ba") << text("a") << true;
    QTest::newRow("a character less") << text("a") << text("ab") << false;
    QTest::newRow("another piece") << text("ab*c") << text("b") << true;
    QTest::newRow("a piece less") << text("a") << text("a*b") << false;
    QTest::newRow("all of everything") << text("a?") << QString() << true;
    QTest::newRow("expressions are not compared") << text("a?b") << text("a") << false;
    QTest::newRow("pieces in another order") << text("b*a") << text("a*b") << false;
}

void TestNamePattern::knowsWhatItNarrows()
{
    QFETCH(QString, narrow);
    QFETCH(QString, wide);

    const NamePattern narrowPattern(narrow, NamePattern::Wildcard, Qt::CaseSensitive);

    QTEST(narrowPattern.narrows(NamePattern(wide, NamePattern::Wildcard, Qt::CaseSensitive)), "expected");
    QVERIFY(!narrowPattern.narrows(NamePattern(text("a"), NamePattern::Wildcard, Qt::CaseInsensitive)));
}

QTEST_APPLESS_MAIN(TestNamePattern)

#include "tst_name_pattern.moc"
