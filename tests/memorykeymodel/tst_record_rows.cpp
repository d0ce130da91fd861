// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/recording_robot.h"

#include <QDate>
#include <QTest>

using namespace Velk;

namespace {

struct OwnType
{
    int value;
};

} // namespace

Q_DECLARE_METATYPE(OwnType)

class TestRecordRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstRowIsTheTimeOrigin();
    void samplesOfOneTimeShareARow();
    void rowsOfDifferentBatchesAreNotMerged();
    void rowsAreInAscendingTimeWithinABatch();
    void rowsBeforeTheOriginHaveNegativeTimes();
    void anOriginOfZeroIsFixedAgainByTheNextBatch();
    void everyRecordingHasItsOwnOrigin();
    void keysThatAreNotDisplayedAreIgnored();
    void anEmptyBatchWritesNothing();
    void aKeyAddedDuringARecordingLengthensTheRows();
    void aKeyRemovedDuringARecordingShortensTheRows();
    void timesHaveSixSignificantDigits_data();
    void timesHaveSixSignificantDigits();
    void namesAreQuoted_data();
    void namesAreQuoted();
    void valuesAreWrittenByTheirType_data();
    void valuesAreWrittenByTheirType();
    void textIsUtf8WithoutByteOrderMark();
};

void TestRecordRows::theFirstRowIsTheTimeOrigin()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"A", {{10.0, 1}, {10.5, 2}}}});
    robot.deliver({{"A", {{11.0, 3}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n0.5;2\n1;3\n"));
}

void TestRecordRows::samplesOfOneTimeShareARow()
{
    RecordingRobot robot({"A", "B"});
    robot.model.startRecording();

    robot.deliver({{"A", {{10.0, 1}, {10.5, 2}}}, {"B", {{10.5, "x"}}}});

    QCOMPARE(robot.rows(),
             robot.columns().first() == "A" ? QByteArray("0;1;\n0.5;2;\"x\"\n") : QByteArray("0;;1\n0.5;\"x\";2\n"));
}

void TestRecordRows::rowsOfDifferentBatchesAreNotMerged()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"A", {{10.0, 1}}}});
    robot.deliver({{"A", {{10.0, 2}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n0;2\n"));
}

void TestRecordRows::rowsAreInAscendingTimeWithinABatch()
{
    RecordingRobot robot({"A", "B", "C"});
    robot.model.startRecording();

    robot.deliver({{"A", {{3.0, 1}, {6.0, 1}}}, {"B", {{2.0, 1}, {5.0, 1}}}, {"C", {{1.0, 1}, {4.0, 1}}}});

    QByteArray times;
    const QList<QByteArray> lines = robot.rows().split('\n');
    for (const QByteArray& line : lines)
        times += line.left(1);
    QCOMPARE(times, QByteArray("012345"));
}

void TestRecordRows::rowsBeforeTheOriginHaveNegativeTimes()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"A", {{10.0, 1}}}});
    robot.deliver({{"A", {{9.5, 2}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n-0.5;2\n"));
}

void TestRecordRows::anOriginOfZeroIsFixedAgainByTheNextBatch()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"A", {{0.0, 1}, {1.0, 2}}}});
    robot.deliver({{"A", {{5.0, 3}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n1;2\n0;3\n"));
}

void TestRecordRows::everyRecordingHasItsOwnOrigin()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{10.0, 1}}}});
    robot.model.stopRecording();
    delete robot.model.takeRecordFile();
    robot.deliver({{"A", {{20.0, 2}}}});

    robot.model.startRecording();
    robot.deliver({{"A", {{21.0, 3}}}});

    QCOMPARE(robot.rows(), QByteArray("0;2\n1;3\n"));
}

void TestRecordRows::keysThatAreNotDisplayedAreIgnored()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"B", {{9.0, 1}}}, {"a", {{9.0, 1}}}});
    robot.deliver({{"A", {{10.0, 1}}}, {"B", {{9.0, 1}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n"));
}

void TestRecordRows::anEmptyBatchWritesNothing()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({});
    robot.deliver({{"A", {}}});

    QCOMPARE(robot.rows(), QByteArray());
}

void TestRecordRows::aKeyAddedDuringARecordingLengthensTheRows()
{
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.model.addKeys(keySet({"B"}));
    robot.deliver({{"A", {{10.0, 1}}}});

    QCOMPARE(robot.rows().count(';'), 2);
    QCOMPARE(robot.recorded().left(9), QByteArray("Time;\"A\"\n"));
}

void TestRecordRows::aKeyRemovedDuringARecordingShortensTheRows()
{
    RecordingRobot robot({"A", "B"});
    robot.model.startRecording();

    robot.model.removeKeys(keySet({"A"}));
    robot.deliver({{"B", {{10.0, 1}}}});

    QCOMPARE(robot.rows(), QByteArray("0;1\n"));
}

void TestRecordRows::timesHaveSixSignificantDigits_data()
{
    QTest::addColumn<double>("time");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("zero") << 0.0 << QByteArray("0");
    QTest::newRow("a half") << 0.5 << QByteArray("0.5");
    QTest::newRow("rounded") << 12.345678 << QByteArray("12.3457");
    QTest::newRow("a million and more") << 1234567.0 << QByteArray("1.23457e+06");
    QTest::newRow("small") << 0.00001 << QByteArray("1e-05");
    QTest::newRow("negative") << -0.25 << QByteArray("-0.25");
}

void TestRecordRows::timesHaveSixSignificantDigits()
{
    QFETCH(double, time);
    QFETCH(QByteArray, text);
    RecordingRobot robot({"A"});
    robot.model.startRecording();
    robot.deliver({{"A", {{1024.0, 0}}}}); // a power of two: differences to it are exact

    robot.deliver({{"A", {{1024.0 + time, 1}}}});

    QCOMPARE(robot.rows(), QByteArray("0;0\n" + text + ";1\n"));
}

void TestRecordRows::namesAreQuoted_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("header");
    QTest::newRow("plain") << "A" << QByteArray("Time;\"A\"\n");
    QTest::newRow("a quote is doubled") << "B\"x" << QByteArray("Time;\"B\"\"x\"\n");
    QTest::newRow("quotes only") << "\"\"" << QByteArray("Time;\"\"\"\"\"\"\n");
    QTest::newRow("empty") << "" << QByteArray("Time;\"\"\n");
    QTest::newRow("separator and line feed") << "a;b\nc" << QByteArray("Time;\"a;b\nc\"\n");
}

void TestRecordRows::namesAreQuoted()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, header);
    RecordingRobot robot({name});

    robot.model.startRecording();

    QCOMPARE(robot.recorded(), header);
}

