// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_stream_position.h>
#include <connections/redis/support/parsed_reply.h>

#include <QTest>

using namespace Velk;

namespace {

// The reply to XINFO STREAM; -1: a server that does not count what was added.
ParsedReply info(const QByteArray& newestId, int added, int length, const QByteArray& oldestId = "")
{
    QByteArrayList fields = {bulk("length"), ':' + QByteArray::number(length) + "\r\n", bulk("last-generated-id"),
                             bulk(newestId)};
    if (added != -1)
        fields << bulk("entries-added") << ':' + QByteArray::number(added) + "\r\n";
    if (!oldestId.isEmpty())
        fields << bulk("first-entry") << list({bulk(oldestId), list({bulk("v"), bulk("1")})});
    return ParsedReply(list(fields));
}

RedisStreamPosition position(const QByteArray& id, qint64 added)
{
    RedisStreamPosition result;
    result.id = id;
    result.entriesAdded = added;
    return result;
}

} // namespace

class TestRedisStreamPosition : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void idsAreComparedAsNumbers_data()
    {
        QTest::addColumn<QByteArray>("a");
        QTest::addColumn<QByteArray>("b");
        QTest::addColumn<bool>("isOlder");
        QTest::newRow("time") << QByteArray("9-0") << QByteArray("10-0") << true;
        QTest::newRow("sequence") << QByteArray("10-9") << QByteArray("10-10") << true;
        QTest::newRow("equal") << QByteArray("10-1") << QByteArray("10-1") << false;
        QTest::newRow("newer") << QByteArray("11-0") << QByteArray("10-5") << false;
        QTest::newRow("without a sequence") << QByteArray("10") << QByteArray("10-1") << true;
    }
    void idsAreComparedAsNumbers()
    {
        QFETCH(QByteArray, a);
        QFETCH(QByteArray, b);
        QFETCH(bool, isOlder);

        QCOMPARE(isOlderStreamId(a, b), isOlder);
    }

    void theTimeOfAnIdIsInSeconds()
    {
        QCOMPARE(streamIdSeconds("1700000000125-7"), 1700000000.125);
        QCOMPARE(streamIdSeconds(""), 0.0);
    }

    void theEndOfAStreamIsItsNewestEntry()
    {
        const RedisStreamPosition end = RedisStreamPosition::endOf(info("20-0", 7, 3).reply());

        QCOMPARE(end.id, QByteArray("20-0"));
        QCOMPARE(end.entriesAdded, qint64(7));
        QCOMPARE(RedisStreamPosition::endOf(info("20-0", -1, 3).reply()).entriesAdded, qint64(-1));
    }

    void entriesThatWereDiscardedUnreadAreCountedOnce_data()
    {
        QTest::addColumn<QByteArray>("readId");
        QTest::addColumn<int>("read");
        QTest::addColumn<int>("added");
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("expected");
        QTest::newRow("all read") << QByteArray("20-0") << 7 << 7 << 3 << 0;
        QTest::newRow("all unread are there") << QByteArray("10-0") << 4 << 7 << 3 << 0;
        QTest::newRow("some are not") << QByteArray("10-0") << 4 << 9 << 3 << 2;
        QTest::newRow("none is there") << QByteArray("10-0") << 4 << 9 << 0 << 5;
        QTest::newRow("at the end, discarded ones count") << QByteArray("20-0") << 4 << 9 << 3 << 5;
        QTest::newRow("a server that does not count") << QByteArray("10-0") << 4 << -1 << 3 << 0;
        QTest::newRow("read where the server did not count") << QByteArray("10-0") << -1 << 9 << 3 << 0;
        QTest::newRow("more entries than were added") << QByteArray("10-0") << 4 << 7 << 100 << 0;
    }
    void entriesThatWereDiscardedUnreadAreCountedOnce()
    {
        QFETCH(QByteArray, readId);
        QFETCH(int, read);
        QFETCH(int, added);
        QFETCH(int, length);
        QFETCH(int, expected);
        RedisStreamPosition present = position(readId, read);

        QCOMPARE(present.countTrimmed(info("20-0", added, length).reply()), qint64(expected));
        QCOMPARE(present.countTrimmed(info("20-0", added, length).reply()), qint64(0));
        QCOMPARE(present.id, readId);
    }

    void aStreamWithAnOlderEndIsReadFromItsStart()
    {
        RedisStreamPosition old = position("30-0", 9);

        QVERIFY(!old.isAheadOf(info("20-0", 3, 3).reply()));
        QCOMPARE(old.countTrimmed(info("20-0", 3, 3).reply()), qint64(0));
        QCOMPARE(old.id, QByteArray("0-0"));
        QCOMPARE(old.entriesAdded, qint64(0));
    }

    void aStreamThatComesBackOlderIsReadOnFromItsNewestEntry()
    {
        RedisStreamPosition ahead = position("1700000000900-0", 1000);
        const ParsedReply older = info("1700000000500-0", 996, 100);

        QVERIFY(ahead.isAheadOf(older.reply()));
        QCOMPARE(ahead.countTrimmed(older.reply()), qint64(0));

        QCOMPARE(ahead.id, QByteArray("1700000000500-0"));
        QCOMPARE(ahead.entriesAdded, qint64(996));
        QVERIFY(!ahead.isAheadOf(older.reply()));
        QCOMPARE(ahead.countTrimmed(info("1700000002000-0", 1099, 100).reply()), qint64(3));
    }

    void aStreamThatCameBackOlderAndHasNewEntriesCountsNoLoss()
    {
        RedisStreamPosition ahead = position("1700000000900-0", 1000);
        const ParsedReply older = info("1700000001200-0", 998, 100, "1700000000100-0");

        QVERIFY(ahead.isAheadOf(older.reply()));
        QCOMPARE(ahead.countTrimmed(older.reply()), qint64(0));

        QCOMPARE(ahead.id, QByteArray("1700000000900-0"));
        ahead.id = "1700000001200-0"; // what is new was read
        QCOMPARE(ahead.countTrimmed(older.reply()), qint64(0));
        QCOMPARE(ahead.entriesAdded, qint64(998));
    }

    void aStreamThatWasCreatedAgainIsNotTakenForAnOlderOne()
    {
        RedisStreamPosition old = position("1700000000900-0", 1000);
        const ParsedReply created = info("1700000001200-0", 7, 3, "1700000001000-0");

        QVERIFY(!old.isAheadOf(created.reply()));
        QCOMPARE(old.countTrimmed(created.reply()), qint64(4));
    }
};

QTEST_GUILESS_MAIN(TestRedisStreamPosition)
#include "tst_redis_stream_position.moc"
