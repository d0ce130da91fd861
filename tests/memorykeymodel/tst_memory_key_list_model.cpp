#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QException>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

using namespace Velk;

namespace {

/// The three lists of the catalogue.
enum List
{
    Data,
    Event,
    MicroEvent
};

void finish(FakeMemoryInterface& memory, List list, const QStringList& names)
{
    switch (list) {
    case Data:
        return memory.finishDataList(names);
    case Event:
        return memory.finishEventList(names);
    case MicroEvent:
        return memory.finishMicroEventList(names);
    }
}

class FetchFailed : public QException
{
public:
    void raise() const override { throw *this; }
    FetchFailed* clone() const override { return new FetchFailed(*this); }
};

bool deliveryThrows()
{
    try {
        QCoreApplication::sendPostedEvents();
    } catch (const FetchFailed&) {
        return true;
    }
    return false;
}

} // namespace

class TestMemoryKeyListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isAChildOfItsConnectionManager();
    void hasTheSignalsAndSlotsOfItsInterface();

    // fetching and readiness
    void asksForTheThreeListsAtOnce();
    void isReadyAtOnceWithoutAMemoryInterface();
    void needsTheMemoryInterfaceAndNotTheConnection();
    void becomesReadyWithTheLastList_data();
    void becomesReadyWithTheLastList();
    void becomesReadyOnceWhenAllListsFinishBeforeTheEventLoopRuns();
    void storesNoNameInsideTheConstructor();
    void storesNamesUnchanged();
    void emptyListsAreValid();
    void resolvesNaturesBeforeItIsReady();
    void mayBeDeletedByAReceiverOfReady();
    void destructionNeitherWaitsNorEmits();
    void anExceptionOfAFetchIsThrownBeforeAnyNameIsStored();
    void listsThatArriveAfterAFailedOneMakeTheCatalogueReady();
    void neverBecomesReadyWhileAListIsOutstanding();

    // natures
    void aNameInDataAndEventListsIsAnEventKey();
    void beforeReadinessASharedNameIsInBothSets();
    void aSelectedKeyGetsTheCataloguesElement_data();
    void aSelectedKeyGetsTheCataloguesElement();
    void aSelectedKeyThatNoListHoldsStaysSelectedAsUnknown();
    void aMaskSelectsTheNatures_data();
    void aMaskSelectsTheNatures();
    void resolvingTwiceChangesNothing();
    void resultsOfQueriesAreCopies();
    void aQueryAfterAListShowsTheList();

    // user keys
    void aUserKeyIsUnknownAndAnnouncedAfterItCanBeQueried();
    void aUserKeyIsAnnouncedEveryTimeAndStoredOnce();
    void aUserKeyThatTheRobotListsIsInBothSets();
    void anEmptyNameIsAUserKey();
    void addingAUserKeyDoesNotSelectIt();
    void aSelectedUserKeyKeepsTheSelectionsDescription();
    void userKeysAreKeptWhenTheListsArrive();

    // selection
    void selectingReplacesTheWholeSelection();
    void selectingEmitsNothing();
    void deselectingAnUnknownKeyDropsItAtOnceButNotAUserKey();
    void anEmptySelectionLeavesTheUserKeysUnknown();
    void aReferenceToTheSelectionShowsLaterChanges();
    void aSelectionBeforeReadinessIsResolvedWithTheListsSoFar();
    void theInitialSelectionIsUnchangedUntilTheFirstResolution();
};

void TestMemoryKeyListModel::isAChildOfItsConnectionManager()
{
    FakeConnectionManager connection;

    const MemoryKeyListModel catalogue(&connection, {});

    QCOMPARE(catalogue.parent(), &connection);
}

