// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <connections/simulated/simulated_feed.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

std::shared_ptr<RobotFeed> robot(const SimulatedRobot::Parameters& parameters)
{
    return std::make_shared<SimulatedFeed>(parameters);
}

} // namespace

class TestSimulatedFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aUrlNamesTheRobot_data();
    void aUrlNamesTheRobot();
    void aWrongUrlIsRefusedWithWhatIsPossible_data();
    void aWrongUrlIsRefusedWithWhatIsPossible();
    void allKeysAreThereWhenTheConnectionStands();
    void theRobotRunsWhileTheLinkIsOpen();
    void theRobotGoesOnWhereItStopped();
    void closingWhileTheRobotPreparesIsSafe();
    void itSupportsRealTime();
};

void TestSimulatedFeed::aUrlNamesTheRobot_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("canonical");
    QTest::newRow("plain") << QStringLiteral("sim:") << QStringLiteral("sim:");
    QTest::newRow("seed") << QStringLiteral("sim:?seed=7") << QStringLiteral("sim:?seed=7");
    QTest::newRow("keys") << QStringLiteral("sim:?keys=5000") << QStringLiteral("sim:?keys=5000");
    QTest::newRow("both") << QStringLiteral("sim:?keys=2&seed=18446744073709551615")
                          << QStringLiteral("sim:?seed=18446744073709551615&keys=2");
    QTest::newRow("defaults") << QStringLiteral("sim:?seed=1&keys=0") << QStringLiteral("sim:");
    QTest::newRow("empty query") << QStringLiteral("sim:?") << QStringLiteral("sim:");
}

void TestSimulatedFeed::aUrlNamesTheRobot()
{
    QFETCH(QString, url);
    QFETCH(QString, canonical);
    QString error;

    const auto feed = SimulatedFeed::fromUrl(url, &error);

    QVERIFY2(feed, qPrintable(error));
    QCOMPARE(feed->url(), canonical);
    QCOMPARE(error, QString());
}

void TestSimulatedFeed::aWrongUrlIsRefusedWithWhatIsPossible_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("complaint");
    QTest::addColumn<QString>("advice");
    QTest::newRow("another scheme") << QStringLiteral("host:") << QStringLiteral("“host:”")
                                    << QStringLiteral("sim:[?seed=N][&keys=N]");
    QTest::newRow("nothing") << QStringLiteral("") << QStringLiteral("“”") << QStringLiteral("sim:[?seed=N][&keys=N]");
    QTest::newRow("a path") << QStringLiteral("sim:seed=7") << QStringLiteral("“sim:seed=7”")
                            << QStringLiteral("sim:[?seed=N][&keys=N]");
    QTest::newRow("a host") << QStringLiteral("sim://robot") << QStringLiteral("“sim://robot”")
                            << QStringLiteral("sim:[?seed=N][&keys=N]");
    QTest::newRow("a fragment") << QStringLiteral("sim:#7") << QStringLiteral("“sim:#7”")
                                << QStringLiteral("sim:[?seed=N][&keys=N]");
    QTest::newRow("unknown parameter") << QStringLiteral("sim:?sead=7") << QStringLiteral("“sead”")
                                       << QStringLiteral("seed, keys");
    QTest::newRow("parameter twice") << QStringLiteral("sim:?seed=7&seed=8") << QStringLiteral("“seed” is given twice")
                                     << QStringLiteral("once");
    QTest::newRow("seed without value") << QStringLiteral("sim:?seed") << QStringLiteral("The seed “”")
                                        << QStringLiteral("sim:?seed=7");
    QTest::newRow("seed that is no number")
        << QStringLiteral("sim:?seed=seven") << QStringLiteral("“seven”") << QStringLiteral("sim:?seed=7");
    QTest::newRow("negative seed") << QStringLiteral("sim:?seed=-1") << QStringLiteral("“-1”")
                                   << QStringLiteral("sim:?seed=7");
    QTest::newRow("seed too large") << QStringLiteral("sim:?seed=18446744073709551616")
                                    << QStringLiteral("“18446744073709551616”") << QStringLiteral("whole number");
    QTest::newRow("keys that are no number")
        << QStringLiteral("sim:?keys=many") << QStringLiteral("“many”") << QStringLiteral("from 0 to 10000000");
    QTest::newRow("negative keys") << QStringLiteral("sim:?keys=-1") << QStringLiteral("“-1”")
                                   << QStringLiteral("from 0 to 10000000");
    QTest::newRow("too many keys") << QStringLiteral("sim:?keys=10000001") << QStringLiteral("“10000001”")
                                   << QStringLiteral("from 0 to 10000000");
}

