// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/variant_types.h"

#include <apps/velk/src/json_argument.h>

#include <QTest>

using namespace Velk;

class TestJsonArgument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTypeAndDigits_data();
    void keepsTypeAndDigits();
    void refusesWhatWouldLoseDigits_data();
    void refusesWhatWouldLoseDigits();
    void refusesWhatIsNotJson_data();
    void refusesWhatIsNotJson();
};

void TestJsonArgument::keepsTypeAndDigits_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("whole number") << QByteArray("42") << QVariant(42LL);
    QTest::newRow("largest whole number") << QByteArray("9223372036854775807") << QVariant(9223372036854775807LL);
    QTest::newRow("with blanks") << QByteArray(" -7 ") << QVariant(-7LL);
    QTest::newRow("fraction") << QByteArray("1.50") << QVariant(1.5);
    QTest::newRow("no exact binary fraction") << QByteArray("0.1") << QVariant(0.1);
    QTest::newRow("17 digits") << QByteArray("0.30000000000000004") << QVariant(0.1 + 0.2);
    QTest::newRow("whole with a point") << QByteArray("3.0") << QVariant(3.0);
    QTest::newRow("whole with an exponent") << QByteArray("1e3") << QVariant(1000.0);
    QTest::newRow("leading zeros") << QByteArray("0.0025e+1") << QVariant(0.025);
    QTest::newRow("zero") << QByteArray("0.00") << QVariant(0.0);
    QTest::newRow("true") << QByteArray("true") << QVariant(true);
    QTest::newRow("null") << QByteArray("null") << QVariant();
    QTest::newRow("text") << QByteArray("\"open\"") << QVariant(QStringLiteral("open"));
    QTest::newRow("digits in a text") << QByteArray("\"\\\"12345678901234567890123\"")
                                      << QVariant(QStringLiteral("\"12345678901234567890123"));
    QTest::newRow("not ASCII") << QByteArray("\"caf\xc3\xa9\"") << QVariant(QString::fromUtf8("caf\xc3\xa9"));
    QTest::newRow("list") << QByteArray("[0.5, 2]") << QVariant(QVariantList({0.5, 2LL}));
    QTest::newRow("whole with a point in a list") << QByteArray("[3.0]") << QVariant(QVariantList({3LL}));
    QTest::newRow("whole with a point in a map") << QByteArray("{\"a\": 3.0}") << QVariant(QVariantMap({{"a", 3LL}}));
}

void TestJsonArgument::keepsTypeAndDigits()
{
    QFETCH(QByteArray, json);
    QFETCH(QVariant, value);
    QString error;

    const std::optional<QVariant> result = jsonArgument(json, &error);

    QVERIFY2(result, qPrintable(error));
    QCOMPARE(*result, value);
    QCOMPARE(typesOf(*result), typesOf(value));
}

void TestJsonArgument::refusesWhatWouldLoseDigits_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("number");
    QTest::newRow("above 64 bits") << QByteArray("9223372036854775808") << "9223372036854775808";
    QTest::newRow("below 64 bits") << QByteArray("-9223372036854775809") << "-9223372036854775809";
    QTest::newRow("20 digits") << QByteArray("0.12345678901234567890") << "0.12345678901234567890";
    QTest::newRow("beyond a double") << QByteArray("1e400") << "1e400";
    QTest::newRow("too small for a double") << QByteArray("1e-400") << "1e-400";
    QTest::newRow("in a list") << QByteArray("[\"1\", {\"a\": 18446744073709551616}]") << "18446744073709551616";
    QTest::newRow("several") << QByteArray("[1e400, -1e400, 2e400]") << "1e400";
    QTest::newRow("behind a long text") << QByteArray("[\"" + QByteArray(1000000, 'a') + "\", 0.12345678901234567890]")
                                        << "0.12345678901234567890";
}

void TestJsonArgument::refusesWhatWouldLoseDigits()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, number);
    QString error;

    QVERIFY(!jsonArgument(json, &error));

    QVERIFY2(error.startsWith("The number " + number + " cannot be written without a loss"), qPrintable(error));
}

void TestJsonArgument::refusesWhatIsNotJson_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("bare word") << QByteArray("open");
    QTest::newRow("two values") << QByteArray("1, 2");
    QTest::newRow("leading zero") << QByteArray("007");
    QTest::newRow("words with a long number") << QByteArray("serial 12345678901234567890");
    QTest::newRow("leading zero of a long number") << QByteArray("012345678901234567890");
    QTest::newRow("leading zero of a large number") << QByteArray("01e400");
    QTest::newRow("two exponents behind a large number") << QByteArray("-1e400e5");
    QTest::newRow("point behind a large number") << QByteArray("[1e400.5]");
    QTest::newRow("large number as a name") << QByteArray("{1e400: 1}");
    QTest::newRow("not UTF-8") << QByteArray("\"caf\xe9\"");
    QTest::newRow("closed list") << QByteArray("1], [2");
}

void TestJsonArgument::refusesWhatIsNotJson()
{
    QFETCH(QByteArray, json);
    QString error;

    QVERIFY(!jsonArgument(json, &error));

    QVERIFY2(error.startsWith("The value is not JSON: "), qPrintable(error));
}

QTEST_APPLESS_MAIN(TestJsonArgument)
#include "tst_json_argument.moc"