void TestMemoryKeyListModel::hasTheSignalsAndSlotsOfItsInterface()
{
    const QMetaObject& meta = MemoryKeyListModel::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        methods << QString("%1 %2 %3 [%4]")
                       .arg(method.methodType() == QMetaMethod::Signal ? QString("signal") : QString("slot"),
                            method.access() == QMetaMethod::Protected ? QString("protected") : QString("other"),
                            QString::fromLatin1(method.methodSignature()),
                            QString::fromLatin1(method.parameterNames().join(',')));
    }

    QCOMPARE(meta.className(), "Velk::MemoryKeyListModel");
    QCOMPARE(methods, (QStringList{"signal other ready() []", "signal other userKeyAdded(MemoryKey) [key]",
                                   "slot protected onDataKeysReceived() []", "slot protected onEventKeysReceived() []",
                                   "slot protected onMicroEventKeysReceived() []"}));
    void (MemoryKeyListModel::*ready)() const = &MemoryKeyListModel::ready;
    QVERIFY(ready != nullptr);
}

void TestMemoryKeyListModel::asksForTheThreeListsAtOnce()
{
    FakeConnectionManager connection;

    const MemoryKeyListModel catalogue(&connection, {});

    QCOMPARE(connection.takeLog(), (QStringList{"getDataList", "getEventList", "getMicroEventList"}));
    QCOMPARE(connection.memory.use_count(), 1L);
}

void TestMemoryKeyListModel::isReadyAtOnceWithoutAMemoryInterface()
{
    FakeConnectionManager connection;
    connection.memory.reset();

    MemoryKeyListModel catalogue(&connection, keySet({"Arm"}));
    QSignalSpy ready(&catalogue, &MemoryKeyListModel::ready);
    QCoreApplication::processEvents();

    QVERIFY(catalogue.isReady());
    QCOMPARE(ready.count(), 0);
    QCOMPARE(described(catalogue.keys()), QStringList{"Arm UNKNOWN (Arm desc)"});
    QCOMPARE(described(catalogue.selectedKeys()), QStringList{"Arm UNKNOWN (Arm desc)"});
    QCOMPARE(names(catalogue.keys(MemoryKeyNature(DataNature | EventNature))), QStringList());
}

void TestMemoryKeyListModel::needsTheMemoryInterfaceAndNotTheConnection()
{
    FakeConnectionManager connection;
    connection.connected = false;

    const MemoryKeyListModel catalogue(&connection, {});

    QCOMPARE(connection.takeLog().size(), 3);
    QVERIFY(!catalogue.isReady());
}

void TestMemoryKeyListModel::becomesReadyWithTheLastList_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<int>("third");
    QTest::newRow("data, event, micro-event") << int(Data) << int(Event) << int(MicroEvent);
    QTest::newRow("data, micro-event, event") << int(Data) << int(MicroEvent) << int(Event);
    QTest::newRow("event, data, micro-event") << int(Event) << int(Data) << int(MicroEvent);
    QTest::newRow("event, micro-event, data") << int(Event) << int(MicroEvent) << int(Data);
    QTest::newRow("micro-event, data, event") << int(MicroEvent) << int(Data) << int(Event);
    QTest::newRow("micro-event, event, data") << int(MicroEvent) << int(Event) << int(Data);
}

void TestMemoryKeyListModel::becomesReadyWithTheLastList()
{
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(int, third);
    const QStringList listNames{"Arm", "Bumper", "Missed"};
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    QSignalSpy ready(&catalogue, &MemoryKeyListModel::ready);

    finish(*connection.memory, List(first), {listNames[first]});
    QCoreApplication::processEvents();
    QCOMPARE(names(catalogue.keys()), QStringList{listNames[first]});
    finish(*connection.memory, List(second), {listNames[second]});
    QCoreApplication::processEvents();
    QVERIFY(!catalogue.isReady());
    QCOMPARE(ready.count(), 0);
    finish(*connection.memory, List(third), {listNames[third]});
    QCoreApplication::processEvents();

    QVERIFY(catalogue.isReady());
    QCOMPARE(ready.count(), 1);
    QCOMPARE(described(catalogue.keys()),
             (QStringList{"Arm DATA (Arm desc)", "Bumper EVENT (Bumper desc)", "Missed EVENT (Missed desc)"}));
}