void TestSimulatedFeed::aWrongUrlIsRefusedWithWhatIsPossible()
{
    QFETCH(QString, url);
    QFETCH(QString, complaint);
    QFETCH(QString, advice);
    QString error;

    QVERIFY(!SimulatedFeed::fromUrl(url, &error));

    QVERIFY2(error.contains(complaint), qPrintable(error));
    QVERIFY2(error.contains(advice), qPrintable(error));
    QVERIFY(!SimulatedFeed::fromUrl(url, nullptr));
}

void TestSimulatedFeed::allKeysAreThereWhenTheConnectionStands()
{
    EmbeddedLink link(robot({1, 20000}));
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);

    QCOMPARE(link.memory()->dataNames().filter(QStringLiteral("Extra/")).size(), 20000);
    QCOMPARE(link.memory()->eventNames().size(), 4);
}

void TestSimulatedFeed::theRobotRunsWhileTheLinkIsOpen()
{
    const auto x = QStringLiteral("Inertial/Acceleration/X");
    EmbeddedLink link(robot({}));
    QVERIFY(!link.memory()->newest(x));
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    const double before = link.memory()->newest(x)->timeStamp;
    QTRY_VERIFY_WITH_TIMEOUT(link.memory()->newest(x)->timeStamp > before, timeoutMs);

    link.close();

    QVERIFY(link.feed().waitUntilStopped(std::chrono::milliseconds(timeoutMs)));
    const double atClose = link.memory()->newest(x)->timeStamp;
    EmbeddedLink other(robot({}));
    other.open();
    QTRY_VERIFY_WITH_TIMEOUT(other.isConnected(), timeoutMs);
    QCOMPARE(link.memory()->newest(x)->timeStamp, atClose);
}

void TestSimulatedFeed::theRobotGoesOnWhereItStopped()
{
    const auto charge = QStringLiteral("Battery/Charge");
    EmbeddedLink link(robot({}));
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    const double atStart = link.memory()->newest(charge)->value.toDouble();
    QTRY_VERIFY_WITH_TIMEOUT(link.memory()->newest(charge)->value.toDouble() < atStart, timeoutMs);
    link.close();
    const double atClose = link.memory()->newest(charge)->value.toDouble();

    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);

    QVERIFY(link.memory()->newest(charge)->value.toDouble() <= atClose);
}

void TestSimulatedFeed::closingWhileTheRobotPreparesIsSafe()
{
    EmbeddedLink link(robot({1, 200000}));
    QSignalSpy established(&link, &RobotLink::connectionEstablished);

    link.open();
    link.close();
    link.open();
    link.close();
    QCoreApplication::processEvents();
    QCOMPARE(established.count(), 0);
    link.open();

    QTRY_COMPARE_WITH_TIMEOUT(established.count(), 1, timeoutMs);
    QCOMPARE(link.memory()->dataNames().filter(QStringLiteral("Extra/")).size(), 200000);
}

void TestSimulatedFeed::itSupportsRealTime()
{
    QVERIFY(EmbeddedLink(robot({})).isRealTimeSupported());
}

QTEST_GUILESS_MAIN(TestSimulatedFeed)
#include "tst_simulated_feed.moc"
