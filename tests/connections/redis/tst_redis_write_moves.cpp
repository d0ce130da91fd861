// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/parsed_reply.h"
#include "support/redis_cluster.h"
#include "support/redis_test_client.h"
#include "support/redis_writer_test.h"

#include <connections/redis/client/redis_socket.h>

#include <QSet>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTest>

#include <utility>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;

QByteArray askRedirection(const ScriptedServer& node)
{
    return "-ASK 1 127.0.0.1:" + QByteArray::number(node.serverPort()) + "\r\n";
}

// What a server answers that takes everything: transactions of up to ten commands.
QByteArray accepted(const QByteArrayList& sent)
{
    if (sent.front() == "HMGET")
        return list({"$-1\r\n", "$-1\r\n"});
    if (sent.front() == "EXEC")
        return list(QByteArrayList(10, ":1\r\n"));
    return sent.front() == "TYPE" ? "+none\r\n" : "+QUEUED\r\n";
}

// What the node has sent before is handled afterwards: it shares the event loop with this connection.
bool makeRoundTrips(const ScriptedServer& node)
{
    RedisSocket socket;
    socket.open({QStringLiteral("127.0.0.1"), node.serverPort()}, std::nullopt, QString());
    int replies = 0;
    for (int i = 0; i < 5; ++i) {
        socket.send({"PING"}, [&replies](const RedisReply&) { ++replies; });
        if (!QTest::qWaitFor([&] { return replies > i; }, patienceMs))
            return false;
    }
    return true;
}

// Writes numbers: each is an occurrence of E, and the value of A or of a new key of its own.
class NumberWriter
{
public:
    explicit NumberWriter(RedisRobotWriter* writer)
        : m_writer(writer)
    {}

    void write(bool isToNewKeys, int count = 10)
    {
        for (int i = 0; i < count; ++i, ++m_written) {
            m_writer->raise(QStringLiteral("E"), m_written, {}, [this](const QString&) { ++m_answered; });
            m_writer->put(QStringLiteral("A"), m_written);
            if (!isToNewKeys)
                continue;
            m_newKeys << QStringLiteral("New/%1").arg(m_written);
            m_writer->put(m_newKeys.constLast(), m_written);
        }
        QCoreApplication::processEvents(); // they are sent
    }
    int written() const { return m_written; }
    QStringList newKeys() const { return m_newKeys; }
    bool isAllAnsweredOrCounted() const { return m_answered + m_writer->lostCount() == m_written; }

private:
    RedisRobotWriter* m_writer;
    int m_written = 0;
    int m_answered = 0;
    QStringList m_newKeys;
};

} // namespace

class TestRedisWriteMoves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qunsetenv("VELK_REDIS_PASSWORD"); }

    void everyWriteDuringTheMovesOfASlotIsWrittenOnceOrCounted();
    void aTransactionWhoseKeysLeaveWhileItIsQueuedIsRunAgain();
    void whatTheOtherNodeHasTakenIsNotCountedAtALoss();
};

void TestRedisWriteMoves::everyWriteDuringTheMovesOfASlotIsWrittenOnceOrCounted()
{
    RedisCluster cluster;
    QVERIFY2(cluster.start(), qPrintable(cluster.errorString()));
    const QString robot = QStringLiteral("arm1");
    const int slot = cluster.slotOf(robot);
    const std::unique_ptr<RedisRobotWriter> writer = writerFor(cluster.url(0, robot));
    QVERIFY(connectWriter(*writer));
    writer->declare({{QStringLiteral("A")}, {QStringLiteral("E")}, {}});
    NumberWriter numbers(writer.get());
    numbers.write(true);
    QTRY_VERIFY_WITH_TIMEOUT(numbers.isAllAnsweredOrCounted(), patienceMs);
    const QString removedFromSource = numbers.newKeys().constLast();
    QString removedFromTarget;

    for (int move = 0; move < 4; ++move) {
        const int source = cluster.masterOf(slot);
        const int next = cluster.masterOf((slot + 5462) % 16384);
        const int target = next == source ? cluster.masterOf((slot + 10924) % 16384) : next;
        QVERIFY(source != -1 && target != -1 && source != target);
        numbers.write(false);
        QVERIFY(cluster.beginMigration(slot, target));
        numbers.write(false); // on the source
        numbers.write(true);  // on both nodes
        QTRY_VERIFY_WITH_TIMEOUT(numbers.isAllAnsweredOrCounted(), patienceMs);
        if (move == 0) {
            // Neither node can run this before the end of the move.
            removedFromTarget = numbers.newKeys().constLast();
            writer->remove({removedFromSource, removedFromTarget});
        }
        numbers.write(false);
        QVERIFY2(cluster.migrateKeys(slot, source, target), qPrintable(cluster.errorString()));
        numbers.write(true); // on the target
        QTRY_VERIFY_WITH_TIMEOUT(numbers.isAllAnsweredOrCounted(), patienceMs);
        numbers.write(false);
        QVERIFY(cluster.endMigration(slot, source, target));
        numbers.write(move % 2 == 0); // to the source, which refers to the target
        QTRY_VERIFY_WITH_TIMEOUT(numbers.isAllAnsweredOrCounted(), patienceMs);
        numbers.write(false, 1);
        QTRY_VERIFY_WITH_TIMEOUT(numbers.isAllAnsweredOrCounted(), patienceMs);
    }

    RedisTestClient client(cluster.node(cluster.masterOf(slot)).port());
    const QByteArrayList entries = client.list({"XRANGE", "mem:{arm1}:e:E", "-", "+"});
    QSet<QByteArray> values;
    for (const QByteArray& entry : entries)
        values.insert(entry.mid(entry.lastIndexOf('\n') + 1));
    QCOMPARE(values.size(), entries.size());
    QCOMPARE(entries.size() + writer->lostCount(), numbers.written());
    QVERIFY(entries.size() > numbers.written() / 2);
    QCOMPARE(client.command({"GET", "mem:{arm1}:v:A"}), QByteArray::number(numbers.written() - 1));
    QByteArrayList newKeys = {"EXISTS"};
    const QStringList names = numbers.newKeys();
    for (const QString& name : names)
        newKeys << "mem:{arm1}:v:" + name.toUtf8();
    QTRY_COMPARE_WITH_TIMEOUT(client.command(newKeys), QByteArray::number(names.size() - 2), patienceMs);
    QCOMPARE(client.command({"EXISTS", "mem:{arm1}:v:" + removedFromSource.toUtf8(),
                             "mem:{arm1}:v:" + removedFromTarget.toUtf8()}),
             QByteArray("0"));
}