void TestMemoryKeyListModel::becomesReadyOnceWhenAllListsFinishBeforeTheEventLoopRuns()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    QStringList keysAtReady;
    int readyCount = 0;
    connect(&catalogue, &MemoryKeyListModel::ready, this, [&] {
        ++readyCount;
        keysAtReady = names(catalogue.keys());
    });

    connection.memory->finishLists({"Arm"}, {"Bumper"}, {"Missed"});
    QCoreApplication::processEvents();

    QCOMPARE(readyCount, 1);
    QCOMPARE(keysAtReady, (QStringList{"Arm", "Bumper", "Missed"}));
}

void TestMemoryKeyListModel::storesNoNameInsideTheConstructor()
{
    // The service answers before it returns: its futures are finished already.
    class PromptMemory : public FakeMemoryInterface
    {
    public:
        using FakeMemoryInterface::FakeMemoryInterface;
        QFuture<QStringList> getDataList() override
        {
            const QFuture<QStringList> list = FakeMemoryInterface::getDataList();
            finishDataList({"Arm"});
            return list;
        }
        QFuture<QStringList> getEventList() override
        {
            const QFuture<QStringList> list = FakeMemoryInterface::getEventList();
            finishEventList({});
            return list;
        }
        QFuture<QStringList> getMicroEventList() override
        {
            const QFuture<QStringList> list = FakeMemoryInterface::getMicroEventList();
            finishMicroEventList({});
            return list;
        }
    };
    FakeConnectionManager connection;
    connection.memory = boost::make_shared<PromptMemory>(&connection.log);

    MemoryKeyListModel catalogue(&connection, {});
    QSignalSpy ready(&catalogue, &MemoryKeyListModel::ready);
    QVERIFY(!catalogue.isReady());
    QCOMPARE(names(catalogue.keys()), QStringList());
    QCoreApplication::processEvents();

    QCOMPARE(ready.count(), 1);
    QCOMPARE(names(catalogue.keys()), QStringList{"Arm"});
}

void TestMemoryKeyListModel::storesNamesUnchanged()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});

    connection.memory->finishLists({"Arm", " Arm", "arm", QString(), "Arm"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys()),
             (QStringList{" Arm DATA ( Arm desc)", " DATA ( desc)", "Arm DATA (Arm desc)", "arm DATA (arm desc)"}));
}

void TestMemoryKeyListModel::emptyListsAreValid()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    QSignalSpy ready(&catalogue, &MemoryKeyListModel::ready);

    connection.memory->finishLists();
    QCoreApplication::processEvents();

    QVERIFY(catalogue.isReady());
    QCOMPARE(ready.count(), 1);
    QVERIFY(catalogue.keys().isEmpty());
    QVERIFY(catalogue.keys(UnknownNature).isEmpty());
    QVERIFY(catalogue.selectedKeys().isEmpty());
}

void TestMemoryKeyListModel::resolvesNaturesBeforeItIsReady()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Bumper"}));
    QStringList selectionAtReady;
    bool readyAtReady = false;
    connect(&catalogue, &MemoryKeyListModel::ready, this, [&] {
        selectionAtReady = described(catalogue.selectedKeys());
        readyAtReady = catalogue.isReady();
    });

    connection.memory->finishLists({}, {"Bumper"});
    QCoreApplication::processEvents();

    QCOMPARE(selectionAtReady, QStringList{"Bumper EVENT (Bumper desc)"});
    QVERIFY(readyAtReady);
}

void TestMemoryKeyListModel::mayBeDeletedByAReceiverOfReady()
{
    FakeConnectionManager connection;
    QPointer<MemoryKeyListModel> catalogue = new MemoryKeyListModel(&connection, {});
    connect(catalogue, &MemoryKeyListModel::ready, this, [&] { delete catalogue.data(); });

    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    QVERIFY(!catalogue);
}

