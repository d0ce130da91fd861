// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/host/host_robot.h>

#include "proc_text.h"

#include <connections/embedded/robot_memory.h>

#include <QDir>
#include <QFile>
#include <QStorageInfo>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr int readingsPerSlowReading = 10;

// Hysteresis: the event is raised below 10 % of available memory, and re-armed above 15 %.
constexpr double lowMemoryShare = 0.10;
constexpr double ampleMemoryShare = 0.15;

constexpr uint interfaceIsUpFlag = 0x1; // IFF_UP

QString key(const QString& group, const QString& item, const char* quantity)
{
    return QStringLiteral("Host/%1/%2/%3").arg(group, item, QLatin1String(quantity));
}

double percent(double part, double whole)
{
    return whole > 0.0 ? 100.0 * part / whole : 0.0;
}

/// Invalid at the first reading; 0 after a counter was reset.
QVariant rate(quint64 before, quint64 now, double seconds)
{
    if (seconds <= 0.0)
        return QVariant();
    return now >= before ? static_cast<double>(now - before) / seconds : 0.0;
}

} // namespace

struct HostRobot::Reading
{
    double time = 0.0;
    QMap<int, ProcText::CpuTimes> cpus;
    QMap<int, QVariantList> cpuUse; // load, user, system, wait, from the last two readings that differ
    QMap<QString, ProcText::Traffic> interfaces;
    QMap<QString, ProcText::Traffic> disks;
    QMap<QString, bool> areInterfacesUp;
};

