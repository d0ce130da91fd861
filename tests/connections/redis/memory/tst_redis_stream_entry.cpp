// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_stream_entry.h>
#include <connections/redis/support/parsed_reply.h>

#include <QTest>

using Velk::RedisStreamEntry;

namespace {

// An entry of a stream in the protocol's form.
QByteArray entry(const QByteArray& id, const QByteArrayList& fields)
{
    return list({bulk(id), list(fields)});
}

} // namespace

class TestRedisStreamEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTimeIsTheProducersOrThatOfTheId_data()
    {
        QTest::addColumn<QByteArrayList>("fields");
        QTest::addColumn<double>("expected");
        QTest::newRow("the producer's") << QByteArrayList{bulk("t"), bulk("12.5"), bulk("v"), bulk("1")} << 12.5;
        QTest::newRow("after the value") << QByteArrayList{bulk("v"), bulk("1"), bulk("t"), bulk("12.5")} << 12.5;
        QTest::newRow("missing") << QByteArrayList{bulk("v"), bulk("1")} << 1700000000.125;
        QTest::newRow("no number") << QByteArrayList{bulk("t"), bulk("noon"), bulk("v"), bulk("1")} << 1700000000.125;
        QTest::newRow("not finite") << QByteArrayList{bulk("t"), bulk("inf"), bulk("v"), bulk("1")} << 1700000000.125;
    }
    void theTimeIsTheProducersOrThatOfTheId()
    {
        QFETCH(QByteArrayList, fields);
        QFETCH(double, expected);
        const ParsedReply parsed(entry("1700000000125-3", fields));

        const RedisStreamEntry result = RedisStreamEntry::of(parsed.reply());

        QCOMPARE(result.stamp, expected);
        QCOMPARE(result.id, QByteArray("1700000000125-3"));
        QCOMPARE(result.value, QVariant(qlonglong(1)));
        QCOMPARE(result.cutBytes, qint64(0));
    }

    void anEntryWithoutAValueIsAMapOfItsFields()
    {
        const ParsedReply parsed(entry("1-1", {bulk("x"), bulk("1.5"), bulk("state"), bulk("open")}));

        QCOMPARE(RedisStreamEntry::of(parsed.reply()).value, QVariant(QVariantMap{{"x", 1.5}, {"state", "open"}}));
    }

    void theLengthOfAValueThatWasTakenOutIsKnown_data()
    {
        QTest::addColumn<QByteArrayList>("fields");
        QTest::addColumn<qint64>("expected");
        QTest::newRow("the value") << QByteArrayList{bulk("v"), "-OVERSIZE 17000000\r\n"} << qint64(17000000);
        QTest::newRow("another field") << QByteArrayList{bulk("v"), bulk("1"), bulk("x"), "-OVERSIZE 5\r\n"}
                                       << qint64(5);
        QTest::newRow("another error") << QByteArrayList{bulk("v"), "-ERR\r\n"} << qint64(1);
    }
    void theLengthOfAValueThatWasTakenOutIsKnown()
    {
        QFETCH(QByteArrayList, fields);
        QFETCH(qint64, expected);
        const ParsedReply parsed(entry("1-1", fields));

        QCOMPARE(RedisStreamEntry::of(parsed.reply()).cutBytes, expected);
    }

    void whatIsNoEntryHasNoId_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("null") << QByteArray("$-1\r\n");
        QTest::newRow("empty list") << list({});
        QTest::newRow("integer") << QByteArray(":1\r\n");
        QTest::newRow("error") << QByteArray("-ERR\r\n");
    }
    void whatIsNoEntryHasNoId()
    {
        QFETCH(QByteArray, bytes);
        const ParsedReply parsed(bytes);

        QCOMPARE(RedisStreamEntry::of(parsed.reply()).id, QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestRedisStreamEntry)
#include "tst_redis_stream_entry.moc"
