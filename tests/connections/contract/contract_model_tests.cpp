// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_model_tests.h"

#include "contract_session.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <utility>

namespace Velk {

namespace {

const QString unknown = QStringLiteral("Contract/Unknown");

MemoryKey key(const QString& name)
{
    return MemoryKey(name, name, UnknownNature);
}

QString natureOf(const QSet<MemoryKey>& keys, const QString& name)
{
    const auto found = keys.constFind(key(name));
    return found == keys.constEnd() ? QString() : found->natureToString();
}

/// The newest value of a displayed key; invalid while it has none.
QVariant valueOf(const DisplayedMemoryKeyListModel& model, const QString& name)
{
    const QSet<DisplayedMemoryKey> keys = model.displayedKeys();
    const auto found = keys.constFind(DisplayedMemoryKey(key(name)));
    return found == keys.constEnd() || found->valueHistory().isEmpty() ? QVariant() : found->valueHistory().last();
}

/// A robot with a key of each kind, a link to it, and a displayed key set on the link.
struct Scene
{
    explicit Scene(const ContractSubjectFactory& createSubject)
        : subject(createSubject())
        , link(subject->createLink())
        , model(new DisplayedMemoryKeyListModel(link.get()))
    {
        subject->setData(data, 1);
        subject->raiseEvent(anEvent, 0);
        subject->raiseMicroEvent(aMicroEvent, 0);
        QObject::connect(model, &DisplayedMemoryKeyListModel::keysUpdated, model, [this] { ++updates; });
    }

    /// Connects, and waits until the displayed key set has been through the catalogue.
    bool connectAndSynchronise()
    {
        const int before = updates;
        return connectLink(*link) && QTest::qWaitFor([this, before] { return updates > before; }, contractTimeoutMs);
    }

    std::unique_ptr<ContractSubject> subject;
    std::unique_ptr<RobotLink> link;
    DisplayedMemoryKeyListModel* model; // the link's child
    int updates = 0;                    // how often it has emitted keysUpdated()
};

QList<QStringList> rowsOf(QTemporaryFile& recordFile)
{
    QFile file(recordFile.fileName());
    QList<QStringList> rows;
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    while (!file.atEnd())
        rows << QString::fromUtf8(file.readLine()).chopped(1).remove(QLatin1Char('"')).split(QLatin1Char(';'));
    return rows;
}

} // namespace

ContractModelTests::ContractModelTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractModelTests::theCatalogueKnowsTheNatures()
{
    const Scene scene(m_createSubject);
    QVERIFY(connectLink(*scene.link));

    auto* catalogue = new MemoryKeyListModel(scene.link.get(), {key(unknown)});

    CONTRACT_TRY_VERIFY(catalogue->isReady());
    QCOMPARE(natureOf(catalogue->keys(), data), QStringLiteral("DATA"));
    QCOMPARE(natureOf(catalogue->keys(), anEvent), QStringLiteral("EVENT"));
    QCOMPARE(natureOf(catalogue->keys(), aMicroEvent), QStringLiteral("EVENT"));
    QCOMPARE(natureOf(catalogue->selectedKeys(), unknown), QStringLiteral("UNKNOWN"));
}

void ContractModelTests::theCatalogueIsReadyAlsoWhenTheConnectionGoesAwayMeanwhile_data()
{
    QTest::addColumn<bool>("isLost");
    QTest::newRow("closed") << false;
    QTest::newRow("lost") << true;
}

void ContractModelTests::theCatalogueIsReadyAlsoWhenTheConnectionGoesAwayMeanwhile()
{
    QFETCH(bool, isLost);
    const Scene scene(m_createSubject);
    QVERIFY(connectLink(*scene.link));
    auto* catalogue = new MemoryKeyListModel(scene.link.get(), {});

    if (isLost)
        scene.subject->loseConnection();
    else
        scene.link->close();

    CONTRACT_TRY_VERIFY(catalogue->isReady());
    CONTRACT_TRY_VERIFY(!scene.link->isConnected());
}

void ContractModelTests::displayedKeysGetTheirValues()
{
    Scene scene(m_createSubject);
    QVERIFY(scene.connectAndSynchronise());

    scene.model->addKeys({key(data), key(anEvent), key(aMicroEvent), key(unknown)});
    scene.model->setSamplingPeriod(200);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 1);
    scene.subject->setData(data, 2);
    scene.subject->raiseEvent(anEvent, 3);
    scene.subject->raiseMicroEvent(aMicroEvent, 4);

    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 2);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, anEvent).toInt(), 3);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, aMicroEvent).toInt(), 4);
    QVERIFY(!valueOf(*scene.model, unknown).isValid());
    scene.subject->setData(unknown, 5);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, unknown).toInt(), 5);
}