HostRobot::HostRobot(std::shared_ptr<RobotMemory> memory, const QString& root)
    : m_memory(std::move(memory))
    , m_root(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/'))
{}

HostRobot::~HostRobot() = default;

bool HostRobot::isReadable() const
{
    return !contents(QStringLiteral("proc/stat")).isEmpty();
}

void HostRobot::read(double now)
{
    auto reading = std::make_unique<Reading>();
    reading->time = now;
    Values values;
    addProcessors(values, *reading);
    addMemory(values);
    addTraffic(values, *reading);
    addInterfaceStates(values, *reading);
    addProcesses(values);
    publish(values, m_figures);
    if (m_readings++ % readingsPerSlowReading == 0) {
        Values slowValues;
        addDisks(slowValues);
        addTemperatures(slowValues);
        publish(slowValues, m_slowFigures);
    }
    m_previous = std::move(reading);
}

QByteArray HostRobot::contents(const QString& path) const
{
    QFile file(m_root + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList HostRobot::entries(const QString& path) const
{
    return QDir(m_root + path).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

void HostRobot::addProcessors(Values& values, Reading& reading) const
{
    reading.cpus = ProcText::cpuTimes(contents(QStringLiteral("proc/stat")));
    for (auto cpu = reading.cpus.begin(); cpu != reading.cpus.end(); ++cpu) {
        QVariantList use{QVariant(), QVariant(), QVariant(), QVariant()};
        if (m_previous && m_previous->cpus.contains(cpu.key())) {
            const ProcText::CpuTimes before = m_previous->cpus.value(cpu.key());
            const auto share = [total = static_cast<double>(cpu->total()) -
                                        static_cast<double>(before.total())](quint64 earlier, quint64 later) {
                return std::clamp(percent(static_cast<double>(later) - static_cast<double>(earlier), total), 0.0,
                                  100.0);
            };
            if (cpu->total() > before.total()) {
                const double user = share(before.user, cpu->user);
                const double system = share(before.system, cpu->system);
                use = {user + system, user, system, share(before.wait, cpu->wait)};
            } else if (cpu->total() == before.total()) {
                use = m_previous->cpuUse.value(cpu.key());
            }
        }
        reading.cpuUse.insert(cpu.key(), use);
        const QString prefix = cpu.key() == ProcText::allCpus ? QStringLiteral("Host/Cpu/")
                                                              : QStringLiteral("Host/Cpu/%1/").arg(cpu.key());
        values.insert(prefix + QLatin1String("Load"), use.value(0));
        values.insert(prefix + QLatin1String("User"), use.value(1));
        values.insert(prefix + QLatin1String("System"), use.value(2));
        values.insert(prefix + QLatin1String("Wait"), use.value(3));
    }
    const std::optional<ProcText::Load> load = ProcText::load(contents(QStringLiteral("proc/loadavg")));
    if (load) {
        values.insert(QStringLiteral("Host/Load/1Minute"), load->average1);
        values.insert(QStringLiteral("Host/Load/5Minutes"), load->average5);
        values.insert(QStringLiteral("Host/Load/15Minutes"), load->average15);
        values.insert(QStringLiteral("Host/Processes/Threads"), load->threads);
    }
    const std::optional<double> uptime = ProcText::uptime(contents(QStringLiteral("proc/uptime")));
    if (uptime)
        values.insert(QStringLiteral("Host/Uptime"), *uptime);
}

void HostRobot::addMemory(Values& values)
{
    const QMap<QByteArray, quint64> sizes = ProcText::memorySizes(contents(QStringLiteral("proc/meminfo")));
    const quint64 total = sizes.value("MemTotal");
    if (total == 0)
        return;
    const quint64 available = std::min(sizes.value("MemAvailable", sizes.value("MemFree")), total);
    values.insert(QStringLiteral("Host/Memory/Total"), total);
    values.insert(QStringLiteral("Host/Memory/Free"), sizes.value("MemFree"));
    values.insert(QStringLiteral("Host/Memory/Available"), available);
    values.insert(QStringLiteral("Host/Memory/Used"), total - available);
    values.insert(QStringLiteral("Host/Memory/Use"),
                  percent(static_cast<double>(total - available), static_cast<double>(total)));
    const quint64 swapTotal = sizes.value("SwapTotal");
    values.insert(QStringLiteral("Host/Swap/Total"), swapTotal);
    values.insert(QStringLiteral("Host/Swap/Used"), swapTotal - std::min(sizes.value("SwapFree"), swapTotal));

    m_memory->declareEvent(QStringLiteral("Host/Memory/Low"));
    const double share = static_cast<double>(available) / static_cast<double>(total);
    if (!m_isMemoryLow && share < lowMemoryShare) {
        m_isMemoryLow = true;
        m_memory->raiseEvent(QStringLiteral("Host/Memory/Low"), available);
    } else if (share > ampleMemoryShare) {
        m_isMemoryLow = false;
    }
}

void HostRobot::addTraffic(Values& values, Reading& reading) const
{
    const double seconds = m_previous ? reading.time - m_previous->time : 0.0;
    const auto addRates = [&values, seconds](const QString& group, const QMap<QString, ProcText::Traffic>& traffic,
                                             const QMap<QString, ProcText::Traffic>& before, const char* inKey,
                                             const char* outKey) {
        for (auto item = traffic.begin(); item != traffic.end(); ++item) {
            const bool wasThere = before.contains(item.key());
            const ProcText::Traffic earlier = before.value(item.key());
            values.insert(key(group, item.key(), inKey), wasThere ? rate(earlier.in, item->in, seconds) : QVariant());
            values.insert(key(group, item.key(), outKey),
                          wasThere ? rate(earlier.out, item->out, seconds) : QVariant());
        }
    };

    reading.interfaces = ProcText::interfaceTraffic(contents(QStringLiteral("proc/net/dev")));
    const QString network = QStringLiteral("Network");
    addRates(network, reading.interfaces, m_previous ? m_previous->interfaces : reading.interfaces, "ReceiveRate",
             "SendRate");
    for (auto interface = reading.interfaces.begin(); interface != reading.interfaces.end(); ++interface) {
        values.insert(key(network, interface.key(), "Received"), interface->in);
        values.insert(key(network, interface.key(), "Sent"), interface->out);
    }

    // Whole disks only: partitions and loop devices would count the same bytes again.
    const QMap<QString, ProcText::Traffic> devices = ProcText::diskTraffic(contents(QStringLiteral("proc/diskstats")));
    for (auto device = devices.begin(); device != devices.end(); ++device) {
        const bool isVirtual =
            device.key().startsWith(QLatin1String("loop")) || device.key().startsWith(QLatin1String("ram"));
        if (!isVirtual && QFile::exists(m_root + QLatin1String("sys/block/") + device.key()))
            reading.disks.insert(device.key(), device.value());
    }
    addRates(QStringLiteral("Device"), reading.disks, m_previous ? m_previous->disks : reading.disks, "ReadRate",
             "WriteRate");
}

void HostRobot::addInterfaceStates(Values& values, Reading& reading)
{
    const QString network = QStringLiteral("Network");
    for (const QString& name : entries(QStringLiteral("sys/class/net"))) {
        const QString directory = QStringLiteral("sys/class/net/") + name;
        const QByteArray state = contents(directory + QLatin1String("/operstate")).trimmed();
        if (state.isEmpty())
            continue;
        // Interfaces without a carrier, such as the loopback, have no better state than being switched on.
        const uint flags = contents(directory + QLatin1String("/flags")).trimmed().toUInt(nullptr, 0);
        const bool isUp = state == "up" || (state == "unknown" && (flags & interfaceIsUpFlag) != 0);
        reading.areInterfacesUp.insert(name, isUp);
        values.insert(key(network, name, "Up"), isUp);
        m_memory->declareEvent(key(network, name, "StateChanged"));
    }
    if (!m_previous)
        return;
    const auto report = [this, &network](const QString& name, const QString& state) {
        m_memory->raiseEvent(key(network, name, "StateChanged"), state);
    };
    const QMap<QString, bool>& before = m_previous->areInterfacesUp;
    for (auto now = reading.areInterfacesUp.begin(); now != reading.areInterfacesUp.end(); ++now) {
        // An interface that was not there was down.
        if (before.value(now.key(), false) != now.value())
            report(now.key(), now.value() ? QStringLiteral("up") : QStringLiteral("down"));
    }
    for (auto earlier = before.begin(); earlier != before.end(); ++earlier) {
        if (!reading.areInterfacesUp.contains(earlier.key()))
            report(earlier.key(), QStringLiteral("removed"));
    }
}

void HostRobot::addProcesses(Values& values) const
{
    const QMap<QByteArray, quint64> counters = ProcText::counters(contents(QStringLiteral("proc/stat")));
    const std::pair<const char*, const char*> names[] = {
        {"processes", "Host/Processes/Started"},
        {"procs_running", "Host/Processes/Running"},
        {"procs_blocked", "Host/Processes/Blocked"},
    };
    for (const auto& [counter, name] : names) {
        if (counters.contains(counter))
            values.insert(QLatin1String(name), counters.value(counter));
    }
    const QStringList directories = entries(QStringLiteral("proc"));
    const auto count =
        std::count_if(directories.begin(), directories.end(), [](const QString& name) { return name.at(0).isDigit(); });
    if (count > 0)
        values.insert(QStringLiteral("Host/Processes/Count"), static_cast<int>(count));
}

void HostRobot::addDisks(Values& values) const
{
    const QVector<ProcText::Mount> mounts = ProcText::mounts(contents(QStringLiteral("proc/mounts")));
    for (const ProcText::Mount& disk : ProcText::localDisks(mounts)) {
        const QStorageInfo storage(disk.path);
        if (!storage.isValid() || storage.bytesTotal() <= 0)
            continue;
        const QString name = disk.path == QLatin1String("/") ? QStringLiteral("Root") : disk.path.mid(1);
        const qint64 used = storage.bytesTotal() - storage.bytesFree();
        values.insert(key(QStringLiteral("Disk"), name, "Total"), storage.bytesTotal());
        values.insert(key(QStringLiteral("Disk"), name, "Available"), storage.bytesAvailable());
        values.insert(key(QStringLiteral("Disk"), name, "Use"),
                      percent(static_cast<double>(used), static_cast<double>(used + storage.bytesAvailable())));
    }
}

void HostRobot::addTemperatures(Values& values) const
{
    const auto add = [this, &values](const QString& sensor, const QString& file) {
        bool isNumber = false;
        const double milliDegrees = contents(file).trimmed().toDouble(&isNumber);
        if (!isNumber)
            return;
        // Several sensors of one name get a number, in the order of their directories.
        QString name = QStringLiteral("Host/Temperature/") + sensor;
        for (int number = 2; values.contains(name); ++number)
            name = QStringLiteral("Host/Temperature/%1-%2").arg(sensor).arg(number);
        values.insert(name, milliDegrees / 1000.0);
    };

    const QString thermal = QStringLiteral("sys/class/thermal");
    for (const QString& zone : entries(thermal)) {
        const QString directory = thermal + QLatin1Char('/') + zone;
        const QString type = QString::fromLocal8Bit(contents(directory + QLatin1String("/type")).trimmed());
        if (!type.isEmpty())
            add(type, directory + QLatin1String("/temp"));
    }

    const QString monitors = QStringLiteral("sys/class/hwmon");
    for (const QString& monitor : entries(monitors)) {
        const QString directory = monitors + QLatin1Char('/') + monitor;
        const QString chip = QString::fromLocal8Bit(contents(directory + QLatin1String("/name")).trimmed());
        const QStringList inputs =
            QDir(m_root + directory).entryList({QStringLiteral("temp*_input")}, QDir::Files, QDir::Name);
        for (const QString& input : inputs) {
            const QString stem = input.chopped(6); // "temp1" of "temp1_input"
            const QByteArray label = contents(directory + QLatin1Char('/') + stem + QLatin1String("_label")).trimmed();
            const QString sensor = label.isEmpty() ? stem : QString::fromLocal8Bit(label);
            add((chip.isEmpty() ? monitor : chip) + QLatin1Char('/') + sensor, directory + QLatin1Char('/') + input);
        }
    }
}

void HostRobot::publish(const Values& values, QSet<QString>& published)
{
    QSet<QString> gone = std::exchange(published, {});
    for (auto value = values.begin(); value != values.end(); ++value) {
        if (value->isValid())
            m_memory->setData(value.key(), value.value());
        else
            m_memory->declareData(value.key());
        gone.remove(value.key());
        published.insert(value.key());
    }
    for (const QString& name : std::as_const(gone))
        m_memory->removeKey(name);
}

} // namespace Velk
