// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QException>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

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

QTEST_GUILESS_MAIN(TestMemoryKeyListModel)
#include "tst_memory_key_list_model.moc"
