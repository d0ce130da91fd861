// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QMetaMethod>
#include <QTest>

using namespace Velk;

class TestDisplayedMemoryKeyListModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // the object
    void startsWithItsDefaults();
    void isAChildOfItsConnectionManagerAndIsDeletedWithIt();
    void callsNothingOfTheRobotOnConstruction();
    void asksTheConnectionManagerForTheConnectionEveryTime();
    void hasTheSignalsAndSlotsOfItsInterface();
    void registersTheBatchTypeUnderItsPublishedName();
    void returnsCopiesOfItsKeys();

    // selection
    void selectsTheDisplayedKeysThatAreNamed();
    void anEmptySelectionEmptiesIt();
    void aSelectedKeyHasTheNatureOfTheDisplayedOne();
    void selectingEmitsNothing();

    // synchronisation with the catalogue
    void rebuildsItsKeysFromTheReadyCatalogue();
    void aRebuildResetsColourFlagAndHistory();
    void aRebuildSendsNothingToTheRobot();
    void aRebuildWithoutKeysIsAnnouncedToo();
    void keysAddedWhileTheCatalogueWasPendingAreDroppedAndStayWatched();
    void keysRemovedWhileTheCatalogueWasPendingComeBackUnwatched();
    void theSelectionIsNotTouchedByARebuild();
    void theUsedCatalogueIsDeleted();
    void aCatalogueThatBecomesReadyAfterADisconnectionIsUsed();
    void aReplacedCatalogueRebuildsFromTheHeldOneAndLivesOn();
    void aReplacedCatalogueChangesNothingWithoutAHeldOne();
    void aReplacedCatalogueChangesNothingRightAfterTheHeldOne();
};

namespace {

/// A model with displayed keys on a connected robot; its catalogue is pending.
struct ConnectedModel
{
    explicit ConnectedModel(const QStringList& names)
        : model(&connection)
    {
        model.addKeys(keySet(names));
        connection.establish();
        logSignals(model, connection);
        connection.takeLog();
    }

    void finishLists(const QStringList& data = {}, const QStringList& events = {}, int fetch = -1)
    {
        connection.memory->finishLists(data, events, {}, fetch);
        QCoreApplication::processEvents();
    }

    QList<MemoryKeyListModel*> catalogues() const { return connection.findChildren<MemoryKeyListModel*>(); }

    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model;
};

} // namespace

void TestDisplayedMemoryKeyListModel::startsWithItsDefaults()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);

    QCOMPARE(model.samplingPeriod(), 1000);
    QCOMPARE(model.minSamplingPeriod(), 200);
    QCOMPARE(model.maxSamplingPeriod(), 9999990);
    QCOMPARE(model.isRecording(), false);
    QVERIFY(!model.takeRecordFile());
    QVERIFY(model.keys().isEmpty());
    QVERIFY(model.displayedKeys().isEmpty());
    QVERIFY(model.selectedKeys().isEmpty());
}

void TestDisplayedMemoryKeyListModel::isAChildOfItsConnectionManagerAndIsDeletedWithIt()
{
    QPointer<DisplayedMemoryKeyListModel> model;
    {
        FakeConnectionManager connection;
        model = new DisplayedMemoryKeyListModel(&connection);
        QCOMPARE(model->parent(), &connection);
        QCOMPARE(model->connectionManager(), &connection);
    }
    QVERIFY(!model);
}

void TestDisplayedMemoryKeyListModel::callsNothingOfTheRobotOnConstruction()
{
    FakeConnectionManager connection;
    connection.connected = true;

    const DisplayedMemoryKeyListModel model(&connection);

    QCOMPARE(connection.takeLog(), QStringList());
    QCOMPARE(connection.findChildren<MemoryKeyListModel*>().size(), 0);
}

void TestDisplayedMemoryKeyListModel::asksTheConnectionManagerForTheConnectionEveryTime()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);

    QVERIFY(!model.isRobotConnected());
    connection.connected = true;
    QVERIFY(model.isRobotConnected());
}

void TestDisplayedMemoryKeyListModel::hasTheSignalsAndSlotsOfItsInterface()
{
    const QMetaObject& meta = DisplayedMemoryKeyListModel::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        methods << QString("%1 %2 [%3]")
                       .arg(method.methodType() == QMetaMethod::Signal ? QString("signal")
                            : method.access() == QMetaMethod::Private  ? QString("private slot")
                                                                       : QString("slot"),
                            QString::fromLatin1(method.methodSignature()),
                            QString::fromLatin1(method.parameterNames().join(',')));
    }
    const QString batch =
        QString::fromLatin1(QMetaObject::normalizedSignature("onDataGathered(QMap<QString,QMap<double,QVariant> >)"));

    QCOMPARE(meta.className(), "Velk::DisplayedMemoryKeyListModel");
    QCOMPARE(
        methods,
        (QStringList{"signal robotConnected(bool) [connected]", "signal keysAdded(QSet<DisplayedMemoryKey>) [key]",
                     "signal keysRemoved(QSet<DisplayedMemoryKey>) [key]",
                     "signal keysUpdated(QSet<DisplayedMemoryKey>) [key]",
                     "signal minSamplingPeriodUpdated(int) [period]", "signal sampligPeriodUpdated(int) [period]",
                     "signal recording(bool) [isRecording]", "signal error(QString,QString) [type,message]",
                     "private slot onConnectionStateChanged() []", "private slot " + batch + " [data]",
                     "private slot gotRealTimeSupported(bool) [supported]", "private slot onKeyListModelReady() []"}));
}

