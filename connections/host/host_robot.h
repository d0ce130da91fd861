// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_HOST_HOST_ROBOT_H
#define CONNECTIONS_HOST_HOST_ROBOT_H

#include <connections/host/host_export.h>

#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>

namespace Velk {

class RobotMemory;

/// The computer that this program runs on, as a robot: writes its figures into a robot memory.
///
/// Loads and uses are per cent, sizes and traffic bytes, rates bytes per second, temperatures degrees Celsius, the
/// uptime seconds. A figure that the computer does not have or does not report has no key. A device that goes away,
/// such as an unplugged interface, takes its data keys along. Not thread-safe; the memory is.
class HOST_EXPORT HostRobot
{
public:
    /// Milliseconds between two readings, over which loads and rates are averaged.
    static constexpr int readingPeriodMs = 500;

    /// Reads nothing yet. The memory must not be null. `root` is where proc and sys are found.
    explicit HostRobot(std::shared_ptr<RobotMemory> memory, const QString& root = QStringLiteral("/"));
    ~HostRobot();

    /// Whether the figures can be read below `root`.
    bool isReadable() const;
    /// Reads the figures and writes them; raises the events of what has changed since the reading before. `now`:
    /// seconds on a clock that only goes forward. A load or rate gets its first value at the second reading.
    void read(double now);

private:
    struct Reading;
    using Values = QMap<QString, QVariant>; // an invalid value: a key that has none yet

    QByteArray contents(const QString& path) const;
    QStringList entries(const QString& path) const;

    void addProcessors(Values& values, Reading& reading) const;
    void addMemory(Values& values);
    void addTraffic(Values& values, Reading& reading) const;
    void addInterfaceStates(Values& values, Reading& reading);
    void addProcesses(Values& values) const;
    void addDisks(Values& values) const;
    void addTemperatures(Values& values) const;
    void publish(const Values& values, QSet<QString>& published);

    const std::shared_ptr<RobotMemory> m_memory;
    const QString m_root;
    std::unique_ptr<Reading> m_previous;
    QSet<QString> m_figures;     // the data keys that are written at every reading
    QSet<QString> m_slowFigures; // those that change slowly and cost more
    int m_readings = 0;
    bool m_isMemoryLow = false;
};

} // namespace Velk

#endif
