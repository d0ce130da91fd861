// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/model_viewer.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Velk;

namespace {

constexpr int patience = 60000;

const QString dataKey = QStringLiteral("A");
const QString eventKey = QStringLiteral("E");

// What a viewer sees whose connection went away once and came back.
const QStringList lostOnce = {QStringLiteral("robotConnected true"), QStringLiteral("robotConnected false"),
                              QStringLiteral("robotConnected true")};

// A robot that keeps its key A and the event E, whose values count up from 0.
class CountingRobot
{
public:
    explicit CountingRobot(quint16 port)
        : m_client(port)
    {
        m_client.command({"SADD", "mem:{arm1}:data", "A"});
        m_client.command({"SADD", "mem:{arm1}:event", "E"});
        m_client.command({"SET", "mem:{arm1}:v:A", "0"});
    }

    /// False when the server did not take the eventKey; the next one has the same number then.
    bool raise()
    {
        const QByteArray number = QByteArray::number(m_next);
        const bool isWritten =
            m_client.pipeline({{"SET", "mem:{arm1}:v:A", number}, {"XADD", "mem:{arm1}:e:E", "*", "v", number}}) == 2;
        m_next += int(isWritten);
        return isWritten;
    }
    RedisTestClient& client() { return m_client; }
    int count() const { return m_next; }

private:
    RedisTestClient m_client;
    int m_next = 0;
};

QList<QVariant> numbersBelow(int end)
{
    QList<QVariant> result;
    for (int i = 0; i < end; ++i)
        result << qlonglong(i);
    return result;
}

} // namespace

class TestRedisReconnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPausedServerIsLostAndGoesOnWithoutALossOrARepetition();
    void aServerThatIsPausedDuringARecordingEndsItAndAnotherOneCanFollow();
    void aServerThatIsKilledInTheMiddleOfABatchComesBackWithOtherData();
    void aServerThatIsKilledWhileItSendsALongListLeavesAnEmptyList();
    void aConnectionThatIsCutAtAnyByteOfAReplyGoesOnWithoutALossOrARepetition();
    void aConnectionThatIsCutAtAnyByteOfItsBeginningIsMadeAgain();
    void aConnectionThatSwallowsEverythingIsLost();
    void aSlowConnectionSkipsTicksAndCountsThem();
    void eventsThatWereTrimmedWhileTheServerWasAwayAreCounted();
    void theModelsStateFollowsALoss();
};

void TestRedisReconnection::aPausedServerIsLostAndGoesOnWithoutALossOrARepetition()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    ModelViewer viewer(server.url(), 1000);
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);
    for (int i = 0; i < 10; ++i)
        QVERIFY(robot.raise());

    server.pause();
    QTRY_VERIFY_WITH_TIMEOUT(!viewer.link().isConnected(), patience);
    QVERIFY2(viewer.hasFailure(QStringLiteral("has not answered")),
             qPrintable(viewer.failures().join(QLatin1Char('\n'))));
    QCOMPARE(viewer.link().state(), RobotLink::Lost);
    server.resume();
    for (int i = 0; i < 10; ++i)
        QVERIFY(robot.raise());

    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(19LL), patience);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(19LL), patience);
    QCOMPARE(viewer.values(eventKey), numbersBelow(20));
    QCOMPARE(viewer.disorder(), QString());
    QCOMPARE(viewer.link().losses(eventKey).dropped, 0);
    QCOMPARE(viewer.link().losses(eventKey).trimmed, 0);
}

void TestRedisReconnection::aServerThatIsPausedDuringARecordingEndsItAndAnotherOneCanFollow()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    ModelViewer viewer(server.url(), 1000);
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);
    viewer.model().startRecording();
    QVERIFY(robot.raise());
    QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(1LL), patience);

    server.pause();
    QTRY_VERIFY_WITH_TIMEOUT(!viewer.model().isRecording(), patience);
    QCOMPARE(viewer.takeRecordedCells(eventKey), QStringList({QStringLiteral("0"), QStringLiteral("1")}));
    server.resume();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.link().isConnected(), patience);
    viewer.model().startRecording();
    QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(2LL), patience);
    viewer.model().stopRecording();

    QCOMPARE(viewer.takeRecordedCells(eventKey).constLast(), QStringLiteral("2"));
}

// The server is killed while thousands of entries are on their way, and starts empty.
void TestRedisReconnection::aServerThatIsKilledInTheMiddleOfABatchComesBackWithOtherData()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    RedisTestClient robot(server.port());
    robot.command({"SADD", "mem:{arm1}:event", "E"});
    robot.command({"SET", "mem:{arm1}:v:A", "0"});
    ModelViewer viewer(server.url());
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);

    robot.command({"EVAL", "for i = 0, 99999 do redis.call('XADD', KEYS[1], '*', 'v', i) end", "1", "mem:{arm1}:e:E"});
    QTRY_VERIFY_WITH_TIMEOUT(!viewer.values(eventKey).isEmpty(), patience);
    server.kill();
    QTRY_VERIFY_WITH_TIMEOUT(!viewer.link().isConnected(), patience);
    const qsizetype delivered = viewer.values(eventKey).size();
    QCOMPARE(viewer.values(eventKey), numbersBelow(int(delivered)));
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    RedisTestClient other(server.port());
    other.command({"SET", "mem:{arm1}:v:A", "\"other\""});
    other.command({"XADD", "mem:{arm1}:e:E", "*", "v", "\"first\""});
    other.command({"XADD", "mem:{arm1}:e:E", "*", "v", "\"second\""});

    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(QStringLiteral("second")), patience);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(QStringLiteral("other")), patience);
    QCOMPARE(viewer.values(eventKey).mid(delivered),
             QList<QVariant>({QStringLiteral("first"), QStringLiteral("second")}));
    QCOMPARE(viewer.disorder(), QString());
    QCOMPARE(viewer.states, lostOnce);
}

