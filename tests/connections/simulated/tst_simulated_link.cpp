#include <connections/embedded/robot_memory.h>
#include <connections/simulated/simulated_link.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

} // namespace

class TestSimulatedLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aUrlNamesTheRobot_data();
    void aUrlNamesTheRobot();
    void aWrongUrlIsToldWithWhatIsPossible_data();
    void aWrongUrlIsToldWithWhatIsPossible();
    void allKeysAreThereWhenTheConnectionStands();
    void theRobotRunsWhileTheLinkIsOpen();
    void theRobotGoesOnWhereItStopped();
    void closingWhileTheRobotPreparesIsSafe();
    void itSupportsRealTime();
};

void TestSimulatedLink::aUrlNamesTheRobot_data()
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

void TestSimulatedLink::aUrlNamesTheRobot()
{
    QFETCH(QString, url);
    QFETCH(QString, canonical);
    QString error;

    const auto link = SimulatedLink::fromUrl(url, &error);

    QVERIFY2(link, qPrintable(error));
    QCOMPARE(link->url(), canonical);
    QCOMPARE(link->state(), RobotLink::Disconnected);
    QCOMPARE(error, QString());
}

void TestSimulatedLink::aWrongUrlIsToldWithWhatIsPossible_data()
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

void TestSimulatedLink::aWrongUrlIsToldWithWhatIsPossible()
{
    QFETCH(QString, url);
    QFETCH(QString, complaint);
    QFETCH(QString, advice);
    QString error;

    QVERIFY(!SimulatedLink::fromUrl(url, &error));

    QVERIFY2(error.contains(complaint), qPrintable(error));
    QVERIFY2(error.contains(advice), qPrintable(error));
    QVERIFY(!SimulatedLink::fromUrl(url, nullptr));
}

void TestSimulatedLink::allKeysAreThereWhenTheConnectionStands()
{
    SimulatedLink link({1, 20000});
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);

    QCOMPARE(link.memory()->dataNames().filter(QStringLiteral("Extra/")).size(), 20000);
    QCOMPARE(link.memory()->eventNames().size(), 4);
}

void TestSimulatedLink::theRobotRunsWhileTheLinkIsOpen()
{
    const auto x = QStringLiteral("Inertial/Acceleration/X");
    SimulatedLink link({});
    QVERIFY(!link.memory()->newest(x));
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    const double before = link.memory()->newest(x)->timeStamp;
    QTRY_VERIFY_WITH_TIMEOUT(link.memory()->newest(x)->timeStamp > before, timeoutMs);

    link.close();

    // The robot's thread has ended with the call: nothing writes any more.
    const double atClose = link.memory()->newest(x)->timeStamp;
    SimulatedLink other({});
    other.open();
    QTRY_VERIFY_WITH_TIMEOUT(other.isConnected(), timeoutMs);
    QCOMPARE(link.memory()->newest(x)->timeStamp, atClose);
}

void TestSimulatedLink::theRobotGoesOnWhereItStopped()
{
    const auto charge = QStringLiteral("Battery/Charge");
    SimulatedLink link({});
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

void TestSimulatedLink::closingWhileTheRobotPreparesIsSafe()
{
    SimulatedLink link({1, 200000});
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

void TestSimulatedLink::itSupportsRealTime()
{
    QVERIFY(SimulatedLink({}).isRealTimeSupported());
}

QTEST_GUILESS_MAIN(TestSimulatedLink)
#include "tst_simulated_link.moc"
