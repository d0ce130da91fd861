// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "connections/redis/support/redis_server.h"
#include "connections/redis/support/redis_test_client.h"
#include "velk_run.h"

#include <QTest>

#include <csignal>

// velk with a robot on a Redis server that the test starts.
class TestVelkRedis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void whatIsPutIsAKeyWithItsValue();
    void whatIsRaisedIsAnEvent();
    void aValueThatIsNotJsonIsNotWritten();
    void aRobotThatIsNotOnAServerCannotBeWrittenTo();
    void aServerThatIsNotThereEndsWithTheTimeOut();
    void aKeyOfAnotherTypeIsNotOverwritten();
    void pingSaysWhatTheServerIsAndGrants();
    void pingOnAnotherRobotSaysThatItAnswers();
    void aFastPeriodIsAskedForOnARobotWithManyKeys();
    void aServedRobotIsSeenByAnotherVelk();
    void aKeyThatLeavesTheSourceLeavesTheServer();
    void whatWasServedStaysWhenTheSourceRefusesItsLists();
    void servingGoesOnAfterTheServerCameBackEmpty();
    void aTargetThatIsMissingIsReportedAsTheTarget();
    void whatTheServerRefusesIsInTheStatus();

private:
    QStringList onRobot(const QStringList& arguments) const
    {
        return arguments + QStringList{"--robot", m_server->url()};
    }

    std::unique_ptr<RedisServer> m_server;
    std::unique_ptr<RedisTestClient> m_client;
};

void TestVelkRedis::init()
{
    m_server = std::make_unique<RedisServer>();
    QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));
    m_client = std::make_unique<RedisTestClient>(m_server->port());
}

void TestVelkRedis::whatIsPutIsAKeyWithItsValue()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"put", "Arm/Angle", "1.50"})), 0);

    QCOMPARE(velk.messagesButMissedTicks(), QString());
    QCOMPARE(m_client->command({"GET", "mem:{arm1}:v:Arm/Angle"}), QByteArray("1.5"));
    QCOMPARE(m_client->command({"SMEMBERS", "mem:{arm1}:data"}), QByteArray("Arm/Angle"));

    // Brackets and commas are the key's and the value's.
    QCOMPARE(velk.run(onRobot({"put", "[a,b]", "[1,2]"})), 0);
    QCOMPARE(m_client->command({"GET", "mem:{arm1}:v:[a,b]"}), QByteArray("[1,2]"));

    // A data key that is a stream stays one.
    m_client->command({"XADD", "mem:{arm1}:v:Speed", "*", "v", "1"});
    QCOMPARE(velk.run(onRobot({"put", "Speed", "2"})), 0);
    QCOMPARE(m_client->command({"XLEN", "mem:{arm1}:v:Speed"}), QByteArray("2"));
}

void TestVelkRedis::whatIsRaisedIsAnEvent()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"raise", "Bumper", "\"left\""})), 0);

    QCOMPARE(m_client->command({"SMEMBERS", "mem:{arm1}:event"}), QByteArray("Bumper"));
    QVERIFY(m_client->command({"XRANGE", "mem:{arm1}:e:Bumper", "-", "+"}).endsWith("v\n\"left\""));
}

void TestVelkRedis::aValueThatIsNotJsonIsNotWritten()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"put", "Door", "open"})), 2);

    QVERIFY2(velk.messages().contains("is not JSON"), qPrintable(velk.messages()));
    QCOMPARE(m_client->command({"EXISTS", "mem:{arm1}:v:Door"}), QByteArray("0"));
}

void TestVelkRedis::aRobotThatIsNotOnAServerCannotBeWrittenTo()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({"put", "Door", "1", "--robot", "sim:"}), 3);
    QVERIFY2(velk.messages().contains("“sim” cannot be written to. Possible are: redis://"),
             qPrintable(velk.messages()));
}

void TestVelkRedis::aServerThatIsNotThereEndsWithTheTimeOut()
{
    m_server->kill();
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"put", "Door", "1", "--timeout", "5"})), 4);

    QVERIFY2(velk.messages().contains("refuses the connection"), qPrintable(velk.messages()));
    QVERIFY2(velk.messages().contains("Not written"), qPrintable(velk.messages()));
}

