// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/parsed_reply.h"
#include "support/redis_writer_test.h"

using namespace Velk;

class TestRedisRobotWriter : public RedisWriterTest
{
    Q_OBJECT

private Q_SLOTS:
    void plainModeIsRefused()
    {
        QString error;
        QVERIFY(!RedisRobotWriter::fromUrl("redis://lab?plain=*", &error));
        QCOMPARE(error, QString("A memory in plain mode is only read: leave out the option \"plain\" to write."));
    }

    void declaredNamesAreListedByTheirKind()
    {
        QVERIFY(connectWriter(*m_writer));

        m_writer->declare({{"Angle", "both"}, {"Bumper", "both"}, {"Touch"}});

        QTRY_COMPARE_WITH_TIMEOUT(members("data"), QByteArrayList{"Angle"}, patienceMs);
        QCOMPARE(members("event"), (QByteArrayList{"Bumper", "both"}));
        QCOMPARE(members("microevent"), QByteArrayList{"Touch"});
    }

    void keysThatAreDeclaredNoMoreAreRemoved()
    {
        m_robot->client().command({"SADD", "mem:{arm1}:data", "of another producer"});
        QVERIFY(connectWriter(*m_writer));
        m_writer->declare({{"Stays", "Goes"}, {"Bumper"}, {}});
        m_writer->put("Stays", 1);
        m_writer->put("Goes", 2);
        m_writer->raise("Bumper", 3);
        QTRY_COMPARE_WITH_TIMEOUT(command({"XLEN", "mem:{arm1}:e:Bumper"}), QByteArray("1"), patienceMs);

        m_writer->declare({{"Stays"}, {}, {}});

        QTRY_COMPARE_WITH_TIMEOUT(members("data"), (QByteArrayList{"Stays", "of another producer"}), patienceMs);
        QCOMPARE(members("event"), QByteArrayList());
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Goes", "mem:{arm1}:e:Bumper"}), QByteArray("0"));
        QCOMPARE(command({"GET", "mem:{arm1}:v:Stays"}), QByteArray("1"));
    }

    void aKeyThatChangesItsKindLeavesTheFormerOne()
    {
        QVERIFY(connectWriter(*m_writer));
        m_writer->declare({{"Key"}, {}, {}});
        m_writer->put("Key", 1);
        QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Key"}), QByteArray("1"), patienceMs);

        m_writer->declare({{}, {"Key"}, {}});

        QTRY_COMPARE_WITH_TIMEOUT(members("event"), QByteArrayList{"Key"}, patienceMs);
        QCOMPARE(members("data"), QByteArrayList());
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Key"}), QByteArray("0"));
    }

    void removedKeysAreGoneWhateverTheirKind()
    {
        QVERIFY(connectWriter(*m_writer));
        m_writer->put("Angle", 1);
        m_writer->raise("Bumper", 2);
        QStringList outcomes;
        QTRY_COMPARE_WITH_TIMEOUT(members("event"), QByteArrayList{"Bumper"}, patienceMs);

        m_writer->remove({"Angle", "Bumper", "never written"}, [&](const QString& error) { outcomes << error; });

        QTRY_COMPARE_WITH_TIMEOUT(outcomes, QStringList{QString()}, patienceMs);
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Angle", "mem:{arm1}:e:Bumper"}), QByteArray("0"));
        QCOMPARE(members("data") + members("event"), QByteArrayList());
    }

    void whatIsWrittenAndRemovedInOneTurnIsGone()
    {
        QVERIFY(connectWriter(*m_writer));
        QStringList outcomes;
        const auto keep = [&outcomes](const QString& error) { outcomes << error; };

        m_writer->put("Angle", 1, {}, keep);
        m_writer->remove({"Angle"}, keep);
        m_writer->put("Speed", 2, {}, keep);

        QTRY_COMPARE_WITH_TIMEOUT(outcomes, (QStringList{QString(), QString(), QString()}), patienceMs);
        QCOMPARE(members("data"), QByteArrayList{"Speed"});
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Angle"}), QByteArray("0"));
    }