void TestMemoryKeyListModel::destructionNeitherWaitsNorEmits()
{
    FakeConnectionManager connection;
    int readyCount = 0;
    {
        const MemoryKeyListModel catalogue(&connection, {});
        connect(&catalogue, &MemoryKeyListModel::ready, this, [&] { ++readyCount; });
        connection.memory->finishDataList({"Arm"});
    }
    connection.memory->finishEventList({});
    connection.memory->finishMicroEventList({});
    QCoreApplication::processEvents();

    QCOMPARE(readyCount, 0);
}

void TestMemoryKeyListModel::anExceptionOfAFetchIsThrownBeforeAnyNameIsStored()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishDataList({"Arm"});
    connection.memory->finishEventList({});
    QCoreApplication::processEvents();

    connection.memory->failMicroEventList(FetchFailed());

    QVERIFY(deliveryThrows());
    QVERIFY(!catalogue.isReady());
    QCOMPARE(names(catalogue.keys()), QStringList{"Arm"});
}

void TestMemoryKeyListModel::listsThatArriveAfterAFailedOneMakeTheCatalogueReady()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    QSignalSpy ready(&catalogue, &MemoryKeyListModel::ready);
    connection.memory->failDataList(FetchFailed());
    QVERIFY(deliveryThrows());

    connection.memory->finishEventList({"Bumper"});
    connection.memory->finishMicroEventList({});
    QCoreApplication::processEvents();

    QCOMPARE(ready.count(), 1);
    QCOMPARE(names(catalogue.keys()), QStringList{"Bumper"});
}

void TestMemoryKeyListModel::neverBecomesReadyWhileAListIsOutstanding()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});

    connection.memory->finishDataList({});
    connection.memory->finishEventList({});
    QCoreApplication::processEvents();
    catalogue.addUserKey("Mine");
    catalogue.selectKeys(keySet({"Arm"}));

    QVERIFY(!catalogue.isReady());
}

void TestMemoryKeyListModel::aNameInDataAndEventListsIsAnEventKey()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Both"}));

    connection.memory->finishLists({"Both", "Arm"}, {"Both"});
    QCoreApplication::processEvents();

    QCOMPARE(names(catalogue.keys(DataNature)), QStringList{"Arm"});
    QCOMPARE(described(catalogue.keys(EventNature)), QStringList{"Both EVENT (Both desc)"});
    QCOMPARE(described(catalogue.keys()), (QStringList{"Arm DATA (Arm desc)", "Both EVENT (Both desc)"}));
    QCOMPARE(described(catalogue.selectedKeys()), QStringList{"Both EVENT (Both desc)"});
}

void TestMemoryKeyListModel::beforeReadinessASharedNameIsInBothSets()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Selected"}));

    connection.memory->finishDataList({"Both"});
    connection.memory->finishMicroEventList({"Both"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys(DataNature)), QStringList{"Both DATA (Both desc)"});
    QCOMPARE(described(catalogue.keys(EventNature)), QStringList{"Both EVENT (Both desc)"});
    QCOMPARE(described(catalogue.keys()), QStringList{"Both DATA (Both desc)"});
}

void TestMemoryKeyListModel::aSelectedKeyGetsTheCataloguesElement_data()
{
    QTest::addColumn<QStringList>("data");
    QTest::addColumn<QStringList>("events");
    QTest::addColumn<QStringList>("microEvents");
    QTest::addColumn<QString>("userKey");
    QTest::addColumn<QString>("selected");
    const QStringList arm{"Arm"};
    const QStringList none;
    QTest::newRow("data") << arm << none << none << QString() << "Arm DATA (Arm desc)";
    QTest::newRow("event") << none << arm << none << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("micro-event") << none << none << arm << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("data and event") << arm << arm << none << QString() << "Arm EVENT (Arm desc)";
    QTest::newRow("user key and data") << arm << none << none << "Arm"
                                       << "Arm DATA (Arm desc)";
    QTest::newRow("user key and event") << none << arm << none << "Arm"
                                        << "Arm EVENT (Arm desc)";
    QTest::newRow("nowhere") << none << none << none << QString() << "Arm UNKNOWN (given text)";
    QTest::newRow("user key only") << none << none << none << "Arm"
                                   << "Arm UNKNOWN (given text)";
}