void TestVelkRedis::aKeyOfAnotherTypeIsNotOverwritten()
{
    m_client->command({"LPUSH", "mem:{arm1}:v:Door", "1"});
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"put", "Door", "1"})), 10);

    QVERIFY2(velk.messages().contains("holds a list"), qPrintable(velk.messages()));
    QCOMPARE(m_client->command({"LLEN", "mem:{arm1}:v:Door"}), QByteArray("1"));
}

void TestVelkRedis::pingSaysWhatTheServerIsAndGrants()
{
    m_client->command({"SADD", "mem:{arm1}:data", "A", "B"});
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"ping", "--timeout", "60"})), 0);

    for (const char* line :
         {"robot +redis://127.0.0.1:\\d+/arm1", "keys +2 data, 0 event",
          "server +Redis 7[.\\d]+, standalone, master, at 127.0.0.1:\\d+",
          "round trip +[\\d.]+ ms, the longest of 20 [\\d.]+ ms", "clock +[+-][\\d.]+ s against this computer's",
          "user +default", "granted +TIME TYPE MGET XREAD .*"}) {
        const QRegularExpression expression(QString("^%1$").arg(line), QRegularExpression::MultilineOption);
        QVERIFY2(expression.match(velk.output()).hasMatch(), qPrintable(line + QString("\n") + velk.output()));
    }
    QVERIFY2(!velk.output().contains("refused"), qPrintable(velk.output()));
}

void TestVelkRedis::pingOnAnotherRobotSaysThatItAnswers()
{
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({"ping", "--robot", "sim:", "--timeout", "60"}), 0);
    QVERIFY2(velk.output().startsWith("robot       sim:\nkeys "), qPrintable(velk.output()));
}

// The robot's answer, whether it can be sampled fast, is measured while the long lists come, and may be a no.
void TestVelkRedis::aFastPeriodIsAskedForOnARobotWithManyKeys()
{
    QList<QByteArray> names{"SADD", "mem:{arm1}:data"};
    for (int i = 1; i <= 20000; ++i)
        names << "Key/" + QByteArray::number(i);
    m_client->command(names);
    m_client->command({"SET", "mem:{arm1}:v:Key/1", "42"});
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run(onRobot({"watch", "Key/1", "--period", "100", "--for", "1", "--timeout", "60"})), 0);

    QVERIFY2(velk.output().contains("\tKey/1\t42\n"), qPrintable(velk.output() + velk.messages()));
}

void TestVelkRedis::aServedRobotIsSeenByAnotherVelk()
{
    VelkRun server(velkProgram);
    server.start({"serve", "--robot", "sim:", "--to", m_server->url(), "--timeout", "60"});
    QVERIFY2(server.waitForMessage("Serving \\d+ keys of sim: to redis://"), qPrintable(server.messages()));

    VelkRun original(velkProgram);
    QCOMPARE(original.run({"keys", "--robot", "sim:", "--timeout", "60"}), 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"EXISTS", "mem:{arm1}:v:Battery/Voltage"}) == "1", 60000);
    VelkRun keys(velkProgram);
    QCOMPARE(keys.run(onRobot({"keys", "--timeout", "60"})), 0);
    QCOMPARE(keys.output(), original.output());

    VelkRun watch(velkProgram);
    watch.start(onRobot({"watch", "Battery/*", "--period", "200", "--timeout", "60"}));
    QVERIFY2(watch.waitForOutput("\\d+\\.\\d+\tBattery/Voltage\t[\\d.]+\n"), qPrintable(watch.messages()));
    watch.sendSignal(SIGINT);
    QCOMPARE(watch.end(), 0);

    server.sendSignal(SIGINT);
    QCOMPARE(server.end(), 0);
}

void TestVelkRedis::aKeyThatLeavesTheSourceLeavesTheServer()
{
    m_client->command({"SADD", "mem:{source}:data", "Stays", "Goes"});
    m_client->command({"MSET", "mem:{source}:v:Stays", "1", "mem:{source}:v:Goes", "2"});
    QString source = m_server->url();
    source.replace("/arm1", "/source");
    VelkRun velk(velkProgram);
    velk.start({"serve", "--robot", source, "--to", m_server->url(), "--timeout", "60"});
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"GET", "mem:{arm1}:v:Goes"}) == "2", 60000);
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"SISMEMBER", "mem:{arm1}:data", "Goes"}) == "1", 60000);

    m_client->command({"SREM", "mem:{source}:data", "Goes"});

    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"SISMEMBER", "mem:{arm1}:data", "Goes"}) == "0", 60000);
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"EXISTS", "mem:{arm1}:v:Goes"}) == "0", 60000);
    QCOMPARE(m_client->command({"SISMEMBER", "mem:{arm1}:data", "Stays"}), QByteArray("1"));
    velk.sendSignal(SIGTERM);
    QCOMPARE(velk.end(), 0);
}