void ContractModelTests::theSamplingLimitIsTheRobots()
{
    Scene scene(m_createSubject);
    QVERIFY(scene.connectAndSynchronise());

    CONTRACT_TRY_COMPARE(scene.model->minSamplingPeriod(), scene.subject->isRealTimeSupported() ? 10 : 200);
}

void ContractModelTests::aNewSamplingPeriodIsInForceAtOnce()
{
    Scene scene(m_createSubject);
    QVERIFY(scene.connectAndSynchronise());
    scene.model->setSamplingPeriod(scene.model->maxSamplingPeriod());
    scene.model->addKeys({key(data)});
    QVERIFY(waitForSomeBatches(*scene.subject));
    QVERIFY(!valueOf(*scene.model, data).isValid());

    scene.model->setSamplingPeriod(200);

    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 1);
}

void ContractModelTests::aRecordingHoldsEverySample()
{
    Scene scene(m_createSubject);
    QVERIFY(scene.connectAndSynchronise());
    scene.model->addKeys({key(data), key(anEvent)});
    scene.model->setSamplingPeriod(200);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 1);
    QSignalSpy errors(scene.model, &DisplayedMemoryKeyListModel::error);

    scene.model->startRecording();
    for (int i = 1; i <= 10; ++i)
        scene.subject->raiseEvent(anEvent, QStringLiteral("occurrence %1").arg(i));
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, anEvent).toString(), QStringLiteral("occurrence 10"));
    // The rows of a batch are written after its keysUpdated(): they are there when the next one comes.
    const int updates = scene.updates;
    CONTRACT_TRY_VERIFY(scene.updates > updates);
    scene.model->stopRecording();
    const std::unique_ptr<QTemporaryFile> file(scene.model->takeRecordFile());

    QVERIFY(file);
    const QList<QStringList> rows = rowsOf(*file);
    QVERIFY(rows.size() > 10);
    const auto column = rows.first().indexOf(anEvent);
    QVERIFY(column > 0);
    QStringList occurrences;
    for (const QStringList& row : rows) {
        QCOMPARE(row.size(), rows.first().size());
        if (row.value(column).startsWith(QLatin1String("occurrence")))
            occurrences << row.value(column).mid(11);
    }
    QCOMPARE(occurrences.join(QLatin1Char(' ')), QStringLiteral("1 2 3 4 5 6 7 8 9 10"));
    QCOMPARE(errors.count(), 0);
}

void ContractModelTests::aLossEndsTheRecordingAndKeepsTheKeys()
{
    Scene scene(m_createSubject);
    QVERIFY(scene.connectAndSynchronise());
    scene.model->addKeys({key(data)});
    scene.model->setSamplingPeriod(200);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 1);
    scene.model->startRecording();
    QSignalSpy robotConnected(scene.model, &DisplayedMemoryKeyListModel::robotConnected);

    scene.subject->loseConnection();
    CONTRACT_TRY_COMPARE(robotConnected.count(), 1);
    QCOMPARE(robotConnected.at(0).at(0).toBool(), false);
    QVERIFY(!scene.model->isRecording());
    QCOMPARE(scene.model->keys().size(), 1);

    scene.subject->restoreConnection();
    CONTRACT_TRY_COMPARE(robotConnected.count(), 2);
    QCOMPARE(robotConnected.at(1).at(0).toBool(), true);
    scene.subject->setData(data, 2);
    scene.model->startWatcher(false);
    CONTRACT_TRY_COMPARE(valueOf(*scene.model, data).toInt(), 2);
}

} // namespace Velk