void TestRedisReconnection::aServerThatIsKilledWhileItSendsALongListLeavesAnEmptyList()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    RedisTestClient(server.port())
        .command({"EVAL", "for i = 0, 99999 do redis.call('SADD', KEYS[1], 'Key/' .. i) end", "1", "mem:{arm1}:data"});
    FaultProxy proxy(server.port());
    ModelViewer viewer(proxy.url());
    viewer.link().open();
    QTRY_VERIFY_WITH_TIMEOUT(viewer.link().isConnected(), patience);

    MemoryKeyListModel catalogue(&viewer.link(), {});
    const qint64 before = proxy.replyBytes();
    QTRY_VERIFY_WITH_TIMEOUT(proxy.replyBytes() > before + 10000, patience);
    server.kill();
    proxy.closeAll();

    QTRY_VERIFY_WITH_TIMEOUT(catalogue.isReady(), patience);
    QVERIFY2(catalogue.keys().isEmpty() || catalogue.keys().size() == 100000,
             qPrintable(QString::number(catalogue.keys().size())));
}

void TestRedisReconnection::aConnectionThatIsCutAtAnyByteOfAReplyGoesOnWithoutALossOrARepetition()
{
    // As many bytes as the replies to one tick and one event have, and some of those that follow.
    constexpr int offsets = 260;
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    std::vector<std::unique_ptr<FaultProxy>> proxies;
    std::vector<std::unique_ptr<ModelViewer>> viewers;
    for (int i = 0; i < offsets; ++i) {
        proxies.push_back(std::make_unique<FaultProxy>(server.port()));
        viewers.push_back(std::make_unique<ModelViewer>(proxies.back()->url()));
        viewers.back()->link().open();
        viewers.back()->display({dataKey, eventKey});
    }
    const auto allOf = [&viewers](auto condition) {
        return std::all_of(viewers.begin(), viewers.end(),
                           [&condition](const auto& viewer) { return condition(*viewer); });
    };
    QTRY_VERIFY_WITH_TIMEOUT(allOf([](ModelViewer& viewer) { return viewer.newestValue(dataKey).isValid(); }),
                             patience);
    QVERIFY(robot.raise());
    QTRY_VERIFY_WITH_TIMEOUT(allOf([](ModelViewer& viewer) { return viewer.newestValue(eventKey) == QVariant(0LL); }),
                             patience);

    for (int i = 0; i < offsets; ++i)
        proxies[std::size_t(i)]->cutAfter(i);
    QVERIFY(robot.raise());
    QTRY_VERIFY_WITH_TIMEOUT(allOf([](ModelViewer& viewer) { return viewer.states == lostOnce; }), patience);
    QVERIFY(robot.raise());

    QTRY_VERIFY_WITH_TIMEOUT(allOf([](ModelViewer& viewer) { return viewer.newestValue(eventKey) == QVariant(2LL); }),
                             patience);
    QTRY_VERIFY_WITH_TIMEOUT(allOf([](ModelViewer& viewer) { return viewer.newestValue(dataKey) == QVariant(2LL); }),
                             patience);
    QStringList wrong;
    for (int i = 0; i < offsets; ++i) {
        ModelViewer& viewer = *viewers[std::size_t(i)];
        if (viewer.values(eventKey) != numbersBelow(3) || !viewer.disorder().isEmpty())
            wrong << QString::number(i);
    }
    QCOMPARE(wrong, QStringList());
}