void TestMemoryKeyListModel::aSelectedKeyGetsTheCataloguesElement()
{
    QFETCH(QStringList, data);
    QFETCH(QStringList, events);
    QFETCH(QStringList, microEvents);
    QFETCH(QString, userKey);
    QFETCH(QString, selected);
    FakeConnectionManager connection;
    // The nature that the key had on an earlier connection has no effect.
    MemoryKeyListModel catalogue(&connection,
                                 {MemoryKey("Arm", "given text", events.isEmpty() ? EventNature : DataNature)});
    if (!userKey.isNull())
        catalogue.addUserKey(userKey);

    connection.memory->finishLists(data, events, microEvents);
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()), QStringList{selected});
    QCOMPARE(described(catalogue.keys()), QStringList{selected});
    const bool isUnknown = !userKey.isNull() || selected.contains("UNKNOWN");
    QCOMPARE(names(catalogue.keys(UnknownNature)), isUnknown ? QStringList{"Arm"} : QStringList());
}

void TestMemoryKeyListModel::aSelectedKeyThatNoListHoldsStaysSelectedAsUnknown()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {MemoryKey("Gone", "its own text", DataNature)});

    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    const QStringList gone{"Gone UNKNOWN (its own text)"};
    QCOMPARE(described(catalogue.selectedKeys()), gone);
    QCOMPARE(described(catalogue.keys(UnknownNature)), gone);
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Gone"}));
}

void TestMemoryKeyListModel::aMaskSelectsTheNatures_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QStringList>("keys");
    const QString data = "Arm DATA (Arm desc)";
    const QString dataUser = "Typed DATA (Typed desc)";
    const QString event = "Bumper EVENT (Bumper desc)";
    const QString unknown = "Mine UNKNOWN (Mine desc)";
    const QString unknownUser = "Typed UNKNOWN (Typed desc)";
    QTest::newRow("0: none") << 0 << QStringList();
    QTest::newRow("1: data") << 1 << QStringList{data, dataUser};
    QTest::newRow("2: event") << 2 << QStringList{event};
    QTest::newRow("3: data and event") << 3 << QStringList{data, event, dataUser};
    QTest::newRow("4: a user key is unknown even when the robot lists it") << 4 << QStringList{unknown, unknownUser};
    QTest::newRow("5: the earlier set wins") << 5 << QStringList{data, unknown, dataUser};
    QTest::newRow("6: event and unknown") << 6 << QStringList{event, unknown, unknownUser};
    QTest::newRow("7: all") << 7 << QStringList{data, event, unknown, dataUser};
    QTest::newRow("8: no nature") << 8 << QStringList();
    QTest::newRow("9: other bits are ignored") << 9 << QStringList{data, dataUser};
}

void TestMemoryKeyListModel::aMaskSelectsTheNatures()
{
    QFETCH(int, mask);
    QFETCH(QStringList, keys);
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");
    catalogue.addUserKey("Typed");
    connection.memory->finishLists({"Arm", "Typed"}, {"Bumper"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys(MemoryKeyNature(mask))), keys);
    QCOMPARE(described(catalogue.keys()), described(catalogue.keys(MemoryKeyNature(7))));
}

