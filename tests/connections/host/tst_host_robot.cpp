// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <connections/host/host_robot.h>
#include <robotconnection/memory_interface.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <algorithm>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;

/// A computer of files in a temporary directory, and a robot memory that it is read into.
class Computer
{
public:
    Computer()
        : robot(memory, m_root.path())
    {
        write("proc/stat", "cpu 100 0 100 800 0 0 0 0\ncpu0 100 0 100 800 0 0 0 0\nprocesses 5\nprocs_running 1\n");
        write("proc/loadavg", "0.50 0.25 0.10 1/99 500\n");
        write("proc/uptime", "1000.00 900.00\n");
        setMemory(1000, 500);
        setInterface("eth0", "up", "0x1003", 1000, 2000);
    }

    void write(const QString& path, const QByteArray& text)
    {
        const QString absolute = m_root.filePath(path);
        QDir().mkpath(QFileInfo(absolute).path());
        QFile file(absolute);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(absolute));
    }
    void write(const char* path, const QByteArray& text) { write(QLatin1String(path), text); }

    void setMemory(int totalKib, int availableKib)
    {
        write("proc/meminfo", "MemTotal: " + QByteArray::number(totalKib) + " kB\nMemFree: 100 kB\nMemAvailable: " +
                                  QByteArray::number(availableKib) + " kB\nSwapTotal: 50 kB\nSwapFree: 20 kB\n");
    }

    void setInterface(const QByteArray& name, const QByteArray& state, const QByteArray& flags, int received, int sent)
    {
        const QString directory = QStringLiteral("sys/class/net/") + QLatin1String(name);
        write(directory + QLatin1String("/operstate"), state + '\n');
        write(directory + QLatin1String("/flags"), flags + '\n');
        m_netDev[name] = name + ": " + QByteArray::number(received) + " 0 0 0 0 0 0 0 " + QByteArray::number(sent) +
                         " 0 0 0 0 0 0 0\n";
        writeNetDev();
    }
    void removeInterface(const QByteArray& name)
    {
        QDir(m_root.filePath(QStringLiteral("sys/class/net/") + QLatin1String(name))).removeRecursively();
        m_netDev.remove(name);
        writeNetDev();
    }

    QString path() const { return m_root.path(); }
    QString value(const char* name) const
    {
        const std::optional<MemorySample> newest = memory->newest(QLatin1String(name));
        return newest ? newest->value.toString() : QStringLiteral("none");
    }
    bool hasKey(const char* name) const { return memory->dataNames().contains(QLatin1String(name)); }

private:
    void writeNetDev() { write("proc/net/dev", m_netDev.values().join()); }

    QTemporaryDir m_root;
    QMap<QByteArray, QByteArray> m_netDev;

public:
    std::shared_ptr<RobotMemory> memory = std::make_shared<RobotMemory>();
    HostRobot robot;
};

QStringList sorted(QStringList names)
{
    std::sort(names.begin(), names.end());
    return names;
}

/// Every occurrence of an event while it lives.
class EventLog : public QObject
{
public:
    EventLog(const std::shared_ptr<RobotMemory>& memory, const char* name)
        : m_link(memory)
        , m_name(QLatin1String(name))
    {
        m_link.open();
        isConnected = QTest::qWaitFor([this] { return m_link.isConnected(); }, timeoutMs);
        const auto service = m_link.memoryInterface();
        connect(service.get(), &MemoryInterface::dataGathered, this,
                [this](const QMap<QString, QMap<double, QVariant>>& batch) {
                    for (const QVariant& value : batch.value(m_name))
                        occurrences << value.toString();
                });
        service->watchKey(m_name, 100);
        service->startWatcher(20, 0);
    }

    bool isConnected = false;
    QStringList occurrences;

private:
    EmbeddedLink m_link;
    QString m_name;
};

} // namespace

