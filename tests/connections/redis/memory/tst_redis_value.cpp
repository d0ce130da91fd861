// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_value.h>

#include <QTest>

using namespace Velk;

class TestRedisValue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void storedBytesAreAVariant_data()
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
        QTest::newRow("null") << QByteArray("null") << QVariant();
        QTest::newRow("not JSON") << QByteArray("open the gripper") << QVariant(QString("open the gripper"));
        QTest::newRow("two values are no JSON") << QByteArray("1,2") << QVariant(QString("1,2"));
        QTest::newRow("no value is no JSON") << QByteArray("] [") << QVariant(QString("] ["));
        QTest::newRow("empty") << QByteArray("") << QVariant(QString(""));
        QTest::newRow("not UTF-8") << QByteArray("caf\xe9") << QVariant(QString("caf\xef\xbf\xbd"));
    }
    void storedBytesAreAVariant()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QVariant, value);

        const QVariant result = redisValue(bytes);

        QCOMPARE(result, value);
        QCOMPARE(result.userType(), value.userType());
    }
};

QTEST_GUILESS_MAIN(TestRedisValue)
#include "tst_redis_value.moc"
