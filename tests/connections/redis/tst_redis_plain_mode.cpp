// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/redis_server.h"
#include "support/redis_test_client.h"
#include "support/redis_viewer.h"

#include <QtTest>

namespace {

/// The server's own count of the changes that anybody has made to its data.
QByteArray changesOf(RedisTestClient& client)
{
    const QByteArray info = client.command({"INFO", "persistence"});
    const auto begin = info.indexOf("rdb_changes_since_last_save:");
    return info.mid(begin, info.indexOf('\r', begin) - begin);
}

} // namespace

/// A server that holds whatever programs have put there, without a robot's layout.
class TestRedisPlainMode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_server.reset(); }

    void theKeysThatMatchAreListedOnceByTheirType();
    void stringsAndFieldsAreSampled();
    void entriesOfAStreamAreDeliveredOnce();
    void theServerIsOnlyRead();

private:
    QString url() const { return QStringLiteral("redis://127.0.0.1:%1?plain=lab:*").arg(m_server->port()); }

    std::unique_ptr<RedisServer> m_server;
};

void TestRedisPlainMode::init()
{
    m_server = std::make_unique<RedisServer>();
    QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
    RedisTestClient program(m_server->port());
    program.command({"SET", "lab:speed", "1.5"});
    program.command({"HSET", "lab:pose", "x", "1", "y", "2"});
    program.command({"XADD", "lab:log", "*", "v", "\"started\""});
    program.command({"RPUSH", "lab:list", "a"});
    program.command({"SET", "other:speed", "9"});
}

void TestRedisPlainMode::theKeysThatMatchAreListedOnceByTheirType()
{
    RedisViewer viewer(url());
    QVERIFY(viewer.connectToRobot());

    QCOMPARE(RedisViewer::names(viewer.memory()->getDataList()),
             (QStringList{"lab:pose#x", "lab:pose#y", "lab:speed"}));
    QCOMPARE(RedisViewer::names(viewer.memory()->getEventList()), QStringList{"lab:log"});
    QCOMPARE(RedisViewer::names(viewer.memory()->getMicroEventList()), QStringList());
}

void TestRedisPlainMode::stringsAndFieldsAreSampled()
{
    RedisViewer viewer(url());
    QVERIFY(viewer.connectToRobot());
    viewer.watch({"lab:speed", "lab:pose#y"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("lab:speed"), QStringList{"1.5"}, 30000);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("lab:pose#y"), QStringList{"2"}, 30000);

    RedisTestClient program(m_server->port());
    program.command({"SET", "lab:speed", "2.5"});
    program.command({"HSET", "lab:pose", "y", "3"});

    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("lab:speed"), (QStringList{"1.5", "2.5"}), 30000);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("lab:pose#y"), (QStringList{"2", "3"}), 30000);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisPlainMode::entriesOfAStreamAreDeliveredOnce()
{
    RedisViewer viewer(url());
    QVERIFY(viewer.connectToRobot());
    viewer.watch({"lab:log", "lab:speed"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("lab:speed"), QStringList{"1.5"}, 30000);

    RedisTestClient program(m_server->port());
    program.command({"XADD", "lab:log", "*", "v", "1"});
    program.command({"XADD", "lab:log", "*", "v", "2"});

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("lab:log"), (QStringList{"1", "2"}), 30000);
}

void TestRedisPlainMode::theServerIsOnlyRead()
{
    RedisTestClient program(m_server->port());
    const QByteArray before = changesOf(program);
    QVERIFY(before.startsWith("rdb_changes_since_last_save:"));
    RedisViewer viewer(url());
    QVERIFY(viewer.connectToRobot());
    viewer.watch({"lab:speed", "lab:pose#x", "lab:log", "lab:missing"});

    QTRY_VERIFY_WITH_TIMEOUT(!viewer.texts("lab:pose#x").isEmpty(), 30000);

    QCOMPARE(changesOf(program), before);
}

QTEST_GUILESS_MAIN(TestRedisPlainMode)
#include "tst_redis_plain_mode.moc"