void TestMemoryKeyListModel::resolvingTwiceChangesNothing()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Arm", "Gone"}));
    catalogue.addUserKey("Mine");
    connection.memory->finishLists({"Arm", "Both"}, {"Both"});
    QCoreApplication::processEvents();
    const QStringList keys = described(catalogue.keys());
    const QStringList unknownKeys = described(catalogue.keys(UnknownNature));
    const QStringList selectedKeys = described(catalogue.selectedKeys());

    catalogue.selectKeys(catalogue.selectedKeys()); // the set itself, which changes while it is resolved

    QCOMPARE(described(catalogue.keys()), keys);
    QCOMPARE(described(catalogue.keys(UnknownNature)), unknownKeys);
    QCOMPARE(described(catalogue.selectedKeys()), selectedKeys);
}

void TestMemoryKeyListModel::resultsOfQueriesAreCopies()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    QSet<MemoryKey> keys = catalogue.keys();
    keys.clear();
    const QSet<MemoryKey> before = catalogue.keys();
    catalogue.addUserKey("Mine");

    QCOMPARE(names(before), QStringList{"Arm"});
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Mine"}));
}

void TestMemoryKeyListModel::aQueryAfterAListShowsTheList()
{
    FakeConnectionManager connection;
    const MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishDataList({"Arm"});
    QCoreApplication::processEvents();
    QCOMPARE(names(catalogue.keys()), QStringList{"Arm"});
    QCOMPARE(names(catalogue.keys(EventNature)), QStringList());

    connection.memory->finishEventList({"Bumper"});
    QCoreApplication::processEvents();

    QVERIFY(!catalogue.isReady());
    QCOMPARE(names(catalogue.keys()), (QStringList{"Arm", "Bumper"}));
    QCOMPARE(names(catalogue.keys(EventNature)), QStringList{"Bumper"});
}

void TestMemoryKeyListModel::aUserKeyIsUnknownAndAnnouncedAfterItCanBeQueried()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    QStringList keysAtSignal;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this, [&](const MemoryKey& key) {
        announced << described({key});
        keysAtSignal = names(catalogue.keys(UnknownNature));
    });

    catalogue.addUserKey("Mine");

    QCOMPARE(announced, QStringList{"Mine UNKNOWN (Mine desc)"});
    QCOMPARE(keysAtSignal, QStringList{"Mine"});
}

void TestMemoryKeyListModel::aUserKeyIsAnnouncedEveryTimeAndStoredOnce()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey("Mine");
    catalogue.addUserKey("Mine");

    const QString mine = "Mine UNKNOWN (Mine desc)";
    QCOMPARE(announced, (QStringList{mine, mine}));
    QCOMPARE(described(catalogue.keys()), QStringList{mine});
}

void TestMemoryKeyListModel::aUserKeyThatTheRobotListsIsInBothSets()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey("Arm");

    const QStringList asUnknown{"Arm UNKNOWN (Arm desc)"};
    QCOMPARE(announced, asUnknown);
    QCOMPARE(described(catalogue.keys()), QStringList{"Arm DATA (Arm desc)"});
    QCOMPARE(described(catalogue.keys(DataNature)), QStringList{"Arm DATA (Arm desc)"});
    QCOMPARE(described(catalogue.keys(UnknownNature)), asUnknown);
}

void TestMemoryKeyListModel::anEmptyNameIsAUserKey()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    QStringList announced;
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this,
            [&](const MemoryKey& key) { announced << described({key}); });

    catalogue.addUserKey(QString());

    QCOMPARE(announced, QStringList{" UNKNOWN ( desc)"});
    QCOMPARE(described(catalogue.keys()), QStringList{" UNKNOWN ( desc)"});
}

void TestMemoryKeyListModel::addingAUserKeyDoesNotSelectIt()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Arm"}));

    catalogue.addUserKey("Mine");

    QCOMPARE(names(catalogue.selectedKeys()), QStringList{"Arm"});
}

void TestMemoryKeyListModel::aSelectedUserKeyKeepsTheSelectionsDescription()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {MemoryKey("Mine", "given text", DataNature)});

    catalogue.addUserKey("Mine");

    const QStringList mine{"Mine UNKNOWN (given text)"};
    QCOMPARE(described(catalogue.selectedKeys()), mine);
    QCOMPARE(described(catalogue.keys()), mine);
}

