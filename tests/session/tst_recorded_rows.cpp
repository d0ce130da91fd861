// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/recorded_rows.h>

#include "support/recording_robot.h"

#include <session/sample_stream.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

struct Fixture
{
    // The lines of the file, without the header.
    qint64 rowsOfFile() const { return robot.rows().count('\n'); }

    RecordingRobot robot{{"A", "B"}};
    SampleStream samples{&robot.connection, &robot.model};
    RecordedRows rows{&robot.model, &samples};
};

} // namespace

class TestRecordedRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theCountIsThatOfTheFile_data()
    {
        QTest::addColumn<GatheredData>("batch");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("one sample") << GatheredData{{"A", {{1, 1}}}} << qint64(1);
        QTest::newRow("samples of one time share a row")
            << GatheredData{{"A", {{1, 1}, {2, 2}}}, {"B", {{2, 2}, {3, 3}}}} << qint64(3);
        QTest::newRow("samples of the same times")
            << GatheredData{{"A", {{1, 1}, {3, 3}}}, {"B", {{1, 1}, {3, 3}}}} << qint64(2);
        QTest::newRow("keys that are not displayed have no row")
            << GatheredData{{"A", {{1, 1}}}, {"C", {{2, 2}}}} << qint64(1);
        QTest::newRow("a key without samples") << GatheredData{{"A", {}}} << qint64(0);
        QTest::newRow("an empty batch") << GatheredData{} << qint64(0);
    }

    void theCountIsThatOfTheFile()
    {
        QFETCH(GatheredData, batch);
        QFETCH(qint64, expected);
        Fixture f;
        f.robot.model.startRecording();

        f.robot.deliver(batch);

        QCOMPARE(f.rows.count(), expected);
        QCOMPARE(f.rowsOfFile(), expected);
    }

    void theNewestKnownValuesAreRows()
    {
        Fixture f;
        f.robot.deliver({{"A", {{1, 1}, {2, 2}}}, {"B", {{3, 3}}}});

        f.robot.model.startRecording();

        QCOMPARE(f.rows.count(), 2);
        QCOMPARE(f.rowsOfFile(), 2);
    }

    void nothingIsCountedWithoutARecording()
    {
        Fixture f;
        f.robot.deliver({{"A", {{1, 1}}}});
        QCOMPARE(f.rows.count(), 0);
        f.robot.model.startRecording();
        f.robot.deliver({{"A", {{2, 2}}}});
        f.robot.model.stopRecording();

        f.robot.deliver({{"A", {{3, 3}}}});

        QCOMPARE(f.rows.count(), 2);
    }

    void everyRecordingIsCountedAnew()
    {
        Fixture f;
        f.robot.model.startRecording();
        f.robot.deliver({{"A", {{1, 1}, {2, 2}}}});
        f.robot.model.stopRecording();

        f.robot.model.startRecording();

        QCOMPARE(f.rows.count(), 1);
    }

    void onlyAChangeIsReported()
    {
        Fixture f;
        QSignalSpy changed(&f.rows, &RecordedRows::countChanged);
        f.robot.model.startRecording();
        QCOMPARE(changed.count(), 0);

        f.robot.deliver({{"A", {{1, 1}}}});
        f.robot.deliver({});
        f.robot.deliver({{"A", {{2, 2}}}});

        QCOMPARE(changed.count(), 2);
    }

    void theDisplayedKeysMayBeDeletedFirst()
    {
        FakeConnectionManager robot;
        robot.connected = true;
        auto* const keys = new DisplayedMemoryKeyListModel(&robot);
        SampleStream samples(&robot, keys);
        RecordedRows rows(keys, &samples);

        delete keys;
        robot.memory->deliver({{"A", {{1, 1}}}});

        QCOMPARE(rows.count(), 0);
    }
};

QTEST_GUILESS_MAIN(TestRecordedRows)
#include "tst_recorded_rows.moc"
