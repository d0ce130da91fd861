// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/model_viewer.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QProcess>
#include <QTest>

using namespace Velk;

namespace {

constexpr int patience = 60000;

QStringList describe(const QSet<MemoryKey>& keys)
{
    QStringList result;
    for (const MemoryKey& key : keys)
        result << key.name() + QLatin1Char(' ') + key.natureToString();
    result.sort();
    return result;
}

} // namespace

// The example producers write the memory, a viewer reads it.
class TestRedisProducers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatAProducerWritesArrives_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        const QString examples = QStringLiteral(EXAMPLES_DIR "/");
        QTest::newRow("Python with a socket")
            << QStringLiteral("python3") << QStringList({examples + QStringLiteral("producer_sockets.py")});
        QTest::newRow("Python with redis-cli")
            << QStringLiteral("python3") << QStringList({examples + QStringLiteral("producer_cli.py")});
        QTest::newRow("C++ with hiredis") << QStringLiteral(PRODUCER_PROGRAM) << QStringList();
    }
    void whatAProducerWritesArrives()
    {
        QFETCH(QString, program);
        QFETCH(QStringList, arguments);
        QString error;
        QVERIFY2(!findProgram(program, program, &error).isEmpty(), qPrintable(error));
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        RedisTestClient(server.port()).command({"SET", "mem:{lab1}:v:Ready", "1"});
        ModelViewer viewer(server.url(QStringLiteral("lab1")));
        viewer.link().open();
        viewer.display({QStringLiteral("Arm/Temperature"), QStringLiteral("Arm/Position"), QStringLiteral("Bumper"),
                        QStringLiteral("Ready")});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Ready")).isValid(), patience);

        QProcess producer;
        producer.setProcessChannelMode(QProcess::MergedChannels);
        producer.start(program, arguments + QStringList({QStringLiteral("127.0.0.1"), QString::number(server.port()),
                                                         QStringLiteral("lab1")}));
        QVERIFY(producer.waitForFinished(patience));
        QCOMPARE(QString::fromUtf8(producer.readAll()), QString());
        QCOMPARE(producer.exitCode(), 0);

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Arm/Temperature")), QVariant(24.5), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("Bumper")), QVariant(QStringLiteral("left")),
                                  patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.values(QStringLiteral("Arm/Position")).size(), 5, patience);
        QCOMPARE(viewer.values(QStringLiteral("Arm/Position")).constLast(), QVariant(QVariantList({4LL, -4LL})));
        QCOMPARE(viewer.disorder(), QString());
        MemoryKeyListModel catalogue(&viewer.link(), {});
        QTRY_VERIFY_WITH_TIMEOUT(catalogue.isReady(), patience);
        QCOMPARE(describe(catalogue.keys()),
                 QStringList({QStringLiteral("Arm/Position DATA"), QStringLiteral("Arm/Temperature DATA"),
                              QStringLiteral("Bumper EVENT")}));
        QCOMPARE(viewer.failures(), QStringList());
    }

    void aProducerWithoutAServerSaysWhy()
    {
        const PortReservation port;
        QProcess producer;
        producer.setProcessChannelMode(QProcess::MergedChannels);
        producer.start(QStringLiteral(PRODUCER_PROGRAM),
                       {QStringLiteral("127.0.0.1"), QString::number(port.port()), QStringLiteral("lab1")});
        QVERIFY(producer.waitForFinished(patience));

        QCOMPARE(producer.exitCode(), 1);
        QCOMPARE(QString::fromUtf8(producer.readAll()), QStringLiteral("Connection refused\n"));
    }
};

QTEST_GUILESS_MAIN(TestRedisProducers)
#include "tst_redis_producers.moc"
