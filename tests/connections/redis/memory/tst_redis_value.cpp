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

        QTest::newRow("JSON") << QByteArray("17.0") << QVariant(17.0);
        QTest::newRow("JSON for no value") << QByteArray("null") << QVariant();
        QTest::newRow("not JSON") << QByteArray("open the gripper") << QVariant(QString("open the gripper"));
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
