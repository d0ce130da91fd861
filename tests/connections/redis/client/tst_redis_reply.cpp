// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/client/redis_reply.h>
#include <connections/redis/support/parsed_reply.h>

#include <QTest>

using Velk::RedisReply;

namespace {

// Everything that a reply answers to questions about it.
QString answers(const RedisReply& reply)
{
    QStringList kinds;
    if (reply.isNull())
        kinds << "null";
    if (reply.isError())
        kinds << "error";
    if (reply.isArray())
        kinds << "list";
    if (reply.isText())
        kinds << "text";
    return QStringLiteral("%1 \"%2\" %3 size %4")
        .arg(kinds.join(' '), reply.text(), QString::number(reply.integer()), QString::number(reply.size()));
}

} // namespace

class TestRedisReply : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyQuestionHasAnAnswerForEveryReply_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expected");
        QTest::newRow("string") << bulk("abc") << "text \"abc\" 0 size 0";
        QTest::newRow("status") << QByteArray("+PONG\r\n") << "text \"PONG\" 0 size 0";
        QTest::newRow("number in a string") << bulk("-42") << "text \"-42\" -42 size 0";
        QTest::newRow("integer") << QByteArray(":-42\r\n") << " \"\" -42 size 0";
        QTest::newRow("error") << QByteArray("-ERR no\r\n") << "error \"ERR no\" 0 size 0";
        QTest::newRow("null") << QByteArray("$-1\r\n") << "null \"\" 0 size 0";
        QTest::newRow("null list") << QByteArray("*-1\r\n") << "null \"\" 0 size 0";
        QTest::newRow("empty list") << list({}) << "list \"\" 0 size 0";
        QTest::newRow("list") << list({bulk("a"), ":1\r\n"}) << "list \"\" 0 size 2";
    }
    void everyQuestionHasAnAnswerForEveryReply()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expected);

        QCOMPARE(answers(ParsedReply(bytes).reply()), expected);
    }

    void noReplyIsNull() { QCOMPARE(answers(RedisReply()), QString("null \"\" 0 size 0")); }

    void bytesKeepWhatTextCannotHold()
    {
        const ParsedReply parsed(bulk(QByteArray("a\0\xff", 3)));

        QCOMPARE(parsed.reply().bytes(), QByteArray("a\0\xff", 3));
        QCOMPARE(parsed.reply().view().size(), qsizetype(3));
    }

    void anElementThatIsMissingIsNull()
    {
        const ParsedReply parsed(list({bulk("a"), bulk("b")}));

        QCOMPARE(parsed.reply().at(1).text(), QString("b"));
        QVERIFY(parsed.reply().at(2).isNull());
        QVERIFY(parsed.reply().at(-1).isNull());
        QVERIFY(parsed.reply().at(0).at(0).isNull());
    }

    void aFieldIsTheElementAfterItsName()
    {
        const ParsedReply parsed(list({bulk("length"), ":3\r\n", bulk("v"), bulk("length"), bulk("alone")}));

        QCOMPARE(parsed.reply().field("length").integer(), qint64(3));
        QCOMPARE(parsed.reply().field("v").text(), QString("length"));
        QVERIFY(parsed.reply().field("alone").isNull());
        QVERIFY(parsed.reply().field("missing").isNull());
    }
};

QTEST_GUILESS_MAIN(TestRedisReply)
#include "tst_redis_reply.moc"
