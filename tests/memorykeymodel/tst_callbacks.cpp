// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot.h"
#include "support/file_size_limit.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryFile>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

using namespace Velk;

namespace {

using Model = DisplayedMemoryKeyListModel;

/// A robot, a displayed key set on the heap and a catalogue of the application, with one slot connected to one of their
/// signals.
class Scene
{
public:
    using Slot = std::function<void(Scene&)>;

    Scene(const QString& signal, const Slot& slot)
        : connection(std::make_unique<FakeConnectionManager>())
        , memory(connection->memory)
        , model(new Model(connection.get()))
        , m_slot(slot)
    {
        const auto run = [this] { runSlot(); };
        QObject* const context = connection.get();
        if (signal == "robotConnected")
            QObject::connect(model, &Model::robotConnected, context, run);
        else if (signal == "keysAdded")
            QObject::connect(model, &Model::keysAdded, context, run);
        else if (signal == "keysRemoved")
            QObject::connect(model, &Model::keysRemoved, context, run);
        else if (signal == "keysUpdated")
            QObject::connect(model, &Model::keysUpdated, context, run);
        else if (signal == "minSamplingPeriodUpdated")
            QObject::connect(model, &Model::minSamplingPeriodUpdated, context, run);
        else if (signal == "sampligPeriodUpdated")
            QObject::connect(model, &Model::sampligPeriodUpdated, context, run);
        else if (signal == "recording")
            QObject::connect(model, &Model::recording, context, run);
        else if (signal == "error")
            QObject::connect(model, &Model::error, context, run);
        m_signal = signal;
    }

    /// Makes the model emit each of its signals. Continues with the objects that the slot has not deleted.
    void play()
    {
        step([this] { model->startWatcher(false); }); // error
        step([this] { connection->establish(); });
        newCatalogue();
        step([this] { finishLists({"A", "B"}, {"C"}, {"D"}); });
        step([this] { model->addKeys(keySet({"A", "B", "C"})); });
        step([this] { model->setSelectedKeys(keySet({"A"})); });
        step([this] { memory->answerRealTimeSupported(true); });
        step([this] { model->setSamplingPeriod(50); });
        step([this] { deliver(1); });
        step([this] { model->startRecording(); });
        step([this] { deliver(2); });
        step([this] {
            const FileSizeLimit full(100);
            memory->deliver({{"A", {{3.0, QString(20000, 'x')}, {4.0, 4}, {5.0, 5}}}});
        });
        step([this] { model->startRecording(); });
        step([this] { delete model->takeRecordFile(); });
        step([this] { deliver(6); });
        step([this] { model->startRecording(); });
        step([this] { connection->establish(); });
        step([this] { deliver(7); });
        step([this] { catalogue ? catalogue->addUserKey("Mine") : void(); });
        step([this] { finishLists({"A"}); });
        step([this] { connection->lose(); });
        step([this] { connection->establish(); });
        step([this] { model->startWatcher(true); });
        step([this] { deliver(8); });
        step([this] { model->removeKeys(keySet({"A"})); });
        step([this] { connection->close(); });
        step([this] { model->removeKeys(model->keys()); });
        step([this] { finishLists({"A"}); });
    }

    void deliver(int time)
    {
        memory->deliver({{"A", {{double(time), time}}}, {"B", {{double(time), time}, {time + 0.5, time}}}});
    }

    std::unique_ptr<FakeConnectionManager> connection;
    boost::shared_ptr<FakeMemoryInterface> memory;
    QPointer<Model> model;
    QPointer<MemoryKeyListModel> catalogue; ///< of the application
    int slotRuns = 0;

private:
    void newCatalogue()
    {
        catalogue = new MemoryKeyListModel(connection.get(), keySet({"A"}));
        const auto run = [this] { runSlot(); };
        if (m_signal == "ready")
            QObject::connect(catalogue, &MemoryKeyListModel::ready, connection.get(), run);
        else if (m_signal == "userKeyAdded")
            QObject::connect(catalogue, &MemoryKeyListModel::userKeyAdded, connection.get(), run);
    }

    void finishLists(const QStringList& data, const QStringList& events = {}, const QStringList& microEvents = {})
    {
        if (memory->fetchCount() > 0) // no fetch was started if a slot had removed the memory interface
            memory->finishLists(data, events, microEvents);
        QCoreApplication::processEvents();
    }

    void runSlot()
    {
        if (m_depth == 3 || slotRuns == 50)
            return; // bounds a slot that causes its own signal
        ++slotRuns;
        ++m_depth;
        m_slot(*this);
        --m_depth;
    }

    void step(const std::function<void()>& action)
    {
        if (!model)
            return;
        action();
        if (!model)
            return;
        // After any slot: one element for each name, one connection for the batches, no recording without a
        // robot that was lost, and a memory interface that can deliver.
        QCOMPARE(model->keys().size(), model->displayedKeys().size());
        QVERIFY(memory->dataGatheredReceivers() <= 1);
        QVERIFY(!memory->signalsBlocked());
    }

