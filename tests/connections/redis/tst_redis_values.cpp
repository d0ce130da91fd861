// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/model_viewer.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QFile>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int patience = 60000;

// A data key with a value: once it has arrived, what was watched along with it is being read.
const QString ready = QStringLiteral("Ready");

// The type and the text of a value: "qlonglong 17".
QString text(const QVariant& value)
{
    const QString type = QString::fromLatin1(value.typeName());
    if (value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QVariantMap)
        return type + QLatin1Char(' ') +
               QString::fromUtf8(QJsonDocument::fromVariant(value).toJson(QJsonDocument::Compact));
    return value.isValid() ? type + QLatin1Char(' ') + value.toString() : QStringLiteral("invalid");
}

QStringList texts(const QList<QVariant>& values)
{
    QStringList result;
    for (const QVariant& value : values)
        result << text(value);
    return result;
}

// The memory that the process has used at most, in MiB.
int peakMemoryMib()
{
    QFile status(QStringLiteral("/proc/self/status"));
    status.open(QIODevice::ReadOnly);
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toInt() / 1024;
    }
    return -1;
}

QSet<QString> names(const QSet<MemoryKey>& keys)
{
    QSet<QString> result;
    for (const MemoryKey& key : keys)
        result << key.name();
    return result;
}

} // namespace

// A value of 512 MiB that was held would be in memory at least once. The address sanitizer keeps up to 256 MiB of what
// was freed.
constexpr int farFromAHeldValueMib = 400;

class TestRedisValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aStoredValueArrivesAsItsVariant_data()
    {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QByteArray& stored, const char* expected) {
            QTest::newRow(name) << stored << QString::fromUtf8(expected);
        };
        row("true", "true", "bool true");
        row("false", "false", "bool false");
        row("integer", "17", "qlonglong 17");
        row("negative integer", "-17", "qlonglong -17");
        row("blanks around", " 17\n", "qlonglong 17");
        row("greatest integer", "9223372036854775807", "qlonglong 9223372036854775807");
        row("number", "1.5", "double 1.5");
        row("number with exponent", "1.5e300", "double 1.5e+300");
        row("text", "\"gr\xc3\xbc\xc3\x9f\"", "QString grüß");
        row("text with escapes", "\"a\\n\\u00e9\"", "QString a\né");
        row("empty text", "\"\"", "QString ");
        row("list", "[1,\"a\",null]", "QVariantList [1,\"a\",null]");
        row("map", "{\"x\":1.5,\"y\":[true]}", "QVariantMap {\"x\":1.5,\"y\":[true]}");
        row("no JSON", "ready", "QString ready");
        row("not a number", "NaN", "QString NaN");
        row("half a list", "[1,", "QString [1,");
        row("two values", "1,2", "QString 1,2");
        row("nothing", "", "QString ");
        row("no UTF-8", "\xff\xfe", "QString \xef\xbf\xbd\xef\xbf\xbd");
        row("no UTF-8 within JSON text", "\"a\xff\"", "QString \"a\xef\xbf\xbd\"");
        row("a NUL", QByteArray("a\0b", 3), "QString a");
    }
    void aStoredValueArrivesAsItsVariant()
    {
        QFETCH(QByteArray, stored);
        QFETCH(QString, expected);
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SADD", "mem:{arm1}:data", "A"});
        robot.command({"SET", "mem:{arm1}:v:A", stored});
        ModelViewer viewer(server.url());

        viewer.link().open();
        viewer.display({QStringLiteral("A")});

        QTRY_VERIFY_WITH_TIMEOUT(!viewer.values(QStringLiteral("A")).isEmpty(), patience);
        const QVariant value = viewer.values(QStringLiteral("A")).constFirst();
        if (expected.endsWith(QStringLiteral("QString a")))
            QCOMPARE(value.toString(), QString::fromLatin1("a\0b", 3));
        else
            QCOMPARE(text(value), expected);
    }

    void aNullIsASampleWithoutAValue()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient(server.port()).command({"SET", "mem:{arm1}:v:A", "null"});
        ModelViewer viewer(server.url());

        viewer.link().open();
        viewer.display({QStringLiteral("A")});

        QTRY_VERIFY_WITH_TIMEOUT(!viewer.values(QStringLiteral("A")).isEmpty(), patience);
        QCOMPARE(text(viewer.values(QStringLiteral("A")).constFirst()), QStringLiteral("invalid"));
    }

    void anEntryOfAStreamHasItsProducersTimeOrThatOfItsId()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SET", "mem:{arm1}:v:Ready", "1"});
        robot.command({"SADD", "mem:{arm1}:event", "Bumper"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({ready, QStringLiteral("Bumper")});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(ready).isValid(), patience);

        robot.command({"XADD", "mem:{arm1}:e:Bumper", "1-1", "t", "100.25", "v", "\"left\""});
        robot.command({"XADD", "mem:{arm1}:e:Bumper", "200500-0", "v", "2"});
        robot.command({"XADD", "mem:{arm1}:e:Bumper", "300500-0", "t", "soon", "v", "3"});
        robot.command({"XADD", "mem:{arm1}:e:Bumper", "400500-0", "t", "400.75", "side", "\"right\"", "force", "1.5"});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.values(QStringLiteral("Bumper")).size(), 4, patience);
        QCOMPARE(
            texts(viewer.values(QStringLiteral("Bumper"))),
            QStringList({QStringLiteral("QString left"), QStringLiteral("qlonglong 2"), QStringLiteral("qlonglong 3"),
                         QStringLiteral("QVariantMap {\"force\":1.5,\"side\":\"right\",\"t\":400.75}")}));
        QCOMPARE(viewer.stamps(QStringLiteral("Bumper")), QList<double>({100.25, 200.5, 300.5, 400.75}));
    }

    void timeStampsThatFallBackAreMovedToJustAfterTheOneBefore()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SET", "mem:{arm1}:v:Ready", "1"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({ready, QStringLiteral("A")});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(ready).isValid(), patience);

        robot.pipeline({{"MULTI"},
                        {"SADD", "mem:{arm1}:data", "A"},
                        {"XADD", "mem:{arm1}:v:A", "*", "t", "100", "v", "1"},
                        {"XADD", "mem:{arm1}:v:A", "*", "t", "50", "v", "2"},
                        {"XADD", "mem:{arm1}:v:A", "*", "t", "100", "v", "3"},
                        {"XADD", "mem:{arm1}:v:A", "*", "t", "101", "v", "4"},
                        {"EXEC"}});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.values(QStringLiteral("A")).size(), 4, patience);
        QCOMPARE(viewer.values(QStringLiteral("A")), QList<QVariant>({1LL, 2LL, 3LL, 4LL}));
        QCOMPARE(viewer.disorder(), QString());
        QCOMPARE(viewer.stamps(QStringLiteral("A")).constLast(), 101.0);
    }

    void aValueOf512MibIsReportedAndNeverHeldWhileTheOthersGoOn()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"MSET", "mem:{arm1}:v:Big", "1", "mem:{arm1}:v:Small", "1"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({QStringLiteral("Big"), QStringLiteral("Small")});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Big")), QVariant(1LL), patience);
        const int memoryBefore = peakMemoryMib();

        QCOMPARE(robot.command({"SETRANGE", "mem:{arm1}:v:Big", "536870911", "x"}), QByteArray("536870912"));
        QTRY_VERIFY2_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("512 MiB")),
                                  qPrintable(viewer.failures().join(QLatin1Char('\n'))), patience);
        robot.command({"SET", "mem:{arm1}:v:Small", "2"});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Small")), QVariant(2LL), patience);
        QVERIFY2(viewer.hasFailure(QStringLiteral("Big")), qPrintable(viewer.failures().join(QLatin1Char('\n'))));
        QVERIFY2(peakMemoryMib() - memoryBefore < farFromAHeldValueMib,
                 qPrintable(QString::number(peakMemoryMib() - memoryBefore)));
        QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true")}));

        robot.command({"SET", "mem:{arm1}:v:Big", "3"});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Big")), QVariant(3LL), patience);
    }

    void anEventOf64MibIsCountedAsDroppedAndTheNextOneArrives()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SET", "mem:{arm1}:v:Ready", "1"});
        robot.command({"SADD", "mem:{arm1}:event", "E"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({ready, QStringLiteral("E")});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(ready).isValid(), patience);
        const int memoryBefore = peakMemoryMib();

        // The server makes the value by itself, so that the test does not have to hold it.
        robot.command({"SETRANGE", "big{arm1}", "67108863", "x"});
        QVERIFY(robot
                    .command({"EVAL", "return redis.call('XADD', KEYS[1], '*', 'v', redis.call('GET', KEYS[2]))", "2",
                              "mem:{arm1}:e:E", "big{arm1}"})
                    .contains('-'));
        robot.command({"XADD", "mem:{arm1}:e:E", "*", "v", "2"});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.values(QStringLiteral("E")), QList<QVariant>({2LL}), patience);
        QCOMPARE(viewer.link().losses(QStringLiteral("E")).dropped, 1);
        QVERIFY2(peakMemoryMib() - memoryBefore < farFromAHeldValueMib,
                 qPrintable(QString::number(peakMemoryMib() - memoryBefore)));
    }

    void aKeyOfAnotherTypeIsReportedAndHealsWhileTheOthersGoOn()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SADD", "mem:{arm1}:data", "A", "B"});
        robot.command({"SADD", "mem:{arm1}:event", "E"});
        robot.command({"LPUSH", "mem:{arm1}:v:A", "1"});
        robot.command({"SET", "mem:{arm1}:e:E", "1"});
        robot.command({"SET", "mem:{arm1}:v:B", "1"});
        ModelViewer viewer(server.url());

        viewer.link().open();
        viewer.display({QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("E")});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("B")), QVariant(1LL), patience);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("mem:{arm1}:v:A")), patience);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("mem:{arm1}:e:E")), patience);
        QCOMPARE(viewer.values(QStringLiteral("A")), QList<QVariant>());

        robot.command({"DEL", "mem:{arm1}:v:A", "mem:{arm1}:e:E"});
        robot.command({"SET", "mem:{arm1}:v:A", "2"});
        robot.command({"XADD", "mem:{arm1}:e:E", "*", "v", "3"});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("A")), QVariant(2LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("E")), QVariant(3LL), patience);
    }

    void aKeyThatChangesItsTypeWhileItIsWatchedGoesOn()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"MSET", "mem:{arm1}:v:A", "1", "mem:{arm1}:v:B", "1"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({QStringLiteral("A"), QStringLiteral("B")});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("A")), QVariant(1LL), patience);

        robot.pipeline({{"MULTI"}, {"DEL", "mem:{arm1}:v:A"}, {"XADD", "mem:{arm1}:v:A", "*", "v", "2"}, {"EXEC"}});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("A")), QVariant(2LL), patience);
        robot.pipeline({{"MULTI"}, {"DEL", "mem:{arm1}:v:A"}, {"SET", "mem:{arm1}:v:A", "3"}, {"EXEC"}});
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("A")), QVariant(3LL), patience);
        robot.command({"DEL", "mem:{arm1}:v:A"});
        robot.command({"LPUSH", "mem:{arm1}:v:A", "1"});
        robot.command({"SET", "mem:{arm1}:v:B", "2"});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("B")), QVariant(2LL), patience);
        QTRY_VERIFY_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("mem:{arm1}:v:A")), patience);
        QCOMPARE(viewer.disorder(), QString());
    }

    void aCatalogueWhoseIndexIsNoSetIsReadyWithoutThoseKeys()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SET", "mem:{arm1}:data", "1"});
        robot.command({"SADD", "mem:{arm1}:event", "E"});
        robot.command({"SADD", "mem:{arm1}:microevent", "M"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        QTRY_VERIFY_WITH_TIMEOUT(viewer.link().isConnected(), patience);

        MemoryKeyListModel catalogue(&viewer.link(), {});

        QTRY_VERIFY_WITH_TIMEOUT(catalogue.isReady(), patience);
        QCOMPARE(names(catalogue.keys()), QSet<QString>({QStringLiteral("E"), QStringLiteral("M")}));
        QVERIFY(viewer.hasFailure(QStringLiteral("mem:{arm1}:data")));
    }

    void aListOf120000NamesIsComplete()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        QSet<QString> expected;
        QList<QByteArrayList> commands;
        for (int i = 0; i < 120000; ++i) {
            const QString name = QStringLiteral("Key/%1").arg(i);
            if (i % 10000 == 0)
                commands << QByteArrayList({"SADD", "mem:{arm1}:data"});
            commands.last() << name.toUtf8();
            expected << name;
        }
        QCOMPARE(RedisTestClient(server.port()).pipeline(commands), 12);
        ModelViewer viewer(server.url());
        viewer.link().open();
        QTRY_VERIFY_WITH_TIMEOUT(viewer.link().isConnected(), patience);

        MemoryKeyListModel catalogue(&viewer.link(), {});

        QTRY_VERIFY_WITH_TIMEOUT(catalogue.isReady(), patience);
        QCOMPARE(names(catalogue.keys(DataNature)), expected);
        QCOMPARE(viewer.failures(), QStringList());
    }

    // 300 000 entries are written at once, more than are kept between two deliveries, into a stream that is trimmed
    // while it is read.
    void whatAFastProducerWritesIsDeliveredOrCounted()
    {
        constexpr int count = 300000;
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient robot(server.port());
        robot.command({"SET", "mem:{arm1}:v:Ready", "1"});
        robot.command({"SADD", "mem:{arm1}:event", "E"});
        ModelViewer viewer(server.url());
        viewer.link().open();
        viewer.display({ready, QStringLiteral("E")});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(ready).isValid(), patience);

        QCOMPARE(robot.command({"EVAL",
                                "for i = ARGV[1], ARGV[2] do redis.call('XADD', KEYS[1], '*', 'v', i) end return 'OK'",
                                "1", "mem:{arm1}:e:E", "0", QByteArray::number(count - 1)}),
                 QByteArray("OK"));
        robot.command({"XTRIM", "mem:{arm1}:e:E", "MAXLEN", "5000"});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("E")), QVariant(qlonglong(count - 1)), patience);
        const auto accountedFor = [&viewer] {
            return viewer.values(QStringLiteral("E")).size() + viewer.link().losses(QStringLiteral("E")).dropped +
                   viewer.link().losses(QStringLiteral("E")).trimmed;
        };
        QTRY_COMPARE_WITH_TIMEOUT(accountedFor(), qint64(count), patience);
        QCOMPARE(viewer.disorder(), QString());
        QVERIFY(viewer.link().losses(QStringLiteral("E")).trimmed > 0);
        QCOMPARE(viewer.link().losses().trimmed, viewer.link().losses(QStringLiteral("E")).trimmed);
    }
};

QTEST_GUILESS_MAIN(TestRedisValues)
#include "tst_redis_values.moc"
