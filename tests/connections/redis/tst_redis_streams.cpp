// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/redis_robot_test.h"
#include "support/redis_viewer.h"

using namespace Velk;

class TestRedisStreams : public RedisRobotTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStreamDataKeyStartsWithItsNewestValueAndKeepsEverySample();
    void eventsAreDeliveredOnceFromTheWatchOn();
    void aNameThatIsEventAndMicroEventGetsBoth();
    void theProducersTimeIsTheTimeStamp();
    void timeStampsAscendWhateverTheProducerSays();
    void eventsOfALossAreDeliveredAfterIt();
    void eventsOfALossAreDeliveredAlsoWhenAnotherKeyHasJustChangedItsType();
    void eventsThatWereTrimmedDuringALossAreCounted();
    void eventsThatAreTrimmedBetweenTicksAreCounted();
    void aStoppedWatcherDoesNotCatchUp();
    void aReplyThatComesAfterTheStopIsDropped();
    void aServerWithOtherDataIsReadFromItsStart();
    void aServerThatComesBackOlderRepeatsNothing_data();
    void aServerThatComesBackOlderRepeatsNothing();

private:
    bool connectAndWatch(RedisViewer& viewer, const QStringList& names);
};

// Connects the viewer. When it has a value of the key Value, it knows all keys: occurrences count from then on.
bool TestRedisStreams::connectAndWatch(RedisViewer& viewer, const QStringList& names)
{
    m_robot->put("Value", "1");
    if (!viewer.connectToRobot())
        return false;
    viewer.watch(names);
    return QTest::qWaitFor([&viewer] { return !viewer.values("Value").isEmpty(); }, patienceMs);
}

void TestRedisStreams::aStreamDataKeyStartsWithItsNewestValueAndKeepsEverySample()
{
    m_robot->client().command({"SADD", "mem:{arm1}:data", "Angle"});
    m_robot->client().command({"XADD", "mem:{arm1}:v:Angle", "*", "v", "1"});
    m_robot->client().command({"XADD", "mem:{arm1}:v:Angle", "*", "v", "2"});
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    viewer.watch({"Angle"}, 200);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Angle"), QStringList{"2"}, patienceMs);

    QList<QByteArrayList> commands;
    QStringList expected = {"2"};
    for (int i = 0; i < 3000; ++i) {
        commands.append({"XADD", "mem:{arm1}:v:Angle", "*", "v", QByteArray::number(i)});
        expected.append(QString::number(i));
    }
    QCOMPARE(m_robot->client().pipeline(commands), 3000);

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Angle").size(), expected.size(), patienceMs);
    QCOMPARE(viewer.texts("Angle"), expected);
    QCOMPARE(viewer.disorder(), QString());
    QCOMPARE(viewer.link().losses(), SampleLosses());
}

void TestRedisStreams::eventsAreDeliveredOnceFromTheWatchOn()
{
    m_robot->raise("Bumper", "\"before\"");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));

    m_robot->raise("Bumper", "\"left\"");
    m_robot->raise("Bumper", "\"right\"");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"left", "right"}), patienceMs);
    const int batches = viewer.batchCount();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.batchCount() > batches + 3, patienceMs);

    QCOMPARE(viewer.texts("Bumper"), (QStringList{"left", "right"}));
}

void TestRedisStreams::aNameThatIsEventAndMicroEventGetsBoth()
{
    m_robot->raise("Touch", "0");
    m_robot->client().command({"SADD", "mem:{arm1}:microevent", "Touch"});
    m_robot->put("Touch", "7");
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    viewer.watch({"Touch"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("Touch"), QStringList{"7"}, patienceMs);

    m_robot->raise("Touch", "1");
    m_robot->client().command({"XADD", "mem:{arm1}:m:Touch", "*", "v", "2"});

    QTRY_VERIFY_WITH_TIMEOUT(viewer.texts("Touch").contains("1") && viewer.texts("Touch").contains("2"), patienceMs);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisStreams::theProducersTimeIsTheTimeStamp()
{
    m_robot->raise("Bumper", "0");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));

    m_robot->raise("Bumper", "1", "12.5");
    m_robot->raise("Bumper", "2", "13.25");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.stamps("Bumper"), (QList<double>{12.5, 13.25}), patienceMs);

    // Without a time of the producer's, the server's counts.
    m_robot->client().command({"XADD", "mem:{arm1}:e:Bumper", "4000000000500-0", "v", "3", "t", "noon"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.stamps("Bumper"), (QList<double>{12.5, 13.25, 4000000000.5}), patienceMs);
}

