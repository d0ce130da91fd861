// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_layout.h>
#include <connections/redis/memory/redis_metadata.h>
#include <connections/redis/support/parsed_reply.h>

#include <QTest>

using namespace Velk;

class TestRedisMetadata : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCommandReadsTheRobotsHash()
    {
        QCOMPARE(RedisMetadata::command(RedisLayout("arm1")),
                 (QByteArrayList{"HMGET", "mem:{arm1}:meta", "realtime", "name"}));
    }

    void realTimeIsAFlagOrMissing_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("expected"); // -1: missing
        const auto row = [](const char* name, const QByteArray& field, int expected) {
            QTest::newRow(name) << list({field, "$-1\r\n"}) << expected;
        };
        row("one", bulk("1"), 1);
        row("zero", bulk("0"), 0);
        row("true", bulk("TRUE"), 1);
        row("false", bulk("false"), 0);
        row("something else", bulk("yes"), -1);
        row("missing", "$-1\r\n", -1);
        row("too long", "-OVERSIZE 17000000\r\n", -1);
        QTest::newRow("an error") << QByteArray("-NOPERM x\r\n") << -1;
    }
    void realTimeIsAFlagOrMissing()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, expected);
        const ParsedReply parsed(reply);

        const std::optional<bool> isSupported = RedisMetadata::of(parsed.reply()).isRealTimeSupported;

        QCOMPARE(isSupported ? int(*isSupported) : -1, expected);
    }

    void theNameIsText()
    {
        const ParsedReply named(list({"$-1\r\n", bulk("Arm One")}));
        const ParsedReply tooLong(list({"$-1\r\n", "-OVERSIZE 17000000\r\n"}));

        QCOMPARE(RedisMetadata::of(named.reply()).robotName, QString("Arm One"));
        QCOMPARE(RedisMetadata::of(tooLong.reply()).robotName, QString());
    }
};

QTEST_GUILESS_MAIN(TestRedisMetadata)
#include "tst_redis_metadata.moc"
