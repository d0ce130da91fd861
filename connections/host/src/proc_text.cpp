// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "proc_text.h"

#include <QSet>

#include <algorithm>

namespace Velk {

namespace {

constexpr quint64 bytesPerSector = 512; // in /proc/diskstats, whatever the disk's own sectors are

QList<QByteArray> fieldsOf(const QByteArray& line)
{
    const QByteArray simplified = line.simplified();
    return simplified.isEmpty() ? QList<QByteArray>() : simplified.split(' ');
}

/// The path of a mount, in which blanks, tabs, line feeds and backslashes are written as three octal digits.
QString unescaped(const QByteArray& field)
{
    QByteArray text;
    for (int i = 0; i < field.size(); ++i) {
        bool isOctal = false;
        if (field.at(i) == '\\') {
            const uint code = field.mid(i + 1, 3).toUInt(&isOctal, 8);
            if (isOctal && code < 256 && i + 3 < field.size()) {
                text += static_cast<char>(code);
                i += 3;
                continue;
            }
        }
        text += field.at(i);
    }
    return QString::fromLocal8Bit(text);
}

} // namespace

QMap<int, ProcText::CpuTimes> ProcText::cpuTimes(const QByteArray& stat)
{
    QMap<int, CpuTimes> cpus;
    for (const QByteArray& line : stat.split('\n')) {
        if (!line.startsWith("cpu"))
            continue;
        // cpuN user nice system idle iowait irq softirq steal; what guests used is part of user.
        const QList<QByteArray> fields = fieldsOf(line);
        if (fields.size() < 5)
            continue;
        bool isNumbered = true;
        bool isIdleKnown = false;
        const QByteArray number = fields.first().mid(3);
        const int cpu = number.isEmpty() ? allCpus : number.toInt(&isNumbered);
        fields.at(4).toULongLong(&isIdleKnown);
        if (!isNumbered || !isIdleKnown)
            continue;
        const auto field = [&fields](int index) { return fields.value(index).toULongLong(); };
        cpus.insert(cpu, {field(1) + field(2), field(3) + field(6) + field(7) + field(8), field(5), field(4)});
    }
    return cpus;
}

QMap<QByteArray, quint64> ProcText::counters(const QByteArray& stat)
{
    QMap<QByteArray, quint64> counters;
    for (const QByteArray& line : stat.split('\n')) {
        const QList<QByteArray> fields = fieldsOf(line);
        bool isNumber = false;
        const quint64 number = fields.value(1).toULongLong(&isNumber);
        if (fields.size() == 2 && isNumber)
            counters.insert(fields.first(), number);
    }
    return counters;
}

QMap<QByteArray, quint64> ProcText::memorySizes(const QByteArray& meminfo)
{
    QMap<QByteArray, quint64> sizes;
    for (const QByteArray& line : meminfo.split('\n')) {
        const QList<QByteArray> fields = fieldsOf(line);
        bool isNumber = false;
        const quint64 kibibytes = fields.value(1).toULongLong(&isNumber);
        if (fields.size() == 3 && fields.first().endsWith(':') && isNumber && fields.at(2) == "kB")
            sizes.insert(fields.first().chopped(1), kibibytes * 1024);
    }
    return sizes;
}

QMap<QString, ProcText::Traffic> ProcText::interfaceTraffic(const QByteArray& netDev)
{
    QMap<QString, Traffic> interfaces;
    for (const QByteArray& line : netDev.split('\n')) {
        // The counters may follow the colon without a blank. The names of alias interfaces have a colon of their own.
        const int colon = static_cast<int>(line.lastIndexOf(':'));
        const QList<QByteArray> fields = fieldsOf(line.mid(colon + 1));
        if (colon < 0 || fields.size() < 9)
            continue;
        interfaces.insert(QString::fromLocal8Bit(line.left(colon).trimmed()),
                          {fields.at(0).toULongLong(), fields.at(8).toULongLong()});
    }
    return interfaces;
}

QMap<QString, ProcText::Traffic> ProcText::diskTraffic(const QByteArray& diskstats)
{
    QMap<QString, Traffic> disks;
    for (const QByteArray& line : diskstats.split('\n')) {
        // major minor name reads merged sectors-read ms writes merged sectors-written ...
        const QList<QByteArray> fields = fieldsOf(line);
        if (fields.size() < 10)
            continue;
        disks.insert(QString::fromLocal8Bit(fields.at(2)),
                     {fields.at(5).toULongLong() * bytesPerSector, fields.at(9).toULongLong() * bytesPerSector});
    }
    return disks;
}

std::optional<ProcText::Load> ProcText::load(const QByteArray& loadavg)
{
    const QList<QByteArray> fields = fieldsOf(loadavg);
    if (fields.size() < 4)
        return std::nullopt;
    bool areNumbers[3] = {};
    Load load;
    load.average1 = fields.at(0).toDouble(&areNumbers[0]);
    load.average5 = fields.at(1).toDouble(&areNumbers[1]);
    load.average15 = fields.at(2).toDouble(&areNumbers[2]);
    load.threads = fields.at(3).mid(fields.at(3).indexOf('/') + 1).toULongLong();
    if (!areNumbers[0] || !areNumbers[1] || !areNumbers[2])
        return std::nullopt;
    return load;
}

std::optional<double> ProcText::uptime(const QByteArray& uptime)
{
    bool isNumber = false;
    const double seconds = fieldsOf(uptime).value(0).toDouble(&isNumber);
    return isNumber ? std::optional<double>(seconds) : std::nullopt;
}

QVector<ProcText::Mount> ProcText::mounts(const QByteArray& mounts)
{
    QVector<Mount> found;
    for (const QByteArray& line : mounts.split('\n')) {
        const QList<QByteArray> fields = fieldsOf(line);
        if (fields.size() >= 3)
            found.append({unescaped(fields.at(0)), unescaped(fields.at(1)), QString::fromLatin1(fields.at(2))});
    }
    return found;
}

QVector<ProcText::Mount> ProcText::localDisks(const QVector<Mount>& mounts)
{
    QVector<Mount> disks;
    QSet<QString> devices;
    for (const Mount& mount : mounts) {
        const bool isDisk = mount.device.startsWith(QLatin1String("/dev/")) || mount.type == QLatin1String("zfs");
        // Images that are mounted read-only are always full, and say nothing.
        const bool isImage = mount.type == QLatin1String("squashfs") || mount.type == QLatin1String("iso9660");
        if ((isDisk && !isImage && !devices.contains(mount.device)) || mount.path == QLatin1String("/")) {
            devices.insert(mount.device);
            // What is mounted later on the same place hides what was there.
            disks.erase(std::remove_if(disks.begin(), disks.end(),
                                       [&mount](const Mount& disk) { return disk.path == mount.path; }),
                        disks.end());
            disks.append(mount);
        }
    }
    return disks;
}

} // namespace Velk