void TestMemoryKeyListModel::userKeysAreKeptWhenTheListsArrive()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");

    connection.memory->finishLists({"Arm"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.keys()), (QStringList{"Arm DATA (Arm desc)", "Mine UNKNOWN (Mine desc)"}));
}

void TestMemoryKeyListModel::selectingReplacesTheWholeSelection()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, keySet({"Old"}));
    connection.memory->finishLists({"Arm"}, {"Bumper"});
    QCoreApplication::processEvents();

    catalogue.selectKeys({MemoryKey("Bumper", "given text", DataNature), MemoryKey("Gone", "given text", DataNature)});

    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Bumper EVENT (Bumper desc)", "Gone UNKNOWN (given text)"}));
}

void TestMemoryKeyListModel::selectingEmitsNothing()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    int emitted = 0;
    connect(&catalogue, &MemoryKeyListModel::ready, this, [&] { ++emitted; });
    connect(&catalogue, &MemoryKeyListModel::userKeyAdded, this, [&] { ++emitted; });

    catalogue.selectKeys(keySet({"Arm"}));
    QCoreApplication::processEvents();

    QCOMPARE(emitted, 0);
}

void TestMemoryKeyListModel::deselectingAnUnknownKeyDropsItAtOnceButNotAUserKey()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, {});
    catalogue.addUserKey("Mine");
    catalogue.selectKeys(keySet({"Gone", "Mine"}));
    QCOMPARE(names(catalogue.keys()), (QStringList{"Gone", "Mine"}));

    catalogue.selectKeys(keySet({"Other"}));

    QCOMPARE(names(catalogue.keys()), (QStringList{"Mine", "Other"}));
}

void TestMemoryKeyListModel::anEmptySelectionLeavesTheUserKeysUnknown()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Gone"}));
    catalogue.addUserKey("Mine");

    catalogue.selectKeys({});

    QCOMPARE(names(catalogue.selectedKeys()), QStringList());
    QCOMPARE(names(catalogue.keys(UnknownNature)), QStringList{"Mine"});
}

void TestMemoryKeyListModel::aReferenceToTheSelectionShowsLaterChanges()
{
    FakeConnectionManager connection;
    connection.memory.reset();
    MemoryKeyListModel catalogue(&connection, keySet({"Old"}));
    const QSet<MemoryKey>& selection = catalogue.selectedKeys();

    catalogue.selectKeys(keySet({"New"}));

    QCOMPARE(names(selection), QStringList{"New"});
    QCOMPARE(&selection, &catalogue.selectedKeys());
}

void TestMemoryKeyListModel::aSelectionBeforeReadinessIsResolvedWithTheListsSoFar()
{
    FakeConnectionManager connection;
    MemoryKeyListModel catalogue(&connection, {});
    connection.memory->finishDataList({"Both"});
    QCoreApplication::processEvents();

    catalogue.selectKeys(keySet({"Both", "Bumper"}));
    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Both DATA (Both desc)", "Bumper UNKNOWN (Bumper desc)"}));
    connection.memory->finishEventList({"Both", "Bumper"});
    connection.memory->finishMicroEventList({});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()),
             (QStringList{"Both EVENT (Both desc)", "Bumper EVENT (Bumper desc)"}));
}

void TestMemoryKeyListModel::theInitialSelectionIsUnchangedUntilTheFirstResolution()
{
    FakeConnectionManager connection;
    const MemoryKeyListModel catalogue(&connection, {MemoryKey("Arm", "given text", EventNature)});

    connection.memory->finishDataList({"Arm"});
    QCoreApplication::processEvents();

    QCOMPARE(described(catalogue.selectedKeys()), QStringList{"Arm EVENT (given text)"});
    QCOMPARE(described(catalogue.keys(UnknownNature)), QStringList());
}

QTEST_GUILESS_MAIN(TestMemoryKeyListModel)
#include "tst_memory_key_list_model.moc"
