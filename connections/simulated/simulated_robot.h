// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_SIMULATED_SIMULATED_ROBOT_H
#define CONNECTIONS_SIMULATED_SIMULATED_ROBOT_H

#include <connections/simulated/simulated_export.h>

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace Velk {

class RobotMemory;

/// A simulated mobile robot with an arm, which writes its values into a robot memory.
///
/// It drives rounds of a figure eight through its hall while the arm works, and charges for one minute in every five.
/// What it writes depends only on the seed and the number of the step: two robots with the same seed write the same, on
/// every machine with the same floating-point arithmetic.
///
/// Units: metres, radians, seconds, amperes, volts, degrees Celsius, per cent. Not thread-safe; the memory is.
class SIMULATED_EXPORT SimulatedRobot
{
public:
    struct Parameters
    {
        quint64 seed = 1;
        int extraKeys = 0; ///< further data keys, "Extra/1" and so on, that swing slowly
    };
    /// The simulated time of one step, in milliseconds.
    static constexpr int stepPeriodMs = 10;

    /// Declares nothing yet. The memory must not be null.
    SimulatedRobot(const Parameters& parameters, std::shared_ptr<RobotMemory> memory);
    ~SimulatedRobot();

    /// Declares all keys, and gives every data key its value of the present step. Returns early when `mayGoOn`
    /// returns false, which is checked after some thousand extra keys; the next call continues there.
    void declareKeys(const std::function<bool()>& mayGoOn = {});
    /// Goes on by one step and writes what changes: the robot's own data keys, a part of the extra keys when
    /// there are many, and the events of this step.
    void step();
    /// How many steps were made.
    qint64 steps() const { return m_step; }

private:
    struct Motion;

    Motion motion(qint64 step) const;
    double jointCommand(int joint, qint64 step) const;
    double jointPosition(int joint, qint64 step) const;
    double batteryCharge(qint64 step) const;
    double obstacleDistance(qint64 step) const;
    double extraValue(int index) const;
    double seconds(qint64 step) const;
    double noise(const QByteArray& channel) const;

    void set(const char* name, const QVariant& value);
    void writeBase(const Motion& present, const Motion& previous);
    void writeArm();
    void writeInertialUnit(const Motion& present, const Motion& previous);
    void writeBattery(const Motion& present);
    void writeRangeSensors(const Motion& present);
    void writeRobot();
    void raiseEvents();

    const Parameters m_parameters;
    const std::shared_ptr<RobotMemory> m_memory;
    QStringList m_extraNames;
    qint64 m_step = 0;
};

} // namespace Velk

#endif