void TestDisplayedMemoryKeyListModel::registersTheBatchTypeUnderItsPublishedName()
{
    FakeConnectionManager connection;
    const DisplayedMemoryKeyListModel first(&connection);
    const DisplayedMemoryKeyListModel second(&connection); // the registration is repeated without harm

    const int type = qMetaTypeId<QMap<QString, QMap<double, QVariant>>>();

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    QCOMPARE(QMetaType::fromName("const QMap<QString, QMap<double, QVariant> >&)").id(), type);
#else
    QCOMPARE(QMetaType::type("const QMap<QString, QMap<double, QVariant> >&)"), type);
#endif
}

void TestDisplayedMemoryKeyListModel::returnsCopiesOfItsKeys()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);
    model.addKeys(keySet({"Arm"}));

    QSet<DisplayedMemoryKey> displayed = model.displayedKeys();
    displayed.clear();
    const QSet<MemoryKey> before = model.keys();
    model.removeKeys(keySet({"Arm"}));

    QCOMPARE(names(before), QStringList{"Arm"});
    QCOMPARE(names(model.displayedKeys()), QStringList());
}

void TestDisplayedMemoryKeyListModel::selectsTheDisplayedKeysThatAreNamed()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);
    model.addKeys(keySet({"Arm", "Leg", "Head"}));
    model.setSelectedKeys(keySet({"Head"}));

    model.setSelectedKeys(keySet({"Arm", "Leg", "arm", "Tail"}));

    QCOMPARE(names(model.selectedKeys()), (QStringList{"Arm", "Leg"}));
}

void TestDisplayedMemoryKeyListModel::anEmptySelectionEmptiesIt()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);
    model.addKeys(keySet({"Arm"}));
    model.setSelectedKeys(keySet({"Arm"}));

    model.setSelectedKeys({});

    QCOMPARE(names(model.selectedKeys()), QStringList());
}

void TestDisplayedMemoryKeyListModel::aSelectedKeyHasTheNatureOfTheDisplayedOne()
{
    FakeConnectionManager connection;
    DisplayedMemoryKeyListModel model(&connection);
    model.addKeys({MemoryKey("Arm", "the arm", EventNature)});

    model.setSelectedKeys({MemoryKey("Arm", "something else", DataNature)});

    QCOMPARE(described(model.selectedKeys()), QStringList{"Arm EVENT (the arm)"});
}

void TestDisplayedMemoryKeyListModel::selectingEmitsNothing()
{
    ConnectedModel connected({"Arm"});

    connected.model.setSelectedKeys(keySet({"Arm", "Tail"}));

    QCOMPARE(connected.connection.takeLog(), QStringList());
}

