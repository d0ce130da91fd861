// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <apps/velk/src/console.h>
#include <apps/velk/src/printed_value.h>

#include <QJsonObject>
#include <QTest>
#include <QVariant>

#include <limits>

using namespace Velk;

class TestPrintedValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aValueIsShownOnOneLine_data();
    void aValueIsShownOnOneLine();
    void whatATerminalTakesForACommandIsEscaped();
    void aJsonLineEndsInOneLineFeed();
};

void TestPrintedValue::aValueIsShownOnOneLine_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QVariant() << QString();
    QTest::newRow("bool") << QVariant(true) << QStringLiteral("true");
    QTest::newRow("int") << QVariant(-3) << QStringLiteral("-3");
    QTest::newRow("a large integer, to the last digit")
        << QVariant(std::numeric_limits<qlonglong>::max()) << QStringLiteral("9223372036854775807");
    QTest::newRow("double") << QVariant(0.1) << QStringLiteral("0.1");
    QTest::newRow("text") << QVariant(QStringLiteral("grüß \"dich\"")) << QStringLiteral("grüß \"dich\"");
    QTest::newRow("text of two lines") << QVariant(QStringLiteral("a\nb")) << QStringLiteral("a\\u000ab");
    QTest::newRow("list") << QVariant(QVariantList{1, 2.5, QStringLiteral("x\n")})
                          << QStringLiteral("[1,2.5,\"x\\n\"]");
    QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("x"), QVariantList{true}}})
                         << QStringLiteral("{\"x\":[true]}");
    QTest::newRow("a control character in a list")
        << QVariant(QVariantList{QString(QChar(0x9b))}) << QStringLiteral("[\"\\u009b\"]");
}

void TestPrintedValue::aValueIsShownOnOneLine()
{
    QFETCH(QVariant, value);

    QTEST(valueText(value), "text");
}

void TestPrintedValue::whatATerminalTakesForACommandIsEscaped()
{
    QCOMPARE(Console::printable(QStringLiteral("a\x1b[31m\tb") + QChar(0x2028)),
             QStringLiteral("a\\u001b[31m\\u0009b\\u2028"));
}

void TestPrintedValue::aJsonLineEndsInOneLineFeed()
{
    QCOMPARE(jsonLine({{QStringLiteral("value"), QStringLiteral("a\nb")}}), QByteArray("{\"value\":\"a\\nb\"}\n"));
}

QTEST_APPLESS_MAIN(TestPrintedValue)

#include "tst_printed_value.moc"
