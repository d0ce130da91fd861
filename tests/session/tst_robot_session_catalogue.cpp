// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"
#include "support/patient_try.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Velk;

class TestRobotSessionCatalogue : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<MemoryKeyListModel*>(); } // for the spies

    void everyConnectionBringsACatalogue();
    void theCatalogueBeforeIsDeletedAfterItsSuccessorIsAnnounced();
    void aCatalogueOfABrokenConnectionIsNotUsed();
    void aCatalogueThatIsNotWantedIsNotFetched();
    void aCatalogueThatIsNotWantedAnyMoreIsDropped();
    void aCatalogueThatIsNotWantedAnyMoreIsNotWaitedFor();
    void aCatalogueThatIsWantedDuringAConnectionIsFetchedAtOnce();
    void aCatalogueThatIsWantedAgainIsFetchedAgain();
    void aCatalogueThatIsWantedWhenTheRobotConnectsIsFetchedOnce();
    void theSessionIsReadyOnceForEachConnection();
    void theSessionIsReadyWhenTheLastAnswerIsIn_data();
    void theSessionIsReadyWhenTheLastAnswerIsIn();
    void theWatchedKeysAreDisplayedBeforeTheSessionIsReady();
};

void TestRobotSessionCatalogue::everyConnectionBringsACatalogue()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::catalogueReady);
    QVERIFY(!f.session.catalogue());

    f.becomeReady();
    QCOMPARE(text(f.session.catalogue()->keys()), QString("A DATA, B DATA, E EVENT"));
    f.link->lose();
    QVERIFY(f.session.catalogue());
    f.becomeReady();

    QCOMPARE(ready.count(), 2);
}

void TestRobotSessionCatalogue::theCatalogueBeforeIsDeletedAfterItsSuccessorIsAnnounced()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    const QPointer<MemoryKeyListModel> former = f.session.catalogue();
    bool wasThere = false;
    connect(&f.session, &RobotSession::catalogueReady, this, [&] { wasThere = former; });

    f.link->lose();
    f.becomeReady();

    QVERIFY(wasThere);
    QVERIFY(!former);
    QVERIFY(f.session.catalogue());
}

void TestRobotSessionCatalogue::aCatalogueOfABrokenConnectionIsNotUsed()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::catalogueReady);
    f.connectRobot();

    f.link->lose();
    f.finishAllFetches();

    QCOMPARE(ready.count(), 0);
    QVERIFY(!f.session.catalogue());
}

void TestRobotSessionCatalogue::aCatalogueThatIsNotWantedIsNotFetched()
{
    SessionOnFakeRobot f;
    f.session.setCatalogueWanted(false);

    f.becomeReady();

    QCOMPARE(f.link->memory->fetchCount(), 1); // that of the displayed key set
    QVERIFY(f.session.isReady());
    QVERIFY(!f.session.catalogue());
}

void TestRobotSessionCatalogue::aCatalogueThatIsNotWantedAnyMoreIsDropped()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    const QPointer<MemoryKeyListModel> catalogue = f.session.catalogue();

    f.session.setCatalogueWanted(false);

    QVERIFY(!f.session.catalogue());
    QVERIFY(f.session.isReady());
    QTRY_VERIFY(!catalogue);
}

void TestRobotSessionCatalogue::aCatalogueThatIsNotWantedAnyMoreIsNotWaitedFor()
{
    SessionOnFakeRobot f;
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);
    f.connectRobot();
    f.finishFetch(0);
    QVERIFY(!f.session.isReady());

    f.session.setCatalogueWanted(false);

    QVERIFY(f.session.isReady());
    f.finishAllFetches();
    QCOMPARE(catalogueReady.count(), 0);
}

void TestRobotSessionCatalogue::aCatalogueThatIsWantedDuringAConnectionIsFetchedAtOnce()
{
    SessionOnFakeRobot f;
    f.session.setCatalogueWanted(false);
    f.becomeReady();
    f.session.watchByName("X");
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);
    QSignalSpy readyChanged(&f.session, &RobotSession::readyChanged);

    f.session.setCatalogueWanted(true);
    f.session.watch(unknownKeys({"E"}));
    f.finishFetch(1);

    QCOMPARE(catalogueReady.count(), 1);
    QCOMPARE(text(f.session.catalogue()->keys()), QString("A DATA, B DATA, E EVENT, X UNKNOWN"));
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("E EVENT, X UNKNOWN"));
    QCOMPARE(readyChanged.count(), 0);
}