    Slot m_slot;
    QString m_signal;
    int m_depth = 0;
};

const QStringList signalNames{
    "robotConnected",       "keysAdded", "keysRemoved", "keysUpdated", "minSamplingPeriodUpdated",
    "sampligPeriodUpdated", "recording", "error",       "ready",       "userKeyAdded"};

void spinEventLoop()
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, &QEventLoop::quit);
    loop.exec();
}

const QList<QPair<QString, Scene::Slot>> slotActions{
    {"adds keys",
     [](Scene& scene) {
         scene.model->addKeys(keySet({"New", "A"}));
     }},
    {"removes keys",
     [](Scene& scene) {
         scene.model->removeKeys(keySet({"A", "B"}));
     }},
    {"removes all keys", [](Scene& scene) { scene.model->removeKeys(scene.model->keys()); }},
    {"selects keys", [](Scene& scene) { scene.model->setSelectedKeys(keySet({"B"})); }},
    {"starts the watcher", [](Scene& scene) { scene.model->startWatcher(false); }},
    {"stops the watcher", [](Scene& scene) { scene.model->stopWatcher(); }},
    {"sets the period", [](Scene& scene) { scene.model->setSamplingPeriod(300 + scene.slotRuns); }},
    {"starts recording", [](Scene& scene) { scene.model->startRecording(); }},
    {"stops recording", [](Scene& scene) { scene.model->stopRecording(); }},
    {"stops and starts recording",
     [](Scene& scene) {
         scene.model->stopRecording();
         scene.model->startRecording();
     }},
    {"takes the file", [](Scene& scene) { scene.model->takeRecordFile(); }},
    {"takes and deletes the file", [](Scene& scene) { delete scene.model->takeRecordFile(); }},
    {"deletes the file", [](Scene& scene) { delete scene.model->findChild<QTemporaryFile*>(); }},
    {"deletes the catalogues", [](Scene& scene) { qDeleteAll(scene.connection->findChildren<MemoryKeyListModel*>()); }},
    {"asks everything",
     [](Scene& scene) {
         scene.model->keys();
         scene.model->displayedKeys();
         scene.model->selectedKeys();
         if (scene.catalogue)
             scene.catalogue->keys();
     }},
    {"selects in the catalogue",
     [](Scene& scene) { scene.catalogue ? scene.catalogue->selectKeys(keySet({"C"})) : void(); }},
    {"adds a user key", [](Scene& scene) { scene.catalogue ? scene.catalogue->addUserKey("Typed") : void(); }},
    {"runs an event loop", [](Scene&) { spinEventLoop(); }},
    {"finishes the lists in an event loop",
     [](Scene& scene) {
         scene.connection->establish();
         scene.memory->finishLists({"B"});
         spinEventLoop();
     }},
    {"loses the connection", [](Scene& scene) { scene.connection->lose(); }},
    {"connects again", [](Scene& scene) { scene.connection->establish(); }},
    {"delivers a batch", [](Scene& scene) { scene.deliver(100 + scene.slotRuns); }},
    {"answers for real time",
     [](Scene& scene) { scene.model->isRobotConnected() ? scene.memory->answerRealTimeSupported(false) : false; }},
    {"takes the memory interface away and brings it back",
     [](Scene& scene) {
         scene.connection->memory ? scene.connection->memory.reset() : void(scene.connection->memory = scene.memory);
     }},
    {"deletes the model", [](Scene& scene) { delete scene.model.data(); }},
};

} // namespace

class TestCallbacks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSlotMayCallAnything_data();
    void aSlotMayCallAnything();
    void everySignalIsEmittedInTheScene_data();
    void everySignalIsEmittedInTheScene();
};

void TestCallbacks::aSlotMayCallAnything_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<int>("action");
    for (const QString& signal : signalNames) {
        for (int action = 0; action < slotActions.size(); ++action)
            QTest::newRow(qPrintable(QString("a slot of %1 %2").arg(signal, slotActions[action].first)))
                << signal << action;
    }
}

void TestCallbacks::aSlotMayCallAnything()
{
    QFETCH(QString, signal);
    QFETCH(int, action);
    Scene scene(signal, slotActions[action].second);

    scene.play();

    QVERIFY(scene.slotRuns > 0);
    if (!scene.model)
        return;
    scene.connection->memory = scene.memory;
    scene.model->removeKeys(scene.model->keys());
    scene.model->removeKeys(scene.model->keys()); // a slot of keysRemoved may have added one
}

void TestCallbacks::everySignalIsEmittedInTheScene_data()
{
    QTest::addColumn<QString>("signal");
    for (const QString& signal : signalNames)
        QTest::newRow(qPrintable(signal)) << signal;
}

void TestCallbacks::everySignalIsEmittedInTheScene()
{
    QFETCH(QString, signal);
    Scene scene(signal, [](Scene&) {});

    scene.play();

    QVERIFY(scene.slotRuns > 0);
}

QTEST_GUILESS_MAIN(TestCallbacks)
#include "tst_callbacks.moc"