class TestHostRobot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void figuresAreRead_data();
    void figuresAreRead();
    void loadsAndRatesComeWithTheSecondReading();
    void aReadingInWhichNoTimeWasCountedKeepsTheLoads();
    void aCounterThatBeginsAfreshIsNoTraffic();
    void disksAreMeasuredWhereTheyAreMounted();
    void onlyWholeDisksHaveRates();
    void temperaturesAreReadWithTheirNames();
    void whatGoesAwayTakesItsKeysAlong();
    void anInterfaceThatChangesRaisesAnEvent();
    void anInterfaceWithoutCarrierStateIsUpWhenSwitchedOn();
    void lowMemoryRaisesOneEventUntilThereIsAmpleAgain();
    void anEmptyComputerHasNoKeys();
    void thisComputerIsRead();
};

void TestHostRobot::figuresAreRead_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("memory") << QByteArray("Host/Memory/Total") << QStringLiteral("1024000");
    QTest::newRow("available") << QByteArray("Host/Memory/Available") << QStringLiteral("512000");
    QTest::newRow("memory use") << QByteArray("Host/Memory/Use") << QStringLiteral("50");
    QTest::newRow("swap use") << QByteArray("Host/Swap/Used") << QStringLiteral("30720");
    QTest::newRow("load") << QByteArray("Host/Load/1Minute") << QStringLiteral("0.5");
    QTest::newRow("threads") << QByteArray("Host/Processes/Threads") << QStringLiteral("99");
    QTest::newRow("uptime") << QByteArray("Host/Uptime") << QStringLiteral("1000");
    QTest::newRow("started") << QByteArray("Host/Processes/Started") << QStringLiteral("5");
    QTest::newRow("received") << QByteArray("Host/Network/eth0/Received") << QStringLiteral("1000");
    QTest::newRow("sent") << QByteArray("Host/Network/eth0/Sent") << QStringLiteral("2000");
    QTest::newRow("interface") << QByteArray("Host/Network/eth0/Up") << QStringLiteral("true");
}

void TestHostRobot::figuresAreRead()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, value);
    Computer computer;

    computer.robot.read(0.0);

    QCOMPARE(computer.value(name.constData()), value);
}

void TestHostRobot::loadsAndRatesComeWithTheSecondReading()
{
    Computer computer;
    computer.robot.read(10.0);
    QVERIFY(computer.hasKey("Host/Cpu/0/Load"));
    QVERIFY(computer.hasKey("Host/Network/eth0/ReceiveRate"));
    QCOMPARE(computer.value("Host/Cpu/0/Load"), QStringLiteral("none"));
    QCOMPARE(computer.value("Host/Network/eth0/ReceiveRate"), QStringLiteral("none"));

    computer.write("proc/stat", "cpu 130 0 110 855 5 0 0 0\ncpu0 130 0 110 855 5 0 0 0\n");
    computer.setInterface("eth0", "up", "0x1003", 2000, 2500);
    computer.robot.read(12.0);

    QCOMPARE(computer.value("Host/Cpu/0/Load"), QStringLiteral("40"));
    QCOMPARE(computer.value("Host/Cpu/0/User"), QStringLiteral("30"));
    QCOMPARE(computer.value("Host/Cpu/0/System"), QStringLiteral("10"));
    QCOMPARE(computer.value("Host/Cpu/0/Wait"), QStringLiteral("5"));
    QCOMPARE(computer.value("Host/Cpu/Load"), QStringLiteral("40"));
    QCOMPARE(computer.value("Host/Network/eth0/ReceiveRate"), QStringLiteral("500"));
    QCOMPARE(computer.value("Host/Network/eth0/SendRate"), QStringLiteral("250"));
}

void TestHostRobot::aReadingInWhichNoTimeWasCountedKeepsTheLoads()
{
    Computer computer;
    computer.robot.read(10.0);
    computer.write("proc/stat", "cpu 150 0 100 850 0 0 0 0\n");
    computer.robot.read(11.0);

    computer.robot.read(11.001);

    QCOMPARE(computer.value("Host/Cpu/Load"), QStringLiteral("50"));
}

void TestHostRobot::aCounterThatBeginsAfreshIsNoTraffic()
{
    Computer computer;
    computer.robot.read(10.0);
    computer.setInterface("eth0", "up", "0x1003", 5, 5);
    computer.write("proc/stat", "cpu 1 0 1 1 0 0 0 0\n");

    computer.robot.read(11.0);

    QCOMPARE(computer.value("Host/Network/eth0/ReceiveRate"), QStringLiteral("0"));
    QCOMPARE(computer.value("Host/Cpu/Load"), QStringLiteral("none"));
}