void TestRobotSessionCatalogue::aCatalogueThatIsWantedAgainIsFetchedAgain()
{
    SessionOnFakeRobot f;
    f.becomeReady();
    QSignalSpy catalogueReady(&f.session, &RobotSession::catalogueReady);

    f.session.setCatalogueWanted(true); // it is: nothing happens
    QCOMPARE(f.link->memory->fetchCount(), 2);
    f.session.setCatalogueWanted(false);
    f.session.setCatalogueWanted(true);
    QCOMPARE(f.link->memory->fetchCount(), 3);
    f.finishFetch(2);

    QCOMPARE(catalogueReady.count(), 1);
    QVERIFY(f.session.catalogue());
}

void TestRobotSessionCatalogue::aCatalogueThatIsWantedWhenTheRobotConnectsIsFetchedOnce()
{
    SessionOnFakeRobot f(RobotSession::ListKeys);
    f.session.setCatalogueWanted(false);
    connect(f.link, &RobotLink::stateChanged, this, [&] { f.session.setCatalogueWanted(true); });

    f.becomeReady();

    QCOMPARE(f.link->memory->fetchCount(), 1);
    QVERIFY(f.session.isReady());
    QVERIFY(f.session.catalogue());
}

void TestRobotSessionCatalogue::theSessionIsReadyOnceForEachConnection()
{
    SessionOnFakeRobot f;
    QSignalSpy ready(&f.session, &RobotSession::readyChanged);

    f.becomeReady();
    f.session.watch(keySet({"A"}));
    QCOMPARE(ready.count(), 1);
    QVERIFY(f.session.isReady());
    f.link->lose();
    QCOMPARE(ready.count(), 2);
    QVERIFY(!f.session.isReady());
    f.becomeReady();
    QCOMPARE(ready.count(), 3);
    f.link->close();

    QCOMPARE(ready.count(), 4);
    QVERIFY(!f.session.isReady());
}

void TestRobotSessionCatalogue::theSessionIsReadyWhenTheLastAnswerIsIn_data()
{
    QTest::addColumn<bool>("isReconnection");
    QTest::addColumn<QString>("order");
    QTest::addColumn<bool>("isRealTime");

    // d: the lists of the displayed key set, c: those of the catalogue, r: whether the robot samples in real time
    QString order("cdr");
    do {
        for (const bool isReconnection : {false, true}) {
            for (const bool isRealTime : {false, true})
                QTest::addRow("%s, %s, %s", isReconnection ? "again" : "first", qPrintable(order),
                              isRealTime ? "fast" : "slow")
                    << isReconnection << order << isRealTime;
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

void TestRobotSessionCatalogue::theSessionIsReadyWhenTheLastAnswerIsIn()
{
    QFETCH(bool, isReconnection);
    QFETCH(QString, order);
    QFETCH(bool, isRealTime);
    SessionOnFakeRobot f;
    f.session.setWantedPeriod(50);
    f.session.watch(keySet({"A"}));
    if (isReconnection) {
        f.becomeReady();
        f.link->lose();
    }
    QSignalSpy ready(&f.session, &RobotSession::readyChanged);
    f.connectRobot();

    for (const QChar answer : order) {
        QCOMPARE(ready.count(), 0);
        if (answer == 'd')
            f.finishFetch(0);
        else if (answer == 'c')
            f.finishFetch(1);
        else
            f.answerRealTimeSupported(isRealTime);
    }

    QCOMPARE(ready.count(), 1);
    QCOMPARE(f.session.grantedPeriod(), isRealTime ? 50 : 200);
    QCOMPARE(text(f.session.displayedKeys()->keys()), QString("A DATA"));
    QVERIFY(f.session.isWatcherRunning());
}

void TestRobotSessionCatalogue::theWatchedKeysAreDisplayedBeforeTheSessionIsReady()
{
    SessionOnFakeRobot f;
    QStringList displayed;
    connect(&f.session, &RobotSession::readyChanged, this, [&] { displayed = f.displayed(); });
    f.connectRobot();
    f.session.watch(keySet({"A"}));

    f.finishAllFetches();

    QCOMPARE(displayed, QStringList("A"));
}

QTEST_GUILESS_MAIN(TestRobotSessionCatalogue)

#include "tst_robot_session_catalogue.moc"
