// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/client/redis_reply_limiter.h>
#include <connections/redis/support/parsed_reply.h>

#include <QTest>

using Velk::RedisReplyLimiter;

namespace {

// At most 100 bytes in a value, 400 in a reply, 50 elements in a list.
constexpr RedisReplyLimiter::Limits limits = {100, 400, 50};

// What the limiter lets through of the bytes, which come in pieces of the given size; or "fails: " and the reason.
QByteArray filtered(const QByteArray& bytes, qsizetype pieceSize)
{
    RedisReplyLimiter limiter(limits);
    QByteArray output;
    for (qsizetype at = 0; at < bytes.size(); at += pieceSize) {
        const QByteArray piece = bytes.mid(at, pieceSize);
        if (!limiter.filter(piece.constData(), piece.size(), &output))
            return "fails: " + limiter.errorString().toUtf8();
    }
    return output;
}

} // namespace

class TestRedisReplyLimiter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void repliesWithinTheLimitsPassUnchanged_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("status") << QByteArray("+PONG\r\n");
        QTest::newRow("error") << QByteArray("-ERR no\r\n");
        QTest::newRow("integer") << QByteArray(":1\r\n");
        QTest::newRow("null") << QByteArray("$-1\r\n");
        QTest::newRow("null list") << QByteArray("*-1\r\n");
        QTest::newRow("empty string") << bulk("");
        QTest::newRow("longest value") << bulk(QByteArray(100, 'x'));
        QTest::newRow("line ends in a value") << bulk("a\r\n$b\r\n");
        QTest::newRow("nested lists") << list({bulk("a"), list({list({}), ":1\r\n"}), bulk("b")});
        QTest::newRow("most elements") << list(QByteArrayList(50, ":1\r\n"));
        QTest::newRow("several replies") << QByteArray("+A\r\n") + bulk(QByteArray(90, 'x')) +
                                                bulk(QByteArray(90, 'y')) + bulk(QByteArray(90, 'z')) +
                                                bulk(QByteArray(90, 'w'));
    }
    void repliesWithinTheLimitsPassUnchanged()
    {
        QFETCH(QByteArray, bytes);

        QCOMPARE(filtered(bytes, bytes.size()), bytes);
        QCOMPARE(filtered(bytes, 1), bytes);
    }

    void aValueThatIsTooLongBecomesAnError_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("expected");
        QTest::newRow("alone") << bulk(QByteArray(101, 'x')) << QByteArray("-OVERSIZE 101\r\n");
        QTest::newRow("the reply goes on after it")
            << list({bulk(QByteArray(101, 'x')), bulk("b")}) << list({"-OVERSIZE 101\r\n", bulk("b")});
        QTest::newRow("the reply is used up")
            << list({bulk(QByteArray(100, 'x')), bulk(QByteArray(100, 'x')), bulk(QByteArray(100, 'x')), bulk("id")})
            << list({bulk(QByteArray(100, 'x')), "-OVERSIZE 100\r\n", "-OVERSIZE 100\r\n", bulk("id")});
    }
    void aValueThatIsTooLongBecomesAnError()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, expected);

        QCOMPARE(filtered(bytes, bytes.size()), expected);
        QCOMPARE(filtered(bytes, 1), expected);
    }

    void whatIsNotTheProtocolEndsTheStream_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("another protocol")
            << QByteArray("HTTP/1.1\r\n") << QByteArray("a reply that starts with the byte 72");
        QTest::newRow("NUL") << QByteArray("\0", 1) << QByteArray("a reply that starts with the byte 0");
        QTest::newRow("a line without an end")
            << '+' + QByteArray(70000, 'x') << QByteArray("a line of more than 65536 bytes");
        QTest::newRow("a line feed alone")
            << QByteArray("+PONG\n") << QByteArray("a line that does not end with a carriage return and a line feed");
        QTest::newRow("a length in words")
            << QByteArray("$x\r\n") << QByteArray("a value whose length is not a number");
        QTest::newRow("a negative length")
            << QByteArray("$-2\r\n") << QByteArray("a value whose length is not a number");
        QTest::newRow("a length beyond belief")
            << QByteArray("$9999999999999\r\n") << QByteArray("a value whose length is not a number");
        QTest::newRow("a list in words") << QByteArray("*x\r\n") << QByteArray("a list whose length is not a number");
        QTest::newRow("a list that is too long") << QByteArray("*51\r\n") << QByteArray("a list of 51 elements");
        QTest::newRow("lists that are too deep")
            << QByteArray("*1\r\n").repeated(8) << QByteArray("lists within lists, more than 7 deep");
    }
    void whatIsNotTheProtocolEndsTheStream()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, reason);

        QCOMPARE(filtered(bytes, bytes.size()), "fails: " + reason);
        QCOMPARE(filtered(bytes, 1), "fails: " + reason);
    }

    void nothingIsFilteredAfterAFailure()
    {
        RedisReplyLimiter limiter(limits);
        QByteArray output;
        QVERIFY(!limiter.filter("?", 1, &output));

        QVERIFY(!limiter.filter("+PONG\r\n", 7, &output));
        QCOMPARE(output, QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestRedisReplyLimiter)
#include "tst_redis_reply_limiter.moc"