    void removingNothingEnds()
    {
        QVERIFY(connectWriter(*m_writer));
        QStringList outcomes;

        m_writer->remove({}, [&outcomes](const QString& error) { outcomes << error; });

        QTRY_COMPARE_WITH_TIMEOUT(outcomes, QStringList{QString()}, patienceMs);
    }

    void allWritesOfATurnAreOneTransactionAndNamesAreListedOnce()
    {
        ScriptedServer server([](const QByteArrayList& sent) {
            const QByteArray name = sent.front();
            if (name == "EXEC")
                return list(QByteArrayList(10, ":1\r\n"));
            return name == "HMGET" ? list({"$-1\r\n", "$-1\r\n"})
                                   : '+' +
                                         QByteArray(name == "TYPE"  ? "none"
                                                    : name == "SET" ? "QUEUED"
                                                                    : "OK") +
                                         "\r\n";
        });
        m_writer = writerFor(server);
        QVERIFY(connectWriter(*m_writer));
        m_writer->put("A", 1);
        m_writer->put("B", 2);
        QTRY_VERIFY_WITH_TIMEOUT(server.commands().contains("EXEC"), patienceMs);
        const qsizetype first = server.commands().indexOf("MULTI");
        QCOMPARE(server.commands().mid(first),
                 (QByteArrayList{"MULTI", "SADD mem:{arm1}:data A", "SET mem:{arm1}:v:A 1", "SADD mem:{arm1}:data B",
                                 "SET mem:{arm1}:v:B 2", "EXEC"}));
        const qsizetype count = server.commands().size();

        m_writer->put("A", 3);
        m_writer->put("B", 4);

        QTRY_VERIFY_WITH_TIMEOUT(server.commands().mid(count).contains("EXEC"), patienceMs);
        QByteArrayList second = server.commands().mid(count);
        second.removeAll("PING");
        QCOMPARE(second, (QByteArrayList{"MULTI", "SET mem:{arm1}:v:A 3", "SET mem:{arm1}:v:B 4", "EXEC"}));
    }

    void aStreamStaysAStream()
    {
        m_robot->client().command({"XADD", "mem:{arm1}:v:Angle", "*", "v", "1"});
        QVERIFY(connectWriter(*m_writer));

        m_writer->put("Angle", 2);

        QTRY_COMPARE_WITH_TIMEOUT(command({"XLEN", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);
    }

    void everyValueOfAStreamIsAnEntryWithItsTime()
    {
        m_robot->client().command({"XADD", "mem:{arm1}:v:Angle", "*", "v", "1"});
        QVERIFY(connectWriter(*m_writer));

        m_writer->put("Angle", 2, 12.5);
        m_writer->put("Angle", 3, 12.75);

        QTRY_COMPARE_WITH_TIMEOUT(command({"XLEN", "mem:{arm1}:v:Angle"}), QByteArray("3"), patienceMs);
        const QByteArray entries = m_robot->client().list({"XRANGE", "mem:{arm1}:v:Angle", "-", "+"}).join(' ');
        QVERIFY2(QByteArray(entries).replace('\n', ' ').contains("t 12.500000 v 2"), entries);
        QVERIFY2(QByteArray(entries).replace('\n', ' ').contains("t 12.750000 v 3"), entries);
    }

    void aTimeStampIsThatOfTheOccurrence()
    {
        QVERIFY(connectWriter(*m_writer));

        m_writer->raise("Bumper", "left", 12.5);

        QTRY_COMPARE_WITH_TIMEOUT(command({"XLEN", "mem:{arm1}:e:Bumper"}), QByteArray("1"), patienceMs);
        const QByteArrayList entry = m_robot->client().list({"XRANGE", "mem:{arm1}:e:Bumper", "-", "+"});
        QVERIFY2(entry.join(' ').replace('\n', ' ').contains("t 12.500000 v \"left\""), entry.join(' ').constData());
    }
};

QTEST_GUILESS_MAIN(TestRedisRobotWriter)
#include "tst_redis_robot_writer.moc"
