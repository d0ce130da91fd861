// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/model_viewer.h"
#include "support/redis_sentinel_set.h"
#include "support/redis_test_client.h"

#include <QTest>

using namespace Velk;

namespace {

constexpr int patience = 60000;

const QString dataKey = QStringLiteral("A");
const QString eventKey = QStringLiteral("E");

bool write(RedisServer& server, int value)
{
    const QByteArray number = QByteArray::number(value);
    return RedisTestClient(server.port())
               .pipeline({{"SADD", "mem:{arm1}:event", "E"},
                          {"SET", "mem:{arm1}:v:A", number},
                          {"XADD", "mem:{arm1}:e:E", "*", "v", number}}) == 3;
}

} // namespace

class TestRedisSentinel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFailOverDuringARecordingEndsItAndTheViewerFollowsTheMaster()
    {
        RedisSentinelSet set;
        QVERIFY2(set.start(), qPrintable(set.errorString()));
        QVERIFY(write(set.server(0), 0));
        ModelViewer viewer(set.url());
        viewer.link().open();
        viewer.display({dataKey, eventKey});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(0LL), patience);
        viewer.model().startRecording();
        QVERIFY(write(set.server(0), 1));
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(1LL), patience);
        QVERIFY(set.waitForReplication());

        set.server(0).kill();
        QTRY_VERIFY_WITH_TIMEOUT(!viewer.link().isConnected(), patience);
        QCOMPARE(viewer.takeRecordedCells(eventKey), QStringList({QStringLiteral("1")}));
        QTRY_VERIFY_WITH_TIMEOUT(viewer.link().isConnected(), patience);
        QVERIFY(set.waitForMaster(1));
        QVERIFY(write(set.server(1), 2));

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(2LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(2LL), patience);
        QCOMPARE(viewer.values(eventKey), QList<QVariant>({1LL, 2LL}));
        QCOMPARE(viewer.disorder(), QString());
        QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true"), QStringLiteral("recording true"),
                                             QStringLiteral("recording false"), QStringLiteral("robotConnected false"),
                                             QStringLiteral("robotConnected true")}));
    }

    // The old master lives on as a replica: nobody closes the connection to it in earnest.
    void aSwitchThatIsAskedForIsFollowed()
    {
        RedisSentinelSet set;
        QVERIFY2(set.start(), qPrintable(set.errorString()));
        QVERIFY(write(set.server(0), 0));
        ModelViewer viewer(set.url());
        viewer.link().open();
        viewer.display({dataKey, eventKey});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(0LL), patience);
        QVERIFY(set.waitForReplication());

        QVERIFY(set.requestFailover());
        QVERIFY(set.waitForMaster(1));
        QVERIFY(write(set.server(1), 1));

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(1LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.values(eventKey), QList<QVariant>({1LL}), patience);
        // On the new master by now, not on its replica.
        QTRY_VERIFY_WITH_TIMEOUT(RedisTestClient(set.server(1).port()).command({"CLIENT", "LIST"}).contains("cmd=mget"),
                                 patience);
        QCOMPARE(viewer.disorder(), QString());
    }

    void theMasterIsFoundWhileAnySentinelAnswers()
    {
        RedisSentinelSet set;
        QVERIFY2(set.start(), qPrintable(set.errorString()));
        QVERIFY(write(set.server(0), 0));
        set.sentinel(0).kill();
        set.sentinel(1).kill();
        ModelViewer viewer(set.url());

        viewer.link().open();
        viewer.display({dataKey});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(0LL), patience);
        QCOMPARE(viewer.failures(), QStringList());
    }

    void aServiceThatTheSentinelsDoNotKnowIsExplained()
    {
        RedisSentinelSet set;
        QVERIFY2(set.start(), qPrintable(set.errorString()));
        ModelViewer viewer(set.url().replace(QStringLiteral("/main/"), QStringLiteral("/mean/")));

        viewer.link().open();

        QTRY_VERIFY_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("knows no master of the service \"mean\"")),
                                 patience);
        QVERIFY(!viewer.link().isConnected());
    }
};

QTEST_GUILESS_MAIN(TestRedisSentinel)
#include "tst_redis_sentinel.moc"