void TestHostRobot::disksAreMeasuredWhereTheyAreMounted()
{
    Computer computer;
    computer.write("proc/mounts", "/dev/root / ext4 rw 0 0\n/dev/sdz " + computer.path().toLocal8Bit() +
                                      " ext4 rw 0 0\n/dev/sdy /no/such/place ext4 rw 0 0\n");

    computer.robot.read(0.0);

    QVERIFY(computer.value("Host/Disk/Root/Total").toLongLong() > 0);
    const QByteArray name = "Host/Disk/" + computer.path().mid(1).toLocal8Bit();
    QVERIFY(computer.value(QByteArray(name + "/Total").constData()).toLongLong() > 0);
    QVERIFY(computer.value(QByteArray(name + "/Use").constData()).toDouble() <= 100.0);
    QVERIFY(!computer.hasKey("Host/Disk/no/such/place/Total"));
}

void TestHostRobot::onlyWholeDisksHaveRates()
{
    Computer computer;
    computer.write("sys/block/vda/size", "1\n");
    computer.write("sys/block/loop0/size", "1\n");
    computer.write("proc/diskstats", "7 0 loop0 0 0 0 0 0 0 0 0 0 0 0\n254 0 vda 0 0 10 0 0 0 20 0 0 0 0\n"
                                     "254 1 vda1 0 0 10 0 0 0 20 0 0 0 0\n");
    computer.robot.read(1.0);
    computer.write("proc/diskstats", "254 0 vda 0 0 12 0 0 0 26 0 0 0 0\n254 1 vda1 0 0 12 0 0 0 26 0 0 0 0\n");

    computer.robot.read(3.0);

    QCOMPARE(sorted(computer.memory->dataNames().filter(QStringLiteral("Host/Device"))).join(QLatin1Char(' ')),
             QStringLiteral("Host/Device/vda/ReadRate Host/Device/vda/WriteRate"));
    QCOMPARE(computer.value("Host/Device/vda/ReadRate"), QStringLiteral("512"));
    QCOMPARE(computer.value("Host/Device/vda/WriteRate"), QStringLiteral("1536"));
}

void TestHostRobot::temperaturesAreReadWithTheirNames()
{
    Computer computer;
    computer.write("sys/class/thermal/thermal_zone0/type", "cpu-thermal\n");
    computer.write("sys/class/thermal/thermal_zone0/temp", "45250\n");
    computer.write("sys/class/thermal/thermal_zone1/type", "cpu-thermal\n");
    computer.write("sys/class/thermal/thermal_zone1/temp", "46000\n");
    computer.write("sys/class/thermal/thermal_zone2/type", "broken\n");
    computer.write("sys/class/thermal/cooling_device0/type", "Fan\n");
    computer.write("sys/class/hwmon/hwmon0/name", "coretemp\n");
    computer.write("sys/class/hwmon/hwmon0/temp1_input", "51000\n");
    computer.write("sys/class/hwmon/hwmon0/temp1_label", "Core 0\n");
    computer.write("sys/class/hwmon/hwmon0/temp2_input", "52500\n");

    computer.robot.read(0.0);

    QCOMPARE(sorted(computer.memory->dataNames().filter(QStringLiteral("Temperature"))).join(QStringLiteral(", ")),
             QStringLiteral("Host/Temperature/coretemp/Core 0, Host/Temperature/coretemp/temp2, "
                            "Host/Temperature/cpu-thermal, Host/Temperature/cpu-thermal-2"));
    QCOMPARE(computer.value("Host/Temperature/cpu-thermal"), QStringLiteral("45.25"));
    QCOMPARE(computer.value("Host/Temperature/cpu-thermal-2"), QStringLiteral("46"));
    QCOMPARE(computer.value("Host/Temperature/coretemp/Core 0"), QStringLiteral("51"));
}

void TestHostRobot::whatGoesAwayTakesItsKeysAlong()
{
    Computer computer;
    computer.setInterface("usb0", "up", "0x1003", 1, 1);
    computer.robot.read(0.0);
    QVERIFY(computer.hasKey("Host/Network/usb0/Received"));

    computer.removeInterface("usb0");
    computer.robot.read(1.0);

    QCOMPARE(computer.memory->dataNames().filter(QStringLiteral("usb0")), QStringList());
    QVERIFY(computer.hasKey("Host/Network/eth0/Received"));
}