void TestRedisStreams::timeStampsAscendWhateverTheProducerSays()
{
    m_robot->raise("Bumper", "0");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));

    for (const char* time : {"5", "5", "4", "1e300", "6", "nan", "inf"})
        m_robot->raise("Bumper", time, time);

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper").size(), 7, patienceMs);
    QCOMPARE(viewer.disorder(), QString());
    QCOMPARE(viewer.texts("Bumper"), (QStringList{"5", "5", "4", "1e+300", "6", "nan", "inf"}));
}

void TestRedisStreams::eventsOfALossAreDeliveredAfterIt()
{
    m_robot->raise("Bumper", "0");
    FaultProxy proxy(m_robot->server().port());
    RedisViewer viewer(proxy.url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));
    m_robot->raise("Bumper", "1");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), QStringList{"1"}, patienceMs);

    proxy.closeAll();
    m_robot->raise("Bumper", "2");
    m_robot->raise("Bumper", "3");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.connectionSignals(), (QStringList{"connected", "lost", "connected"}), patienceMs);

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"1", "2", "3"}), patienceMs);
    QCOMPARE(viewer.link().losses("Bumper").trimmed, 0);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisStreams::eventsOfALossAreDeliveredAlsoWhenAnotherKeyHasJustChangedItsType()
{
    m_robot->raise("Bumper", "0");
    m_robot->raise("Other", "0");
    FaultProxy proxy(m_robot->server().port());
    RedisViewer viewer(proxy.url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Other", "Value"}));
    m_robot->raise("Bumper", "1");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), QStringList{"1"}, patienceMs);

    // Streams are read together: the error does not name the one that is no stream any more.
    m_robot->client().command({"DEL", "mem:{arm1}:e:Other"});
    m_robot->client().command({"SET", "mem:{arm1}:e:Other", "no stream"});
    const int batches = viewer.batchCount();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.batchCount() > batches + 5, patienceMs);
    proxy.closeAll();
    m_robot->raise("Bumper", "2");
    m_robot->raise("Bumper", "3");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.connectionSignals(), (QStringList{"connected", "lost", "connected"}), patienceMs);

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"1", "2", "3"}), patienceMs);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisStreams::eventsThatWereTrimmedDuringALossAreCounted()
{
    m_robot->raise("Bumper", "0");
    FaultProxy proxy(m_robot->server().port());
    RedisViewer viewer(proxy.url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));
    m_robot->raise("Bumper", "1");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), QStringList{"1"}, patienceMs);

    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().state(), RobotLink::Lost, patienceMs);
    for (int i = 2; i <= 11; ++i)
        m_robot->client().command({"XADD", "mem:{arm1}:e:Bumper", "MAXLEN", "3", "*", "v", QByteArray::number(i)});

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"1", "9", "10", "11"}), patienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().losses("Bumper").trimmed, 7, patienceMs);
    QCOMPARE(viewer.link().losses().trimmed, 7);
}

void TestRedisStreams::eventsThatAreTrimmedBetweenTicksAreCounted()
{
    m_robot->raise("Bumper", "0");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));

    // In one transaction no tick comes in between.
    QList<QByteArrayList> commands = {{"MULTI"}};
    for (int i = 1; i <= 100; ++i)
        commands.append({"XADD", "mem:{arm1}:e:Bumper", "MAXLEN", "10", "*", "v", QByteArray::number(i)});
    commands.append({"EXEC"});
    QCOMPARE(m_robot->client().pipeline(commands), 102);

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper").size(), 10, patienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().losses("Bumper").trimmed, 90, patienceMs);
}

void TestRedisStreams::aStoppedWatcherDoesNotCatchUp()
{
    m_robot->raise("Bumper", "0");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));

    viewer.memory()->stopWatcher();
    m_robot->raise("Bumper", "1");
    const qsizetype count = viewer.texts("Value").size();
    viewer.memory()->startWatcher(20, 10);
    QTRY_VERIFY_WITH_TIMEOUT(viewer.texts("Value").size() > count, patienceMs);
    m_robot->raise("Bumper", "2");

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), QStringList{"2"}, patienceMs);
}

