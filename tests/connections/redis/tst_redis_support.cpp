// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/redis_cluster.h"
#include "support/redis_sentinel_set.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"
#include "support/tls_arguments.h"

#include <QSslConfiguration>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTest>

// The other tests stand on these servers and faults: here they are shown to do what they say.
class TestRedisSupport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMissingProgramIsAnErrorThatNamesThePackage()
    {
        QString error;

        QCOMPARE(findProgram(QStringLiteral("redis-nonesuch"), QStringLiteral("redis-server"), &error), QString());
        QCOMPARE(error, QStringLiteral("redis-nonesuch is missing: install the Debian package redis-server."));
    }

    void aServerThatIsStartedAgainIsEmptyAndOnItsPort()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        const quint16 port = server.port();
        RedisTestClient client(port);
        QCOMPARE(client.command({"SET", "a", "1"}), QByteArray("OK"));

        server.kill();
        QCOMPARE(client.command({"GET", "a"}), QByteArray("(no connection)"));
        QVERIFY2(server.start(), qPrintable(server.errorString()));

        QCOMPARE(server.port(), port);
        QCOMPARE(client.command({"GET", "a"}), QByteArray("(nil)"));
        server.stop();
        QVERIFY(!server.isRunning());
    }

    void aServerThatCannotStartSaysWhy()
    {
        RedisServer server({QStringLiteral("--nonesuch"), QStringLiteral("1")});

        QVERIFY(!server.start());
        QVERIFY2(server.errorString().contains(QStringLiteral("nonesuch")), qPrintable(server.errorString()));
    }

    void aPausedServerAnswersWhenItGoesOn()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), server.port());
        QVERIFY(socket.waitForConnected());

        server.pause();
        socket.write("PING\r\n");
        socket.flush();
        server.resume();

        QTRY_COMPARE_WITH_TIMEOUT(socket.peek(100), QByteArray("+PONG\r\n"), 60000);
    }

    void thePasswordOfAServerHolds()
    {
        RedisServer server({QStringLiteral("--requirepass"), QStringLiteral("secret")});
        QVERIFY2(server.start(), qPrintable(server.errorString()));

        QVERIFY(RedisTestClient(server.port()).command({"PING"}).startsWith("(error) NOAUTH"));
        QCOMPARE(RedisTestClient(server.port(), "secret").command({"PING"}), QByteArray("PONG"));
        QCOMPARE(RedisTestClient(server.port(), "secret").pipeline({{"SET", "a", "1"}, {"LPUSH", "a", "1"}}), 1);
    }

    void theCertificatesHoldForTheServerThatUsesThem()
    {
        TestCertificates certificates;
        QVERIFY2(certificates.create(), qPrintable(certificates.errorString()));
        const PortReservation tlsPort;
        RedisServer server(tlsArguments(certificates, tlsPort.port()));
        QVERIFY2(server.start(), qPrintable(server.errorString()));

        QSslSocket socket;
        QSslConfiguration configuration;
        configuration.setCaCertificates(QSslCertificate::fromPath(certificates.ca()));
        socket.setSslConfiguration(configuration);
        socket.setLocalCertificate(certificates.clientCertificate());
        socket.setPrivateKey(certificates.clientKey(), QSsl::Ec);
        socket.connectToHostEncrypted(QStringLiteral("127.0.0.1"), tlsPort.port());
        QVERIFY2(socket.waitForEncrypted(), qPrintable(socket.errorString()));
        socket.write("PING\r\n");

        QTRY_COMPARE_WITH_TIMEOUT(socket.peek(100), QByteArray("+PONG\r\n"), 60000);
    }

    void aProxyCutsAReplyAtTheByte()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        FaultProxy proxy(server.port());
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), proxy.port());

        socket.write("PING\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(socket.peek(100), QByteArray("+PONG\r\n"), 60000);
        proxy.cutAfter(3);
        socket.write("PING\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, 60000);

        QCOMPARE(socket.readAll(), QByteArray("+PONG\r\n+PO"));
        QVERIFY(proxy.hasCut());
        QCOMPARE(proxy.replyBytes(), 10);
    }

    void aProxySwallowsDelaysAndInjects()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        FaultProxy proxy(server.port());
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), proxy.port());
        QTRY_COMPARE_WITH_TIMEOUT(proxy.connectionCount(), 1, 60000);

        proxy.setSwallowing(true);
        socket.write("SET a 1\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(socket.bytesToWrite(), 0, 60000);
        proxy.inject("+LATE\r\n");
        QTRY_COMPARE_WITH_TIMEOUT(socket.peek(100), QByteArray("+LATE\r\n"), 60000);
        proxy.setSwallowing(false);
        proxy.setDelay(10);
        socket.write("EXISTS a\r\n");

        QTRY_COMPARE_WITH_TIMEOUT(socket.peek(100), QByteArray("+LATE\r\n:0\r\n"), 60000);
    }

    void sentinelsMakeTheReplicaTheMaster()
    {
        RedisSentinelSet set;
        QVERIFY2(set.start(), qPrintable(set.errorString()));
        QCOMPARE(set.masterIndex(), 0);
        RedisTestClient(set.server(0).port()).command({"SET", "a", "1"});
        QVERIFY(set.waitForReplication());

        set.server(0).kill();

        QVERIFY(set.waitForMaster(1));
        QCOMPARE(RedisTestClient(set.server(1).port()).command({"GET", "a"}), QByteArray("1"));
    }

    void aClusterMovesASlotAndSurvivesANode()
    {
        RedisCluster cluster;
        QVERIFY2(cluster.start(), qPrintable(cluster.errorString()));
        const QString robot = QStringLiteral("arm1");
        const int slot = cluster.slotOf(robot);
        const int source = cluster.masterOf(slot);
        const int target = cluster.masterOf((slot + 8192) % 16384);
        QCOMPARE(cluster.command(robot, {"SET", "{arm1}", "1"}), QByteArray("OK"));

        QVERIFY(cluster.beginMigration(slot, target));
        QVERIFY2(cluster.migrateKeys(slot, source, target), qPrintable(cluster.errorString()));
        const QByteArray ask = RedisTestClient(cluster.node(source).port()).command({"GET", "{arm1}"});
        QVERIFY2(ask.startsWith("(error) ASK"), ask.constData());
        QVERIFY(cluster.endMigration(slot, source, target));
        const QByteArray moved = RedisTestClient(cluster.node(source).port()).command({"GET", "{arm1}"});
        QVERIFY2(moved.startsWith("(error) MOVED"), moved.constData());
        QCOMPARE(cluster.command(robot, {"GET", "{arm1}"}), QByteArray("1"));

        cluster.node(target).kill();
        QVERIFY(cluster.waitForMasterOtherThan(slot, target));
        QCOMPARE(cluster.command(robot, {"SET", "{arm1}", "2"}), QByteArray("OK"));
    }
};

QTEST_GUILESS_MAIN(TestRedisSupport)
#include "tst_redis_support.moc"
