// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/client/redis_error.h>

#include <QTest>

using Velk::RedisError;

class TestRedisError : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void errorsAreClassifiedByTheirFirstWords_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("kind");
        const auto row = [](const char* reply, RedisError::Kind kind) {
            QTest::newRow(reply) << QByteArray(reply) << int(kind);
        };
        row("MOVED 3999 10.0.0.1:6381", RedisError::Moved);
        row("ASK 3999 10.0.0.1:6381", RedisError::Ask);
        row("TRYAGAIN Multiple keys request during rehashing of slot", RedisError::TryAgain);
        row("NOAUTH Authentication required.", RedisError::Password);
        row("WRONGPASS invalid username-password pair or user is disabled.", RedisError::Password);
        row("ERR invalid password", RedisError::Password);
        row("ERR AUTH <password> called without any password configured", RedisError::Password);
        row("NOPERM this user has no permissions to run the 'get' command", RedisError::Permission);
        row("ERR no such key", RedisError::NoSuchKey);
        row("WRONGTYPE Operation against a key holding the wrong kind of value", RedisError::WrongType);
        row("LOADING Redis is loading the dataset in memory", RedisError::Unavailable);
        row("MASTERDOWN Link with MASTER is down", RedisError::Unavailable);
        row("CLUSTERDOWN The cluster is down", RedisError::Unavailable);
        row("BUSY Redis is busy running a script.", RedisError::Unavailable);
        row("READONLY You can't write against a read only replica.", RedisError::Unavailable);
        row("OVERSIZE 17000000", RedisError::Oversize);
        row("ERR unknown command 'FOO'", RedisError::Other);
        row("", RedisError::Other);
        row("MOVED", RedisError::Other);
        row("MOVED 3999", RedisError::Other);
        row("MOVED 3999 10.0.0.1", RedisError::Other);
        row("MOVED 3999 10.0.0.1:0", RedisError::Other);
        row("ASK 3999 10.0.0.1:70000", RedisError::Other);
    }
    void errorsAreClassifiedByTheirFirstWords()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, kind);

        QCOMPARE(int(RedisError::of(reply).kind), kind);
        QCOMPARE(RedisError::of(reply).text, reply);
    }

    void aRedirectionNamesTheNode_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("host");
        QTest::addColumn<int>("port");
        QTest::newRow("IPv4") << QByteArray("MOVED 1 10.0.0.1:6381") << "10.0.0.1" << 6381;
        QTest::newRow("IPv6") << QByteArray("ASK 1 fd00::12:6381") << "fd00::12" << 6381;
        QTest::newRow("a name") << QByteArray("MOVED 1 node1.example:1") << "node1.example" << 1;
        QTest::newRow("the host that answered") << QByteArray("MOVED 1 :6381") << "" << 6381;
    }
    void aRedirectionNamesTheNode()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QString, host);
        QFETCH(int, port);

        QCOMPARE(RedisError::of(reply).host, host);
        QCOMPARE(int(RedisError::of(reply).port), port);
    }

    void anOversizeValueHasItsLength()
    {
        QCOMPARE(RedisError::of("OVERSIZE 17000000").valueBytes, qint64(17000000));
        QCOMPARE(RedisError::of("OVERSIZE").valueBytes, qint64(1));
        QCOMPARE(RedisError::of("WRONGTYPE 5").valueBytes, qint64(0));
    }

    void theMessageNamesTheServerAndQuotesTheError_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("part");
        QTest::newRow("permission") << QByteArray("NOPERM no 'get'") << "Redis: not permitted"
                                    << "(NOPERM no 'get')";
        QTest::newRow("no password") << QByteArray("NOAUTH x") << "Redis: password refused"
                                     << "asks for a password";
        QTest::newRow("loading") << QByteArray("LOADING x") << "Redis: server not available"
                                 << "still loading";
        QTest::newRow("replica") << QByteArray("READONLY x") << "Redis: server not available"
                                 << "is a replica";
        QTest::newRow("too long") << QByteArray("OVERSIZE 17") << "Redis: value too long"
                                  << "(17 bytes)";
        QTest::newRow("other") << QByteArray("ERR x") << "Redis: error"
                               << "answered with an error: ERR x";
    }
    void theMessageNamesTheServerAndQuotesTheError()
    {
        QFETCH(QByteArray, reply);
        QFETCH(QString, title);
        QFETCH(QString, part);
        const RedisError error = RedisError::of(reply);

        const QString message = error.message("lab:6379");

        QCOMPARE(error.title(), title);
        QVERIFY2(message.contains("lab:6379") && message.contains(part), qPrintable(message));
    }

    void aLongErrorIsQuotedInPart()
    {
        const QString message = RedisError::of("ERR " + QByteArray(100000, 'x')).message("lab:6379");

        QVERIFY(message.size() < 500);
    }
};

QTEST_GUILESS_MAIN(TestRedisError)
#include "tst_redis_error.moc"
