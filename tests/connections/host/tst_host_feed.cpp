// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <connections/host/host_feed.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

} // namespace

class TestHostFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFiguresAreThereWhenTheConnectionStands();
    void theFiguresAreReadAgainAndAgain();
    void aComputerThatCannotBeReadIsNotConnectedTo();
    void itHasNoRealTimeSampling();
    void itCanBeClosedAndOpenedAgain();
};

void TestHostFeed::theFiguresAreThereWhenTheConnectionStands()
{
    EmbeddedLink link(std::make_shared<HostFeed>());
    QCOMPARE(link.url(), QStringLiteral("host:"));
    QCOMPARE(link.memory()->dataNames(), QStringList());

    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);

    QVERIFY(link.memory()->newest(QStringLiteral("Host/Memory/Total")));
    QVERIFY(link.memory()->dataNames().contains(QStringLiteral("Host/Cpu/0/Load")));
    QVERIFY(link.memory()->eventNames().contains(QStringLiteral("Host/Memory/Low")));
}

void TestHostFeed::theFiguresAreReadAgainAndAgain()
{
    EmbeddedLink link(std::make_shared<HostFeed>());
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);

    QTRY_VERIFY_WITH_TIMEOUT(link.memory()->newest(QStringLiteral("Host/Cpu/Load")).has_value(), timeoutMs);
    const double load = link.memory()->newest(QStringLiteral("Host/Cpu/Load"))->value.toDouble();
    QVERIFY(load >= 0.0);
    QVERIFY(load <= 100.0);
    const double before = link.memory()->newest(QStringLiteral("Host/Uptime"))->value.toDouble();
    QTRY_VERIFY_WITH_TIMEOUT(link.memory()->newest(QStringLiteral("Host/Uptime"))->value.toDouble() > before,
                             timeoutMs);
}

void TestHostFeed::aComputerThatCannotBeReadIsNotConnectedTo()
{
    const QTemporaryDir root;
    EmbeddedLink link(std::make_shared<HostFeed>(root.path()));
    QSignalSpy failed(&link, &RobotLink::failed);

    link.open();

    QTRY_COMPARE_WITH_TIMEOUT(failed.count(), 1, timeoutMs);
    QVERIFY(failed.at(0).at(1).toString().contains(QStringLiteral("/proc")));
    QVERIFY(!link.isConnected());
    link.close();
    QCOMPARE(link.state(), RobotLink::Disconnected);
}

void TestHostFeed::itHasNoRealTimeSampling()
{
    QVERIFY(!EmbeddedLink(std::make_shared<HostFeed>()).isRealTimeSupported());
}

void TestHostFeed::itCanBeClosedAndOpenedAgain()
{
    EmbeddedLink link(std::make_shared<HostFeed>());
    link.open();
    link.close();
    link.open();

    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    link.close();
    QVERIFY(!link.isConnected());
}

QTEST_GUILESS_MAIN(TestHostFeed)
#include "tst_host_feed.moc"
