// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "proc_text.h"

#include <QTest>

using namespace Velk;

namespace {

const QByteArray stat = "cpu  53323 11592 19075 384740 576 0 285 253 7 0\n"
                        "cpu0 27455 6371 8847 191909 72 0 97 129 3 0\n"
                        "cpu1 25868 5220 10228 192831 504 0 187 124 4 0\n"
                        "intr 567795 0 0 0 16\n"
                        "ctxt 1053761\n"
                        "btime 1795246160\n"
                        "processes 16841\n"
                        "procs_running 3\n"
                        "procs_blocked 0\n"
                        "softirq 632768 0 63298 4\n";

QString text(const QMap<int, ProcText::CpuTimes>& cpus)
{
    QStringList texts;
    for (auto cpu = cpus.begin(); cpu != cpus.end(); ++cpu) {
        texts << QStringLiteral("%1: user %2, system %3, wait %4, idle %5")
                     .arg(cpu.key())
                     .arg(cpu->user)
                     .arg(cpu->system)
                     .arg(cpu->wait)
                     .arg(cpu->idle);
    }
    return texts.join(QLatin1Char('\n'));
}

QString text(const QMap<QString, ProcText::Traffic>& traffic)
{
    QStringList texts;
    for (auto item = traffic.begin(); item != traffic.end(); ++item)
        texts << QStringLiteral("%1: %2 %3").arg(item.key()).arg(item->in).arg(item->out);
    return texts.join(QStringLiteral(", "));
}

QString text(const QVector<ProcText::Mount>& mounts)
{
    QStringList texts;
    for (const ProcText::Mount& mount : mounts)
        texts << QStringLiteral("%1 on %2").arg(mount.device, mount.path);
    return texts.join(QStringLiteral(", "));
}

} // namespace

class TestProcText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void processorsAreReadByNumber();
    void oldKernelsTellLessOfAProcessor();
    void singleCountersAreRead();
    void memorySizesAreInBytes();
    void interfacesAreRead();
    void aCounterMayFollowTheColonWithoutABlank();
    void disksAreReadInBytes();
    void loadIsRead();
    void aBrokenLoadIsNone_data();
    void aBrokenLoadIsNone();
    void uptimeIsRead();
    void mountsAreRead();
    void escapedPathsAreReadAsTheyAre();
    void localDisksAreTakenOnce();
    void whatHidesAMountTakesItsPlace();
    void nonsenseGivesNothing_data();
    void nonsenseGivesNothing();
};

void TestProcText::processorsAreReadByNumber()
{
    QCOMPARE(text(ProcText::cpuTimes(stat)), QStringLiteral("-1: user 64915, system 19613, wait 576, idle 384740\n"
                                                            "0: user 33826, system 9073, wait 72, idle 191909\n"
                                                            "1: user 31088, system 10539, wait 504, idle 192831"));
    QCOMPARE(ProcText::cpuTimes(stat).value(0).total(), 234880ULL);
}

void TestProcText::oldKernelsTellLessOfAProcessor()
{
    QCOMPARE(text(ProcText::cpuTimes("cpu0 1 2 3 4\n")), QStringLiteral("0: user 3, system 3, wait 0, idle 4"));
}

void TestProcText::singleCountersAreRead()
{
    const QMap<QByteArray, quint64> counters = ProcText::counters(stat);

    QCOMPARE(counters.value("processes"), 16841ULL);
    QCOMPARE(counters.value("procs_running"), 3ULL);
    QVERIFY(counters.contains("procs_blocked"));
    QVERIFY(!counters.contains("softirq"));
}

void TestProcText::memorySizesAreInBytes()
{
    const QMap<QByteArray, quint64> sizes = ProcText::memorySizes("MemTotal:       24684092 kB\n"
                                                                  "MemAvailable:   23749704 kB\n"
                                                                  "HugePages_Total:       0\n");

    QCOMPARE(sizes.value("MemTotal"), 24684092ULL * 1024);
    QCOMPARE(sizes.value("MemAvailable"), 23749704ULL * 1024);
    QCOMPARE(sizes.size(), 2);
}

void TestProcText::interfacesAreRead()
{
    const QByteArray netDev = "Inter-|   Receive                                                |  Transmit\n"
                              " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs "
                              "drop fifo colls carrier "
                              "compressed\n"
                              "    lo: 61242166  419698    0    0    0     0          0         0 61242166  419698    "
                              "0    0    0     0       0 "
                              "         0\n"
                              "  eth0: 77300375    1662    0    0    0     0          0         0    74461     824    "
                              "0    0    0     0       0 "
                              "         0\n";

    QCOMPARE(text(ProcText::interfaceTraffic(netDev)), QStringLiteral("eth0: 77300375 74461, lo: 61242166 61242166"));
}

void TestProcText::aCounterMayFollowTheColonWithoutABlank()
{
    QCOMPARE(text(ProcText::interfaceTraffic("eth0:1 2 3 4 5 6 7 8 9 10\neth0:1:11 2 3 4 5 6 7 8 19 10\n")),
             QStringLiteral("eth0: 1 9, eth0:1: 11 19"));
}