void TestRedisWriteMoves::aTransactionWhoseKeysLeaveWhileItIsQueuedIsRunAgain()
{
    // The node of an ASK redirection knows of no transaction.
    ScriptedServer node([](const QByteArrayList& sent) -> QByteArray {
        return sent.front() == "EXEC" ? "-ERR EXEC without MULTI\r\n" : accepted(sent);
    });
    bool isMoving = true;
    ScriptedServer server([&](const QByteArrayList& sent) {
        return sent.front() == "EXEC" && std::exchange(isMoving, false) ? askRedirection(node) : accepted(sent);
    });
    const std::unique_ptr<RedisRobotWriter> writer = writerFor(server);
    QVERIFY(connectWriter(*writer));
    QStringList outcomes;

    writer->raise(QStringLiteral("E"), 1, {}, [&outcomes](const QString& error) { outcomes << error; });

    QTRY_COMPARE_WITH_TIMEOUT(outcomes, QStringList{QString()}, patienceMs);
    QCOMPARE(server.commands().count("EXEC"), 2);
    QCOMPARE(writer->lostCount(), qint64(0));
}

void TestRedisWriteMoves::whatTheOtherNodeHasTakenIsNotCountedAtALoss()
{
    ScriptedServer node([](const QByteArrayList&) { return QByteArray(":1\r\n"); });
    bool isSilent = false;
    ScriptedServer server([&](const QByteArrayList& sent) -> QByteArray {
        if (sent.join(' ').contains(" mem:{arm1}:e:Taken "))
            return askRedirection(node);
        return isSilent && sent.front() != "MULTI" ? QByteArray() : accepted(sent);
    });
    const std::unique_ptr<RedisRobotWriter> writer = writerFor(server);
    QVERIFY(connectWriter(*writer));
    writer->declare({{}, {QStringLiteral("Taken"), QStringLiteral("Queued")}, {}});
    QTRY_VERIFY_WITH_TIMEOUT(server.commands().contains("EXEC"), patienceMs);
    isSilent = true;
    QStringList outcomes;
    QSignalSpy lost(writer.get(), &RobotWriter::connectionLost);

    writer->raise(QStringLiteral("Taken"), 1, {}, [&outcomes](const QString& error) { outcomes << "taken" + error; });
    writer->raise(QStringLiteral("Queued"), 1, {}, [&outcomes](const QString&) { outcomes << "queued"; });
    QTRY_VERIFY_WITH_TIMEOUT(node.commands().contains("XADD mem:{arm1}:e:Taken MAXLEN ~ 10000 * v 1"), patienceMs);
    QVERIFY(makeRoundTrips(node));
    const QList<QTcpSocket*> clients = server.findChildren<QTcpSocket*>();
    for (QTcpSocket* client : clients)
        client->abort();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);

    QTRY_COMPARE_WITH_TIMEOUT(outcomes, QStringList{"taken"}, patienceMs);
    QCOMPARE(writer->lostCount(), qint64(1));
}

QTEST_GUILESS_MAIN(TestRedisWriteMoves)
#include "tst_redis_write_moves.moc"