void TestRedisStreams::aReplyThatComesAfterTheStopIsDropped()
{
    m_robot->raise("Bumper", "0");
    FaultProxy proxy(m_robot->server().port());
    RedisViewer viewer(proxy.url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));
    const auto readCount = [this] {
        const QByteArray statistics = m_robot->client().command({"INFO", "commandstats"});
        const QByteArray calls = "cmdstat_xread:calls=";
        return statistics.mid(statistics.indexOf(calls) + calls.size()).split(',').first().toInt();
    };

    // The reply to the next read has the occurrence, and is on its way for a second.
    proxy.setDelay(1000);
    m_robot->raise("Bumper", "1");
    const int before = readCount();
    QVERIFY(QTest::qWaitFor([&] { return readCount() > before; }, patienceMs));
    viewer.memory()->stopWatcher();
    const qsizetype count = viewer.values("Value").size();
    viewer.memory()->startWatcher(20, 10);
    QTRY_VERIFY_WITH_TIMEOUT(viewer.values("Value").size() > count, patienceMs);
    m_robot->raise("Bumper", "2");

    QTRY_VERIFY_WITH_TIMEOUT(viewer.texts("Bumper").contains("2"), patienceMs);
    QCOMPARE(viewer.texts("Bumper"), QStringList{"2"});
}

void TestRedisStreams::aServerWithOtherDataIsReadFromItsStart()
{
    m_robot->raise("Bumper", "0");
    RedisViewer viewer(m_robot->url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));
    m_robot->raise("Bumper", "1");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), QStringList{"1"}, patienceMs);

    m_robot->server().kill();
    QVERIFY(m_robot->server().start());
    m_robot->client().command({"SADD", "mem:{arm1}:event", "Bumper"});
    m_robot->client().command({"XADD", "mem:{arm1}:e:Bumper", "1-1", "v", "2"});
    m_robot->put("Value", "2");

    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"1", "2"}), patienceMs);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.changes("Value"), (QStringList{"1", "2"}), patienceMs);
    QCOMPARE(viewer.link().losses("Bumper").trimmed, 0);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisStreams::aServerThatComesBackOlderRepeatsNothing_data()
{
    QTest::addColumn<bool>("isRaisedBeforeTheViewerIsBack");
    QTest::newRow("nothing is new") << false;
    QTest::newRow("one occurrence is new") << true;
}

void TestRedisStreams::aServerThatComesBackOlderRepeatsNothing()
{
    QFETCH(bool, isRaisedBeforeTheViewerIsBack);
    // Trimmed before the watch, so that the counts of the stream differ from its length.
    for (int i = 0; i < 50; ++i)
        m_robot->client().command({"XADD", "mem:{arm1}:e:Bumper", "MAXLEN", "20", "*", "v", "\"before\""});
    m_robot->client().command({"SADD", "mem:{arm1}:event", "Bumper"});
    FaultProxy proxy(m_robot->server().port());
    RedisViewer viewer(proxy.url());
    QVERIFY(connectAndWatch(viewer, {"Bumper", "Value"}));
    m_robot->raise("Bumper", "1");
    QCOMPARE(m_robot->client().command({"SAVE"}), QByteArray("OK"));
    m_robot->raise("Bumper", "2");
    m_robot->raise("Bumper", "3");
    QTRY_COMPARE_WITH_TIMEOUT(viewer.texts("Bumper"), (QStringList{"1", "2", "3"}), patienceMs);

    proxy.setSwallowing(true);
    m_robot->server().kill();
    QVERIFY(m_robot->server().start());
    if (isRaisedBeforeTheViewerIsBack)
        m_robot->raise("Bumper", "4");
    proxy.setSwallowing(false);
    proxy.closeAll();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.hasFailure("has come back with older data"), patienceMs);
    m_robot->raise("Bumper", "5");

    const QStringList expected =
        isRaisedBeforeTheViewerIsBack ? QStringList{"1", "2", "3", "4", "5"} : QStringList{"1", "2", "3", "5"};
    QTRY_VERIFY_WITH_TIMEOUT(viewer.texts("Bumper").contains("5"), patienceMs);
    QCOMPARE(viewer.texts("Bumper"), expected);
    QCOMPARE(viewer.link().losses("Bumper").trimmed, qint64(0));
    QCOMPARE(viewer.disorder(), QString());
}

QTEST_GUILESS_MAIN(TestRedisStreams)
#include "tst_redis_streams.moc"
