// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_HOST_SRC_PROC_TEXT_H
#define CONNECTIONS_HOST_SRC_PROC_TEXT_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

#include <optional>

namespace Velk {

/// Reads the text that Linux gives out below /proc. Lines and fields that are not understood are passed over: kernels
/// add to these files, and containers leave things out.
namespace ProcText {

/// The time that a processor has spent since it was started, by what it did, in one unit.
struct CpuTimes
{
    quint64 user = 0;   ///< programs, of any priority
    quint64 system = 0; ///< kernel and interrupts, and what a hypervisor took away
    quint64 wait = 0;   ///< idle with a disk operation outstanding
    quint64 idle = 0;

    quint64 total() const { return user + system + wait + idle; }
};
/// All processors together.
constexpr int allCpus = -1;
/// The processors of /proc/stat by number, and allCpus.
QMap<int, CpuTimes> cpuTimes(const QByteArray& stat);

/// The single numbers of /proc/stat: "processes", "procs_running" and so on.
QMap<QByteArray, quint64> counters(const QByteArray& stat);

/// The sizes in /proc/meminfo, in bytes.
QMap<QByteArray, quint64> memorySizes(const QByteArray& meminfo);

/// Bytes that went through an interface or a disk in either direction.
struct Traffic
{
    quint64 in = 0;  ///< received, or read
    quint64 out = 0; ///< sent, or written
};
/// The interfaces of /proc/net/dev.
QMap<QString, Traffic> interfaceTraffic(const QByteArray& netDev);
/// The disks and partitions of /proc/diskstats.
QMap<QString, Traffic> diskTraffic(const QByteArray& diskstats);

struct Load
{
    double average1 = 0.0; ///< runnable tasks, over one, five and fifteen minutes
    double average5 = 0.0;
    double average15 = 0.0;
    quint64 threads = 0; ///< that exist
};
std::optional<Load> load(const QByteArray& loadavg);

/// Seconds since the computer was started.
std::optional<double> uptime(const QByteArray& uptime);

struct Mount
{
    QString device;
    QString path;
    QString type;
};
/// /proc/mounts, in its order.
QVector<Mount> mounts(const QByteArray& mounts);
/// The mounts of local disks, each disk once, and "/" whatever it is: those that can be asked for their space without
/// waiting for a server.
QVector<Mount> localDisks(const QVector<Mount>& mounts);

} // namespace ProcText

} // namespace Velk

#endif