void TestProcText::disksAreReadInBytes()
{
    QCOMPARE(text(ProcText::diskTraffic("   7       0 loop0 0 0 0 0 0 0 0 0 0 0 0\n"
                                        " 254       0 vda 100 0 8 50 200 0 16 60 0 70 110 0 0 0 0 0 0\n")),
             QStringLiteral("loop0: 0 0, vda: 4096 8192"));
}

void TestProcText::loadIsRead()
{
    const std::optional<ProcText::Load> load = ProcText::load("2.04 1.62 0.91 3/140 16836\n");

    QVERIFY(load);
    QCOMPARE(load->average1, 2.04);
    QCOMPARE(load->average5, 1.62);
    QCOMPARE(load->average15, 0.91);
    QCOMPARE(load->threads, 140ULL);
}

void TestProcText::aBrokenLoadIsNone_data()
{
    QTest::addColumn<QByteArray>("loadavg");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << QByteArray("2.04 1.62");
    QTest::newRow("no numbers") << QByteArray("a b c d e");
}

void TestProcText::aBrokenLoadIsNone()
{
    QFETCH(QByteArray, loadavg);

    QVERIFY(!ProcText::load(loadavg));
}

void TestProcText::uptimeIsRead()
{
    QCOMPARE(ProcText::uptime("2354.42 3847.40\n").value_or(-1.0), 2354.42);
    QVERIFY(!ProcText::uptime(""));
    QVERIFY(!ProcText::uptime("soon"));
}

void TestProcText::mountsAreRead()
{
    QCOMPARE(text(ProcText::mounts("proc /proc proc rw,relatime 0 0\n/dev/vda / ext4 rw,relatime 0 0\n\nbroken\n")),
             QStringLiteral("proc on /proc, /dev/vda on /"));
}

void TestProcText::escapedPathsAreReadAsTheyAre()
{
    QCOMPARE(text(ProcText::mounts("/dev/sdb1 /media/my\\040disk\\134new ext4 rw 0 0\n")),
             QStringLiteral("/dev/sdb1 on /media/my disk\\new"));
    // Not an escape: fewer than three octal digits.
    QCOMPARE(text(ProcText::mounts("/dev/sdb1 /media/a\\9 ext4 rw 0 0\n")), QStringLiteral("/dev/sdb1 on /media/a\\9"));
}

void TestProcText::localDisksAreTakenOnce()
{
    const QVector<ProcText::Mount> mounts = ProcText::mounts("overlay / overlay rw 0 0\n"
                                                             "proc /proc proc rw 0 0\n"
                                                             "tmpfs /dev/shm tmpfs rw 0 0\n"
                                                             "/dev/sda1 /home ext4 rw 0 0\n"
                                                             "/dev/sda1 /srv/bind ext4 rw 0 0\n"
                                                             "/dev/loop3 /snap/x squashfs ro 0 0\n"
                                                             "server:/export /net nfs4 rw 0 0\n"
                                                             "//server/share /win cifs rw 0 0\n"
                                                             "pool/data /data zfs rw 0 0\n");

    QCOMPARE(text(ProcText::localDisks(mounts)),
             QStringLiteral("overlay on /, /dev/sda1 on /home, pool/data on /data"));
}

void TestProcText::whatHidesAMountTakesItsPlace()
{
    const QVector<ProcText::Mount> mounts =
        ProcText::mounts("rootfs / rootfs rw 0 0\n/dev/vda / ext4 rw 0 0\n/dev/vdb /home ext4 rw 0 0\n");

    QCOMPARE(text(ProcText::localDisks(mounts)), QStringLiteral("/dev/vda on /, /dev/vdb on /home"));
}

void TestProcText::nonsenseGivesNothing_data()
{
    QTest::addColumn<QByteArray>("nonsense");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("line feeds") << QByteArray("\n\n\n");
    QTest::newRow("words") << QByteArray("cpu cpux cpu0 a b c\nfoo: bar\n");
    QTest::newRow("cut off") << QByteArray("cpu0 27455 63");
    QTest::newRow("zeros") << QByteArray(100, '\0');
    QTest::newRow("beyond ASCII") << QByteArray("\xff\xfe\x80: \xc3 kB\n");
}

void TestProcText::nonsenseGivesNothing()
{
    QFETCH(QByteArray, nonsense);

    QCOMPARE(text(ProcText::cpuTimes(nonsense)), QString());
    QCOMPARE(ProcText::memorySizes(nonsense).size(), 0);
    QCOMPARE(text(ProcText::interfaceTraffic(nonsense)), QString());
    QCOMPARE(text(ProcText::diskTraffic(nonsense)), QString());
    QCOMPARE(ProcText::localDisks(ProcText::mounts(nonsense)).size(), 0);
    QVERIFY(!ProcText::load(nonsense));
    QVERIFY(!ProcText::uptime(nonsense));
}

QTEST_APPLESS_MAIN(TestProcText)
#include "tst_proc_text.moc"