void TestRedisReconnection::aConnectionThatIsCutAtAnyByteOfItsBeginningIsMadeAgain()
{
    // As many bytes as the replies have that come before the connection stands, and some more.
    constexpr int offsets = 60;
    RedisServer server({QStringLiteral("--requirepass"), QStringLiteral("secret")});
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    RedisTestClient(server.port(), "secret").command({"SET", "mem:{arm1}:v:A", "1"});
    RedisTestClient(server.port(), "secret").command({"HSET", "mem:{arm1}:meta", "name", "Arm", "realtime", "1"});
    std::vector<std::unique_ptr<FaultProxy>> proxies;
    std::vector<std::unique_ptr<ModelViewer>> viewers;
    for (int i = 0; i < offsets; ++i) {
        proxies.push_back(std::make_unique<FaultProxy>(server.port()));
        // A cut after no byte at all is one that never lets a reply through: the connections are closed at the first.
        proxies.back()->cutAfter(i + 1);
        viewers.push_back(std::make_unique<ModelViewer>(
            QStringLiteral("redis://:secret@127.0.0.1:%1/arm1").arg(proxies.back()->port())));
        viewers.back()->link().open();
        viewers.back()->display({dataKey});
    }

    QTRY_VERIFY_WITH_TIMEOUT(
        std::all_of(viewers.begin(), viewers.end(),
                    [](const auto& viewer) { return viewer->newestValue(dataKey) == QVariant(1LL); }),
        patience);
    QVERIFY(std::all_of(proxies.begin(), proxies.end(), [](const auto& proxy) { return proxy->hasCut(); }));
    // The cuts before the connection stood are failed attempts, the others are losses.
    QCOMPARE(viewers.front()->states, QStringList({QStringLiteral("robotConnected true")}));
    QVERIFY(!viewers.front()->failures().isEmpty());
    QTRY_COMPARE_WITH_TIMEOUT(viewers.back()->states, lostOnce, patience);
}

void TestRedisReconnection::aConnectionThatSwallowsEverythingIsLost()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    FaultProxy proxy(server.port());
    ModelViewer viewer(proxy.url(), 1000);
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);
    QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(0LL), patience);

    proxy.setSwallowing(true);
    QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().state(), RobotLink::Lost, patience);
    QVERIFY(viewer.link().losses(dataKey).skippedTicks > 0);
    proxy.setSwallowing(false);
    QVERIFY(robot.raise());

    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(2LL), patience);
    QCOMPARE(viewer.values(eventKey), numbersBelow(3));
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisReconnection::aSlowConnectionSkipsTicksAndCountsThem()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    FaultProxy proxy(server.port());
    ModelViewer viewer(proxy.url());
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.values(dataKey).size() > 0, patience);

    proxy.setDelay(700); // more than three sampling periods
    QTRY_VERIFY_WITH_TIMEOUT(viewer.link().losses(dataKey).skippedTicks >= 4, patience);
    for (int i = 0; i < 5; ++i)
        QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(4LL), patience);

    QCOMPARE(viewer.values(eventKey), numbersBelow(5));
    QCOMPARE(viewer.disorder(), QString());
    QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true")}));
    QVERIFY(viewer.link().losses().skippedTicks >= viewer.link().losses(dataKey).skippedTicks);
}

void TestRedisReconnection::eventsThatWereTrimmedWhileTheServerWasAwayAreCounted()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    FaultProxy proxy(server.port());
    ModelViewer viewer(proxy.url());
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);
    QVERIFY(robot.raise());
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(0LL), patience);

    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().state(), RobotLink::Lost, patience);
    for (int i = 0; i < 50; ++i)
        QVERIFY(robot.raise());
    robot.client().command({"XTRIM", "mem:{arm1}:e:E", "MAXLEN", "20"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(50LL), patience);

    QCOMPARE(viewer.values(eventKey).mid(1), numbersBelow(51).mid(31));
    QTRY_COMPARE_WITH_TIMEOUT(viewer.link().losses(eventKey).trimmed, 30, patience);
    QCOMPARE(viewer.link().losses(eventKey).dropped, 0);
    QCOMPARE(viewer.disorder(), QString());
}

void TestRedisReconnection::theModelsStateFollowsALoss()
{
    RedisServer server;
    QVERIFY2(server.start(), qPrintable(server.errorString()));
    CountingRobot robot(server.port());
    ModelViewer viewer(server.url());
    viewer.link().open();
    viewer.display({dataKey, eventKey});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(0LL), patience);
    viewer.model().startRecording();

    server.kill();
    QTRY_COMPARE_WITH_TIMEOUT(viewer.states.size(), 4, patience);

    QCOMPARE(viewer.states.mid(1), QStringList({QStringLiteral("recording true"), QStringLiteral("recording false"),
                                                QStringLiteral("robotConnected false")}));
    QCOMPARE(viewer.model().isRobotConnected(), false);
    QCOMPARE(viewer.model().keys().size(), 2);
    QCOMPARE(viewer.newestValue(dataKey), QVariant(0LL));
    QVERIFY(!viewer.link().memoryInterface());
    viewer.errors.clear();
    viewer.display({QStringLiteral("B")});
    QCOMPARE(viewer.errors, QStringList({QStringLiteral("Not connected to a robot: Cannot retrieve memory value if no "
                                                        "robot is connected.")}));

    QVERIFY2(server.start(), qPrintable(server.errorString()));
    RedisTestClient(server.port()).command({"MSET", "mem:{arm1}:v:A", "7", "mem:{arm1}:v:B", "8"});
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(7LL), patience);
    QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("B")), QVariant(8LL), patience);
    QCOMPARE(viewer.states.mid(4), QStringList({QStringLiteral("robotConnected true")}));
    viewer.link().close();
    QCOMPARE(viewer.states.mid(5), QStringList({QStringLiteral("robotConnected false")}));
}

QTEST_GUILESS_MAIN(TestRedisReconnection)
#include "tst_redis_reconnection.moc"
