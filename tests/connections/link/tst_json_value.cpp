// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/variant_types.h"

#include <connections/link/json_value.h>

#include <QTest>

#include <cmath>
#include <limits>

using namespace Velk;

namespace {

/// A list in a list in a list.
QVariant nested(int depth)
{
    QVariant value = QVariantList();
    for (int i = 1; i < depth; ++i)
        value = QVariantList{value};
    return value;
}

} // namespace

class TestJsonValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void jsonIsAVariant_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QVariant>("value");

        QTest::newRow("boolean") << QByteArray("true") << QVariant(true);
        QTest::newRow("whole number") << QByteArray("-42") << QVariant(qlonglong(-42));
        QTest::newRow("large whole number") << QByteArray("9007199254740993") << QVariant(qlonglong(9007199254740993));
        QTest::newRow("number") << QByteArray("36.5") << QVariant(36.5);
        QTest::newRow("a number with a point is floating") << QByteArray("17.0") << QVariant(17.0);
        QTest::newRow("a number with an exponent is floating") << QByteArray(" 2E3 ") << QVariant(2000.0);
        QTest::newRow("negative zero") << QByteArray("-0.0") << QVariant(-0.0);
        QTest::newRow("text") << QByteArray("\"open\"") << QVariant(QString("open"));
        QTest::newRow("list") << QByteArray("[1,2.5,\"a\"]") << QVariant(QVariantList{qlonglong(1), 2.5, QString("a")});
        QTest::newRow("map") << QByteArray("{\"x\":1}") << QVariant(QVariantMap{{"x", qlonglong(1)}});
        QTest::newRow("in a list a number with a point is whole")
            << QByteArray("[17.0,2E3,[-1.0]]")
            << QVariant(QVariantList{qlonglong(17), qlonglong(2000), QVariantList{qlonglong(-1)}});
        QTest::newRow("in a map a number with a point is whole")
            << QByteArray("{\"x\":17.0,\"y\":0.5}") << QVariant(QVariantMap{{"x", qlonglong(17)}, {"y", 0.5}});
        QTest::newRow("null") << QByteArray("null") << QVariant();
        QTest::newRow("blanks around it") << QByteArray(" \n1\t") << QVariant(qlonglong(1));
        QTest::newRow("a number beyond 64 bits is floating")
            << QByteArray("18446744073709551616") << QVariant(18446744073709551616.0);
        QTest::newRow("nested 1000 deep") << QByteArray(1000, '[') + QByteArray(1000, ']') << nested(1000);
    }
    void jsonIsAVariant()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QVariant, value);

        const std::optional<QVariant> result = JsonValue::parse(bytes);

        QVERIFY(result);
        QCOMPARE(*result, value);
        QCOMPARE(typesOf(*result), typesOf(value));
    }

    void otherBytesAreNoValue_data()
    {
        QTest::addColumn<QByteArray>("bytes");

        QTest::newRow("words") << QByteArray("open the gripper");
        QTest::newRow("two values") << QByteArray("1,2");
        QTest::newRow("brackets that close another list") << QByteArray("] [");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("not UTF-8") << QByteArray("\"caf\xe9\"");
        QTest::newRow("not a number") << QByteArray("nan");
        QTest::newRow("a number beyond a double") << QByteArray("1e400");
        QTest::newRow("nested too deep") << QByteArray(2000, '[') + QByteArray(2000, ']');
    }
    void otherBytesAreNoValue()
    {
        QFETCH(QByteArray, bytes);

        QVERIFY(!JsonValue::parse(bytes));
    }

    void aVariantIsWrittenAsJson_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("expected");

        QTest::newRow("boolean") << QVariant(false) << QByteArray("false");
        QTest::newRow("whole number") << QVariant(7) << QByteArray("7");
        QTest::newRow("largest whole number")
            << QVariant(std::numeric_limits<qulonglong>::max()) << QByteArray("18446744073709551615");
        QTest::newRow("a double that is whole keeps its point") << QVariant(17.0) << QByteArray("17.0");
        QTest::newRow("every digit of a double") << QVariant(0.1 + 0.2) << QByteArray("0.30000000000000004");
        QTest::newRow("a large double") << QVariant(1e300) << QByteArray("1e+300");
        QTest::newRow("not a number") << QVariant(std::nan("")) << QByteArray("nan");
        QTest::newRow("infinite") << QVariant(-INFINITY) << QByteArray("-inf");
        QTest::newRow("text") << QVariant("a \"b\"") << QByteArray("\"a \\\"b\\\"\"");
        QTest::newRow("list") << QVariant(QVariantList{1, "a"}) << QByteArray("[1,\"a\"]");
        QTest::newRow("a double in a list") << QVariant(QVariantList{17.0, 0.5}) << QByteArray("[17,0.5]");
        QTest::newRow("map") << QVariant(QVariantMap{{"x", 1}}) << QByteArray("{\"x\":1}");
        QTest::newRow("a double in a map") << QVariant(QVariantMap{{"x", 17.0}}) << QByteArray("{\"x\":17}");
        QTest::newRow("no value") << QVariant() << QByteArray("null");
    }
    void aVariantIsWrittenAsJson()
    {
        QFETCH(QVariant, value);
        QFETCH(QByteArray, expected);

        QCOMPARE(JsonValue::write(value), expected);
    }

    void aWrittenVariantIsParsedBack_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("boolean") << QVariant(true);
        QTest::newRow("whole number") << QVariant(qlonglong(-7));
        QTest::newRow("double") << QVariant(17.0);
        QTest::newRow("text") << QVariant("17");
        QTest::newRow("list") << QVariant(QVariantList{qlonglong(1), 2.5});
        QTest::newRow("no value") << QVariant();
    }
    void aWrittenVariantIsParsedBack()
    {
        QFETCH(QVariant, value);

        const QVariant result = *JsonValue::parse(JsonValue::write(value));

        QCOMPARE(result, value);
        QCOMPARE(typesOf(result), typesOf(value));
    }
};

QTEST_GUILESS_MAIN(TestJsonValue)
#include "tst_json_value.moc"
