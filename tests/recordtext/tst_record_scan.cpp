// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_scan.h>

#include <QTest>

using namespace Velk;

class TestRecordScan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAreCountedUpToTheLastLineFeed_data();
    void linesAreCountedUpToTheLastLineFeed();
    void piecesCountLikeTheWhole();
};

void TestRecordScan::linesAreCountedUpToTheLastLineFeed_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<qint64>("lines");
    QTest::addColumn<qint64>("completeBytes");

    QTest::newRow("nothing") << QByteArray() << qint64(0) << qint64(0);
    QTest::newRow("a header alone") << QByteArray("Time;\"A\"\n") << qint64(1) << qint64(9);
    QTest::newRow("half a header") << QByteArray("Time;\"A") << qint64(0) << qint64(0);
    QTest::newRow("two rows") << QByteArray("Time;\"A\"\n0;1\n1;2\n") << qint64(3) << qint64(17);
    QTest::newRow("a row and a half") << QByteArray("Time;\"A\"\n0;1\n1;") << qint64(2) << qint64(13);
    QTest::newRow("a line feed in a text cell") << QByteArray("Time;\"A\"\n0;\"x\ny\"\n") << qint64(2) << qint64(17);
    QTest::newRow("a quote and a line feed in a text cell")
        << QByteArray("Time;\"A\"\n0;\"x\"\"\ny\"\n") << qint64(2) << qint64(19);
    QTest::newRow("cut off inside a text cell, after its line feed")
        << QByteArray("Time;\"A\"\n0;\"x\ny") << qint64(1) << qint64(9);
    QTest::newRow("a quote as the first byte") << QByteArray("\"a\nb\";1\n") << qint64(1) << qint64(8);
}

void TestRecordScan::linesAreCountedUpToTheLastLineFeed()
{
    QFETCH(QByteArray, bytes);
    QFETCH(qint64, lines);
    QFETCH(qint64, completeBytes);

    RecordScan scan;
    scan.add(bytes);

    QCOMPARE(scan.completeLines(), lines);
    QCOMPARE(scan.completeBytes(), completeBytes);
    QCOMPARE(scan.bytes(), qint64(bytes.size()));
}

void TestRecordScan::piecesCountLikeTheWhole()
{
    RecordScan scan;
    scan.add("Time;\"A\"\n0;\"x");
    scan.add("\"");
    scan.add("\"\ny\"");
    scan.add("\n1;");

    QCOMPARE(scan.completeLines(), qint64(2));
    QCOMPARE(scan.completeBytes(), qint64(19));
}

QTEST_APPLESS_MAIN(TestRecordScan)

#include "tst_record_scan.moc"
