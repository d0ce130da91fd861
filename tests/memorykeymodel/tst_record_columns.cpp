// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/hash_seed.h"
#include "support/recording_robot.h"

#include <QCoreApplication>
#include <QRandomGenerator>
#include <QTest>

using namespace Velk;

namespace {

QStringList manyNames(int count)
{
    QStringList result;
    for (int i = 0; i < count; ++i)
        result << QString("Key%1").arg(i);
    return result;
}

/// A batch with one or two samples of about every third key. Each value is the name of its key.
Batch randomBatch(QRandomGenerator& random, const QStringList& keyNames, double time)
{
    Batch batch;
    for (const QString& name : keyNames) {
        if (random.bounded(3) != 0)
            continue;
        batch[name].insert(time, name);
        if (random.bounded(4) == 0)
            batch[name].insert(time + random.bounded(10) / 10.0, name);
    }
    return batch;
}

/// The cells in the column of another name, and the rows that are not as long as the header.
QStringList misplacedCells(const QByteArray& recorded)
{
    QStringList misplaced;
    QList<QByteArray> lines = recorded.split('\n');
    lines.removeLast();
    const QList<QByteArray> header = lines.takeFirst().split(';');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> cells = line.split(';');
        if (cells.size() != header.size())
            misplaced << QString("row of %1 cells").arg(cells.size());
        for (int i = 1; i < qMin(cells.size(), header.size()); ++i) {
            if (!cells[i].isEmpty() && cells[i] != header[i])
                misplaced << QString::fromUtf8(cells[i] + " under " + header[i]);
        }
    }
    return misplaced;
}

} // namespace

/// As long as no key is added or removed, every cell is in the column of its key.
class TestRecordColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCellIsInTheColumnOfItsName_data();
    void everyCellIsInTheColumnOfItsName();
    void columnsStayAfterASecondConnection_data();
    void columnsStayAfterASecondConnection();
    void columnsDoNotMoveWhileTheApplicationHoldsCopies();
};

void TestRecordColumns::everyCellIsInTheColumnOfItsName_data()
{
    QTest::addColumn<int>("keyCount");
    QTest::addColumn<int>("hashSeed");
    for (const int keyCount : {5, 13, 50, 120, 300}) {
        for (int hashSeed = 0; hashSeed < 4; ++hashSeed)
            QTest::newRow(qPrintable(QString("%1 keys, hash seed %2").arg(keyCount).arg(hashSeed)))
                << keyCount << hashSeed;
    }
}

void TestRecordColumns::everyCellIsInTheColumnOfItsName()
{
    QFETCH(int, keyCount);
    QFETCH(int, hashSeed);
    setHashSeed(hashSeed);
    QRandomGenerator random(keyCount * 10 + hashSeed);
    const QStringList keyNames = manyNames(keyCount);
    RecordingRobot robot(keyNames);

    robot.model.startRecording();
    for (int i = 1; i <= 40; ++i)
        robot.deliver(randomBatch(random, keyNames, i));

    QVERIFY(robot.rows().count('\n') >= 40);
    QCOMPARE(misplacedCells(robot.recorded()), QStringList());
}

void TestRecordColumns::columnsStayAfterASecondConnection_data()
{
    everyCellIsInTheColumnOfItsName_data();
}

void TestRecordColumns::columnsStayAfterASecondConnection()
{
    QFETCH(int, keyCount);
    QFETCH(int, hashSeed);
    setHashSeed(hashSeed);
    QRandomGenerator random(keyCount * 10 + hashSeed);
    const QStringList keyNames = manyNames(keyCount);
    RecordingRobot robot(keyNames);

    robot.model.startRecording();
    for (int i = 1; i <= 10; ++i) {
        robot.deliver(randomBatch(random, keyNames, i));
        setHashSeed(i % 4); // gives the sets of the catalogue another order
        robot.connection.establish();
        robot.deliver(randomBatch(random, keyNames, i + 0.5));
        robot.connection.memory->finishLists(keyNames.mid(0, keyCount / 2), keyNames.mid(keyCount / 3));
        QCoreApplication::processEvents();
    }
    robot.deliver(randomBatch(random, keyNames, 11));

    QVERIFY(robot.rows().count('\n') >= 21);
    QCOMPARE(misplacedCells(robot.recorded()), QStringList());
}

void TestRecordColumns::columnsDoNotMoveWhileTheApplicationHoldsCopies()
{
    QRandomGenerator random(7);
    const QStringList keyNames = manyNames(50);
    RecordingRobot robot(keyNames);
    QList<QSet<DisplayedMemoryKey>> held;
    connect(&robot.model, &DisplayedMemoryKeyListModel::keysUpdated, this,
            [&](const QSet<DisplayedMemoryKey>& keys) { held << keys << robot.model.displayedKeys(); });

    robot.model.startRecording();
    for (int i = 1; i <= 40; ++i)
        robot.deliver(randomBatch(random, keyNames, i));

    QCOMPARE(misplacedCells(robot.recorded()), QStringList());
    QCOMPARE(held.size(), 80);
}

QTEST_GUILESS_MAIN(TestRecordColumns)
#include "tst_record_columns.moc"