void TestDisplayedMemoryKeyListModel::rebuildsItsKeysFromTheReadyCatalogue()
{
    ConnectedModel connected({"Arm", "Bumper", "Gone"});

    connected.finishLists({"Arm", "Other"}, {"Bumper"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm Bumper Gone"});
    QCOMPARE(described(connected.model.keys()),
             (QStringList{"Arm DATA (Arm desc)", "Bumper EVENT (Bumper desc)", "Gone UNKNOWN (Gone desc)"}));
}

void TestDisplayedMemoryKeyListModel::aRebuildResetsColourFlagAndHistory()
{
    ConnectedModel connected({"Arm"});
    connected.model.startWatcher(false);
    connected.connection.memory->deliver({{"Arm", {{1.0, 5}}}});
    QCOMPARE(histories(connected.model.displayedKeys()), QStringList{"Arm: 1=5"});

    connected.finishLists({"Arm"});

    const DisplayedMemoryKey arm = displayedKey(connected.model, "Arm");
    QVERIFY(arm.valueHistory().isEmpty());
    QCOMPARE(arm.color(), QColor("chartreuse"));
    QCOMPARE(arm.displayFlag(), true);
    QCOMPARE(arm.watchPeriod(), 100);
}

void TestDisplayedMemoryKeyListModel::aRebuildSendsNothingToTheRobot()
{
    ConnectedModel connected({"Arm"});

    connected.finishLists({}, {"Arm"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm"});
}

void TestDisplayedMemoryKeyListModel::aRebuildWithoutKeysIsAnnouncedToo()
{
    ConnectedModel connected({});

    connected.finishLists({"Arm"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated"});
    QVERIFY(connected.model.keys().isEmpty());
}

void TestDisplayedMemoryKeyListModel::keysAddedWhileTheCatalogueWasPendingAreDroppedAndStayWatched()
{
    ConnectedModel connected({"Arm"});
    connected.model.addKeys(keySet({"Leg"}));
    connected.connection.takeLog();

    connected.finishLists({"Arm", "Leg"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm"});
    QCOMPARE(names(connected.model.keys()), QStringList{"Arm"});
}

void TestDisplayedMemoryKeyListModel::keysRemovedWhileTheCatalogueWasPendingComeBackUnwatched()
{
    ConnectedModel connected({"Arm", "Leg"});
    connected.model.removeKeys(keySet({"Leg"}));
    connected.connection.takeLog();

    connected.finishLists({"Arm", "Leg"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm Leg"});
    QCOMPARE(names(connected.model.keys()), (QStringList{"Arm", "Leg"}));
}

void TestDisplayedMemoryKeyListModel::theSelectionIsNotTouchedByARebuild()
{
    ConnectedModel connected({"Arm"});
    connected.model.addKeys(keySet({"Leg"}));
    connected.model.setSelectedKeys(keySet({"Arm", "Leg"}));

    connected.finishLists({}, {"Arm"});

    QCOMPARE(names(connected.model.keys()), QStringList{"Arm"});
    QCOMPARE(described(connected.model.selectedKeys()), (QStringList{"Arm DATA (Arm desc)", "Leg DATA (Leg desc)"}));
}

void TestDisplayedMemoryKeyListModel::theUsedCatalogueIsDeleted()
{
    ConnectedModel connected({"Arm"});
    QCOMPARE(connected.catalogues().size(), 1);
    int cataloguesAtSignal = 0;
    connect(&connected.model, &DisplayedMemoryKeyListModel::keysUpdated, this,
            [&] { cataloguesAtSignal = connected.catalogues().size(); });

    connected.finishLists();

    QCOMPARE(cataloguesAtSignal, 1);
    QCOMPARE(connected.catalogues().size(), 0);
}

void TestDisplayedMemoryKeyListModel::aCatalogueThatBecomesReadyAfterADisconnectionIsUsed()
{
    ConnectedModel connected({"Arm"});
    connected.connection.lose();
    connected.connection.takeLog();

    connected.finishLists({}, {"Arm"});

    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm"});
    QCOMPARE(described(connected.model.keys()), QStringList{"Arm EVENT (Arm desc)"});
    QCOMPARE(connected.catalogues().size(), 0);
}

void TestDisplayedMemoryKeyListModel::aReplacedCatalogueRebuildsFromTheHeldOneAndLivesOn()
{
    ConnectedModel connected({"Arm"});
    connected.model.addKeys(keySet({"Leg"}));
    connected.connection.establish(); // the second catalogue: Arm and Leg
    QCOMPARE(connected.catalogues().size(), 2);
    MemoryKeyListModel* const replaced = connected.catalogues().first();
    connected.connection.takeLog();

    connected.finishLists({}, {"Arm"}, 0);

    // The held catalogue is pending: its selection has the natures that it was created with.
    QCOMPARE(connected.connection.takeLog(), QStringList{"keysUpdated Arm Leg"});
    QCOMPARE(described(connected.model.keys()), (QStringList{"Arm DATA (Arm desc)", "Leg DATA (Leg desc)"}));
    QCOMPARE(connected.catalogues(), QList<MemoryKeyListModel*>{replaced});
}

void TestDisplayedMemoryKeyListModel::aReplacedCatalogueChangesNothingWithoutAHeldOne()
{
    ConnectedModel connected({"Arm"});
    connected.connection.establish();
    connected.finishLists({"Arm"}, {}, 1);
    connected.model.addKeys(keySet({"Leg"}));
    connected.connection.takeLog();

    connected.finishLists({}, {"Arm"}, 0);

    QCOMPARE(connected.connection.takeLog(), QStringList());
    QCOMPARE(described(connected.model.keys()), (QStringList{"Arm DATA (Arm desc)", "Leg DATA (Leg desc)"}));
    QCOMPARE(connected.catalogues().size(), 1);
}

void TestDisplayedMemoryKeyListModel::aReplacedCatalogueChangesNothingRightAfterTheHeldOne()
{
    ConnectedModel connected({"Arm"});
    connected.connection.establish();

    connected.connection.memory->finishLists({"Arm"}, {}, {}, 1);
    connected.connection.memory->finishLists({}, {"Arm"}, {}, 0);
    QCoreApplication::processEvents();

    QCOMPARE(connected.connection.takeLog().filter("keysUpdated"), QStringList{"keysUpdated Arm"});
    QCOMPARE(described(connected.model.keys()), QStringList{"Arm DATA (Arm desc)"});
}

QTEST_GUILESS_MAIN(TestDisplayedMemoryKeyListModel)
#include "tst_displayed_memory_key_list_model.moc"