void TestVelkRedis::whatWasServedStaysWhenTheSourceRefusesItsLists()
{
    m_client->command({"ACL", "SETUSER", "reader", "on", ">pw", "~*", "+@all"});
    m_client->command({"SADD", "mem:{source}:event", "Bumper"});
    QString source = m_server->url();
    source.replace("/arm1", "/source").replace("redis://", "redis://reader:pw@");
    VelkRun velk(velkProgram);
    velk.start({"serve", "--robot", source, "--to", m_server->url(), "--timeout", "60"});
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"SISMEMBER", "mem:{arm1}:event", "Bumper"}) == "1", 60000);
    QTRY_VERIFY_WITH_TIMEOUT((m_client->command({"XADD", "mem:{source}:e:Bumper", "*", "v", "1"}),
                              m_client->command({"EXISTS", "mem:{arm1}:e:Bumper"}) == "1"),
                             60000);

    m_client->command({"ACL", "SETUSER", "reader", "-scard"});

    QVERIFY2(velk.waitForMessage("permit"), qPrintable(velk.messages()));
    m_client->command({"XADD", "mem:{source}:e:Bumper", "*", "v", "\"after\""});
    QTRY_VERIFY_WITH_TIMEOUT(
        m_client->command({"XREVRANGE", "mem:{arm1}:e:Bumper", "+", "-", "COUNT", "1"}).contains("after"), 60000);
    QCOMPARE(m_client->command({"SISMEMBER", "mem:{arm1}:event", "Bumper"}), QByteArray("1"));
    velk.sendSignal(SIGTERM);
    QCOMPARE(velk.end(), 0);
}

void TestVelkRedis::servingGoesOnAfterTheServerCameBackEmpty()
{
    // A robot that raises no event by itself: one that is raised while the server is away is lost.
    VelkRun velk(testVelkProgram);
    velk.start({"serve", "--robot", "test:", "--to", m_server->url(), "--timeout", "60"});
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"EXISTS", "mem:{arm1}:v:Arm/Elbow/Position"}) == "1", 60000);

    m_server->kill();
    QVERIFY2(velk.waitForMessage("connection lost"), qPrintable(velk.messages()));
    QVERIFY2(m_server->start(), qPrintable(m_server->errorString()));

    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"EXISTS", "mem:{arm1}:v:Arm/Elbow/Position"}) == "1", 60000);
    QTRY_VERIFY_WITH_TIMEOUT(m_client->command({"SISMEMBER", "mem:{arm1}:data", "Arm/Elbow/Position"}) == "1", 60000);
    velk.sendSignal(SIGTERM);
    QCOMPARE(velk.end(), 0);
}

void TestVelkRedis::aTargetThatIsMissingIsReportedAsTheTarget()
{
    m_server->kill();
    VelkRun velk(velkProgram);

    QCOMPARE(velk.run({"serve", "--robot", "sim:", "--to", m_server->url(), "--timeout", "10"}), 4);

    QVERIFY2(velk.messages().contains("Not connected: No connection to " + m_server->url()),
             qPrintable(velk.messages()));
    QVERIFY2(!velk.messages().contains("to sim:"), qPrintable(velk.messages()));
    QVERIFY2(!velk.messages().contains("Robot does not answer"), qPrintable(velk.messages()));
}

void TestVelkRedis::whatTheServerRefusesIsInTheStatus()
{
    m_client->command({"SET", "mem:{arm1}:e:Bumper/Front", "no stream"});
    VelkRun velk(testVelkProgram);
    velk.start({"serve", "--robot", "test:", "--to", m_server->url(), "--timeout", "60"});
    QVERIFY2(velk.waitForMessage("Serving"), qPrintable(velk.messages()));

    velk.sendSignal(SIGUSR2); // raises the event
    QVERIFY2(velk.waitForMessage("key of another type"), qPrintable(velk.messages()));
    velk.sendSignal(SIGTERM);

    QCOMPARE(velk.end(), 10);
    QVERIFY2(velk.messages().contains("Not everything was written: 1 values and occurrences refused by the server\n"),
             qPrintable(velk.messages()));
}

QTEST_GUILESS_MAIN(TestVelkRedis)
#include "tst_velk_redis.moc"