void TestRecordRows::valuesAreWrittenByTheirType_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("cell");
    int object = 0;
    QTest::newRow("invalid") << QVariant() << QByteArray("");
    QTest::newRow("true") << QVariant(true) << QByteArray("true");
    QTest::newRow("false") << QVariant(false) << QByteArray("false");
    QTest::newRow("int") << QVariant(-7) << QByteArray("-7");
    QTest::newRow("uint") << QVariant(7u) << QByteArray("7");
    QTest::newRow("long long") << QVariant(Q_INT64_C(-9007199254740993)) << QByteArray("-9007199254740993");
    QTest::newRow("unsigned long long") << QVariant(Q_UINT64_C(18446744073709551615))
                                        << QByteArray("18446744073709551615");
    QTest::newRow("double") << QVariant(0.1) << QByteArray("0.1");
    QTest::newRow("double, as many digits as it has") << QVariant(1.0 / 3) << QVariant(1.0 / 3).toString().toUtf8();
    QTest::newRow("float") << QVariant::fromValue(0.5f) << QByteArray("0.5");
    QTest::newRow("infinity") << QVariant(qInf()) << QByteArray("inf");
    QTest::newRow("long") << QVariant::fromValue(-7L) << QByteArray("-7");
    QTest::newRow("unsigned long") << QVariant::fromValue(7UL) << QByteArray("7");
    QTest::newRow("short") << QVariant::fromValue<short>(-7) << QByteArray("-7");
    QTest::newRow("unsigned short") << QVariant::fromValue<ushort>(7) << QByteArray("7");
    QTest::newRow("pointer: no text, no quotes") << QVariant::fromValue<void*>(&object) << QByteArray("");
    QTest::newRow("text") << QVariant("x") << QByteArray("\"x\"");
    QTest::newRow("text with a quote") << QVariant("a\"b") << QByteArray("\"a\"\"b\"");
    QTest::newRow("empty text") << QVariant("") << QByteArray("\"\"");
    QTest::newRow("text that looks like a number") << QVariant("7") << QByteArray("\"7\"");
    QTest::newRow("character") << QVariant(QChar('c')) << QByteArray("\"c\"");
    QTest::newRow("quote character") << QVariant(QChar('"')) << QByteArray("\"\"\"\"");
    QTest::newRow("char: quoted though short is not")
        << QVariant::fromValue<char>(7) << "\"" + QVariant::fromValue<char>(7).toString().toUtf8() + "\"";
    QTest::newRow("unsigned char") << QVariant::fromValue<uchar>(7)
                                   << "\"" + QVariant::fromValue<uchar>(7).toString().toUtf8() + "\"";
    QTest::newRow("signed char") << QVariant::fromValue<signed char>(7)
                                 << "\"" + QVariant::fromValue<signed char>(7).toString().toUtf8() + "\"";
    QTest::newRow("bytes") << QVariant(QByteArray("ab")) << QByteArray("\"ab\"");
    QTest::newRow("list of one text") << QVariant(QStringList{"ab"}) << QByteArray("\"ab\"");
    QTest::newRow("list: no text") << QVariant(QVariantList{1, 2}) << QByteArray("\"\"");
    QTest::newRow("map: no text") << QVariant(QVariantMap{{"a", 1}}) << QByteArray("\"\"");
    QTest::newRow("own type: no text") << QVariant::fromValue(OwnType{1}) << QByteArray("\"\"");
    QTest::newRow("date") << QVariant(QDate(2001, 2, 3)) << QByteArray("\"2001-02-03\"");
}

void TestRecordRows::valuesAreWrittenByTheirType()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, cell);
    RecordingRobot robot({"A"});
    robot.model.startRecording();

    robot.deliver({{"A", {{1.0, value}}}});

    QCOMPARE(robot.rows(), QByteArray("0;" + cell + "\n"));
}

void TestRecordRows::textIsUtf8WithoutByteOrderMark()
{
    const QString name = QString::fromUtf8("Gr\xc3\xb6\xc3\x9f\x65 \xf0\x9f\xa4\x96");
    RecordingRobot robot({name});
    robot.model.startRecording();

    robot.deliver({{name, {{1.0, name}}}});

    QCOMPARE(robot.recorded(), QByteArray("Time;\"" + name.toUtf8() + "\"\n0;\"" + name.toUtf8() + "\"\n"));
}

QTEST_GUILESS_MAIN(TestRecordRows)
#include "tst_record_rows.moc"
