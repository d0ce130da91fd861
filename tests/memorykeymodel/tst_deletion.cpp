// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/calling_memory_interface.h"
#include "support/file_size_limit.h"
#include "support/key_text.h"

#include <QPointer>
#include <QTest>

#include <memory>

using namespace Velk;

namespace {

using Model = DisplayedMemoryKeyListModel;

/// A connected robot with a displayed key set, both on the heap.
struct DeletableRobot
{
    DeletableRobot()
    {
        connection->connected = true;
        model->addKeys(keySet({"A"}));
    }
    ~DeletableRobot() { delete connection.data(); }

    QPointer<FakeConnectionManager> connection = new FakeConnectionManager;
    boost::shared_ptr<FakeMemoryInterface> memory = connection->memory;
    QPointer<Model> model = new Model(connection);
};

} // namespace

/// A slot may delete the model, or its whole connection, at once. What follows in the model then must not use it: an
/// address sanitizer sees that.
class TestDeletion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theModelIsDeletedWhenALossEndsTheRecording();
    void theModelIsDeletedByTheAnswerForRealTime();
    void theModelIsDeletedWhenANewConnectionPutsTheMinimumBack();
    void theModelIsDeletedWhenKeysAreAddedWithoutAConnection();
    void theModelIsDeletedWhenARowCannotBeWritten();
    void theConnectionIsDeletedWhenARowCannotBeWritten();
    void theModelIsDeletedWhenTheHeaderCannotBeWritten();
    void theModelIsDeletedWhenTheRecordingStarts();
    void theModelIsDeletedWhenABatchIsAnnounced();
};

void TestDeletion::theModelIsDeletedWhenALossEndsTheRecording()
{
    DeletableRobot robot;
    robot.model->startRecording();
    connect(robot.model, &Model::recording, this, [&] { delete robot.model.data(); });

    robot.connection->lose();

    QVERIFY(!robot.model);
}

void TestDeletion::theModelIsDeletedByTheAnswerForRealTime()
{
    FakeConnectionManager connection;
    connection.memory =
        boost::make_shared<CallingMemoryInterface>(&connection.log, [](const QString& operation, QObject* receiver) {
            if (operation == "isRealTimeSupported")
                QMetaObject::invokeMethod(receiver, "gotRealTimeSupported", Q_ARG(bool, true));
        });
    const QPointer<Model> model = new Model(&connection);
    connect(model, &Model::minSamplingPeriodUpdated, this, [&] { delete model.data(); });

    connection.establish();

    QVERIFY(!model);
    QCOMPARE(connection.takeLog(), QStringList{"isRealTimeSupported gotRealTimeSupported"});
}

void TestDeletion::theModelIsDeletedWhenANewConnectionPutsTheMinimumBack()
{
    FakeConnectionManager connection;
    const QPointer<Model> model = new Model(&connection);
    connection.establish();
    QMetaObject::invokeMethod(model, "gotRealTimeSupported", Q_ARG(bool, true));
    connection.lose();
    connection.takeLog();
    connect(model, &Model::minSamplingPeriodUpdated, this, [&] { delete model.data(); });

    connection.establish();

    QVERIFY(!model);
    QCOMPARE(connection.takeLog(), QStringList());
}

void TestDeletion::theModelIsDeletedWhenKeysAreAddedWithoutAConnection()
{
    DeletableRobot robot;
    robot.connection->connected = false;
    robot.model->removeKeys(keySet({"A"}));
    connect(robot.model, &Model::error, this, [&] { delete robot.model.data(); });

    robot.model->addKeys(keySet({"B"}));

    QVERIFY(!robot.model);
}

void TestDeletion::theModelIsDeletedWhenARowCannotBeWritten()
{
    DeletableRobot robot;
    robot.model->startRecording();
    connect(robot.model, &Model::error, this, [&] { delete robot.model.data(); });
    const FileSizeLimit full(100);

    robot.memory->deliver({{"A", {{1.0, QString(20000, 'x')}, {2.0, 2}}}});

    QVERIFY(!robot.model);
    QVERIFY(!robot.memory->signalsBlocked());
}

void TestDeletion::theConnectionIsDeletedWhenARowCannotBeWritten()
{
    DeletableRobot robot;
    robot.model->startRecording();
    connect(robot.model, &Model::error, this, [&] { delete robot.connection.data(); });
    const FileSizeLimit full(100);

    robot.memory->deliver({{"A", {{1.0, QString(20000, 'x')}, {2.0, 2}}}});

    QVERIFY(!robot.connection);
    QVERIFY(!robot.memory->signalsBlocked());
}

void TestDeletion::theModelIsDeletedWhenTheHeaderCannotBeWritten()
{
    DeletableRobot robot;
    robot.model->addKeys(keySet({QString(20000, 'x')}));
    connect(robot.model, &Model::error, this, [&] { delete robot.model.data(); });
    const FileSizeLimit full(100);

    robot.model->startRecording();

    QVERIFY(!robot.model);
}

void TestDeletion::theModelIsDeletedWhenTheRecordingStarts()
{
    DeletableRobot robot;
    robot.memory->deliver({{"A", {{1.0, 1}}}});
    connect(robot.model, &Model::recording, this, [&] { delete robot.model.data(); });

    robot.model->startRecording();

    QVERIFY(!robot.model);
}

void TestDeletion::theModelIsDeletedWhenABatchIsAnnounced()
{
    DeletableRobot robot;
    robot.model->startRecording();
    connect(robot.model, &Model::keysUpdated, this, [&] { delete robot.model.data(); });

    robot.memory->deliver({{"A", {{1.0, 1}}}});

    QVERIFY(!robot.model);
}

QTEST_GUILESS_MAIN(TestDeletion)
#include "tst_deletion.moc"
