// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/value_text.h>

#include "model_text.h"
#include "value_lists.h"

#include <QDateTime>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace Velk;

class TestValueText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsAValueInBrief_data();
    void showsAValueInBrief();
    void showsAValueInFull_data();
    void showsAValueInFull();
    void shortensAHugeValue();
    void usesTheDecimalPointOfTheLocale();
    void drawsNumbersAndBooleans();
};

void TestValueText::showsAValueInBrief_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << QVariant() << QString();
    QTest::newRow("true") << QVariant(true) << text("true");
    QTest::newRow("false") << QVariant(false) << text("false");
    QTest::newRow("an integer") << QVariant(-1234567) << text("-1234567");
    QTest::newRow("a long integer") << QVariant(qulonglong(18446744073709551615u)) << text("18446744073709551615");
    QTest::newRow("a real number") << QVariant(21.4375) << text("21.4375");
    QTest::newRow("six digits") << QVariant(3.14159265) << text("3.14159");
    QTest::newRow("a whole real number") << QVariant(5.0) << text("5");
    QTest::newRow("a small number") << QVariant(0.0000123456789) << text("1.23457e-05");
    QTest::newRow("a big number") << QVariant(1711286123.75) << text("1711286124");
    QTest::newRow("rounded up to seven digits") << QVariant(999999.75) << text("1000000");
    QTest::newRow("the smallest number with an exponent") << QVariant(1e15) << text("1e+15");
    QTest::newRow("a huge number") << QVariant(1.5e20) << text("1.5e+20");
    QTest::newRow("a float") << QVariant(0.1f) << text("0.1");
    QTest::newRow("not a number") << QVariant(std::nan("")) << text("NaN");
    QTest::newRow("infinite") << QVariant(-HUGE_VAL) << QString::fromUtf8("\u2212\u221e");
    QTest::newRow("a text") << QVariant(text("hello")) << text("hello");
    QTest::newRow("a text of lines") << QVariant(text("a\nb\tc")) << text("a b c");
    QTest::newRow("a long text") << QVariant(QString(100, QLatin1Char('x')))
                                 << QString(79, QLatin1Char('x')) + QChar(0x2026);
    QTest::newRow("a text with other line breaks") << QVariant(text("a\u2028b\u2029c")) << text("a b c");
    QTest::newRow("a long text with a surrogate pair at its end")
        << QVariant(QString(78, QLatin1Char('x')) + text("\U0001F600\U0001F600"))
        << QString(78, QLatin1Char('x')) + QChar(0x2026);
    QTest::newRow("a character") << QVariant(QChar(0x00e4)) << QString(QChar(0x00e4));
    QTest::newRow("bytes") << QVariant(QByteArray("\x01\xff", 2)) << text("01 ff");
    QTest::newRow("many bytes") << QVariant(QByteArray(17, '\x2a'))
                                << text("2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a 2a \u2026 (17 bytes)");
    QTest::newRow("a short list") << QVariant(QVariantList{1, 2.5, text("x"), true}) << text("[1, 2.5, x, true]");
    QTest::newRow("an empty list") << QVariant(QVariantList()) << text("[]");
    QTest::newRow("a long list") << QVariant(numbers(12)) << text("[1, 2, 3, 4, \u2026] (12 in all)");
    QTest::newRow("a list of texts") << QVariant(list("a|b")) << text("[a, b]");
    QTest::newRow("a list of nothing") << QVariant(QVariantList{QVariant()}) << text("[none]");
    QTest::newRow("a map") << QVariant(QVariantMap{{text("y"), 2}, {text("x"), 1}}) << text("{x: 1, y: 2}");
    QTest::newRow("a big map") << QVariant(QVariantMap{{text("a"), 1}, {text("b"), 2}, {text("c"), 3}, {text("d"), 4}})
                               << text("{a: 1, b: 2, c: 3, \u2026} (4 in all)");
    QTest::newRow("lists in lists") << QVariant(QVariantList{QVariant(QVariantList{QVariant(numbers(2))})})
                                    << text("[[[\u2026] (2 in all)]]");
    QTest::newRow("a point in time") << QVariant(QDateTime(QDate(2024, 3, 1), QTime(9, 5, 7, 30)))
                                     << QLocale::c().toString(QDate(2024, 3, 1), QLocale::ShortFormat) +
                                            text(" 09:05:07.030");
    QTest::newRow("a type without text") << QVariant(QSizeF(1, 2)) << text("(QSizeF)");
}

void TestValueText::showsAValueInBrief()
{
    QFETCH(QVariant, value);

    QTEST(ValueText::brief(value, QLocale::c()), "expected");
}

void TestValueText::showsAValueInFull_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("none") << QVariant() << QString();
    QTest::newRow("a real number") << QVariant(3.14159265) << text("3.14159265");
    QTest::newRow("a text of lines") << QVariant(text("a\nb")) << text("a\nb");
    QTest::newRow("a long text") << QVariant(QString(100, QLatin1Char('x'))) << QString(100, QLatin1Char('x'));
    QTest::newRow("a list") << QVariant(numbers(6)) << text("1\n2\n3\n4\n5\n6");
    QTest::newRow("an empty list") << QVariant(QVariantList()) << text("[]");
    QTest::newRow("a map of lists") << QVariant(QVariantMap{{text("a"), numbers(2)}, {text("b"), QVariantMap()}})
                                    << text("a: \n    1\n    2\nb: {}");
}

void TestValueText::showsAValueInFull()
{
    QFETCH(QVariant, value);

    QTEST(ValueText::full(value, QLocale::c()), "expected");
}

void TestValueText::shortensAHugeValue()
{
    QVERIFY(ValueText::full(numbers(100000), QLocale::c()).endsWith(text("\n1000\n\u2026 and more")));
    QVERIFY(ValueText::full(QString(1000000, QLatin1Char('x')), QLocale::c()).size() < 20100);
    QVERIFY(ValueText::full(QByteArray(1000000, 'x'), QLocale::c()).size() < 20100);
    QVERIFY(ValueText::brief(numbers(100000), QLocale::c()).size() < 100);
}

void TestValueText::usesTheDecimalPointOfTheLocale()
{
    const QLocale german(QLocale::German, QLocale::Germany);

    QCOMPARE(ValueText::brief(1234.5, german), text("1234,5"));
    QCOMPARE(ValueText::brief(1234567, german), text("1234567"));
}

void TestValueText::drawsNumbersAndBooleans()
{
    QCOMPARE(ValueText::number(2.5), 2.5);
    QCOMPARE(ValueText::number(7), 7.0);
    QCOMPARE(ValueText::number(QVariant::fromValue(short(-3))), -3.0);
    QCOMPARE(ValueText::number(true), 1.0);
    QCOMPARE(ValueText::number(false), 0.0);
    for (const QVariant& value : {QVariant(), QVariant(text("7")), QVariant(numbers(1))})
        QVERIFY(std::isnan(ValueText::number(value)));
    QVERIFY(ValueText::isNumber(7u));
    QVERIFY(!ValueText::isNumber(true));
    QVERIFY(!ValueText::isNumber(text("7")));
}

QTEST_GUILESS_MAIN(TestValueText)

#include "tst_value_text.moc"