void TestHostRobot::anInterfaceThatChangesRaisesAnEvent()
{
    Computer computer;
    computer.robot.read(0.0);
    QCOMPARE(sorted(computer.memory->eventNames()).join(QLatin1Char(' ')),
             QStringLiteral("Host/Memory/Low Host/Network/eth0/StateChanged"));
    EventLog eth0(computer.memory, "Host/Network/eth0/StateChanged");
    EventLog usb0(computer.memory, "Host/Network/usb0/StateChanged");
    QVERIFY(eth0.isConnected && usb0.isConnected);

    computer.robot.read(1.0);
    computer.setInterface("eth0", "down", "0x1002", 1000, 2000);
    computer.robot.read(2.0);
    computer.setInterface("eth0", "up", "0x1003", 1000, 2000);
    computer.setInterface("usb0", "up", "0x1003", 1, 1);
    computer.robot.read(3.0);
    computer.removeInterface("usb0");
    computer.robot.read(4.0);

    QTRY_COMPARE_WITH_TIMEOUT(eth0.occurrences, QStringList({QStringLiteral("down"), QStringLiteral("up")}), timeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(usb0.occurrences, QStringList({QStringLiteral("up"), QStringLiteral("removed")}),
                              timeoutMs);
}

void TestHostRobot::anInterfaceWithoutCarrierStateIsUpWhenSwitchedOn()
{
    Computer computer;
    computer.setInterface("lo", "unknown", "0x9", 1, 1);
    computer.setInterface("tun0", "unknown", "0x1090", 1, 1);

    computer.robot.read(0.0);

    QCOMPARE(computer.value("Host/Network/lo/Up"), QStringLiteral("true"));
    QCOMPARE(computer.value("Host/Network/tun0/Up"), QStringLiteral("false"));
}

void TestHostRobot::lowMemoryRaisesOneEventUntilThereIsAmpleAgain()
{
    Computer computer;
    EventLog low(computer.memory, "Host/Memory/Low");
    QVERIFY(low.isConnected);

    double time = 0.0;
    for (const int available : {500, 99, 50, 110, 90, 160, 80}) {
        computer.setMemory(1000, available);
        computer.robot.read(time++);
    }

    QTRY_COMPARE_WITH_TIMEOUT(low.occurrences.size(), 2, timeoutMs);
    QCOMPARE(low.occurrences, QStringList({QString::number(99 * 1024), QString::number(80 * 1024)}));
}

void TestHostRobot::anEmptyComputerHasNoKeys()
{
    const QTemporaryDir root;
    const auto memory = std::make_shared<RobotMemory>();
    HostRobot robot(memory, root.path());

    robot.read(0.0);
    robot.read(1.0);

    QVERIFY(!robot.isReadable());
    QCOMPARE(memory->dataNames(), QStringList());
    QCOMPARE(memory->eventNames(), QStringList());
}

void TestHostRobot::thisComputerIsRead()
{
    const auto memory = std::make_shared<RobotMemory>();
    HostRobot robot(memory);

    robot.read(0.0);

    QVERIFY(robot.isReadable());
    const auto value = [&memory](const char* name) {
        const std::optional<MemorySample> newest = memory->newest(QLatin1String(name));
        return newest ? newest->value.toDouble() : -1.0;
    };
    QVERIFY(memory->dataNames().contains(QStringLiteral("Host/Cpu/Load")));
    QVERIFY(memory->dataNames().filter(QStringLiteral("/Load")).size() > QThread::idealThreadCount());
    QVERIFY(value("Host/Memory/Total") > 1e6);
    QVERIFY(value("Host/Memory/Available") <= value("Host/Memory/Total"));
    QVERIFY(value("Host/Uptime") > 0.0);
    QVERIFY(value("Host/Processes/Count") >= 1.0);
    QVERIFY(value("Host/Disk/Root/Total") > 0.0);
    QVERIFY(value("Host/Network/lo/Received") >= 0.0);
}

QTEST_GUILESS_MAIN(TestHostRobot)
#include "tst_host_robot.moc"
