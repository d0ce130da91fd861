// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/simulated/simulated_robot.h>

#include "simulated_noise.h"

#include <connections/embedded/robot_memory.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace Velk {

namespace {

constexpr double pi = 3.14159265358979323846;

// A working cycle: four rounds through the hall, then the charging station, which stands where the rounds begin.
constexpr double cycleTime = 300.0;
constexpr double drivingTime = 240.0;
constexpr double rampTime = 2.0; // to full speed and back to rest
constexpr int roundsPerCycle = 4;

constexpr double hallLength = 10.0;
constexpr double hallWidth = 6.0;
constexpr double wheelRadius = 0.08;
constexpr double wheelDistance = 0.4;
constexpr double gravity = 9.81;

constexpr double lowCharge = 20.0;
constexpr double obstacleInterval = 8.0;
constexpr double obstacleTime = 2.0;
constexpr double farAway = 8.0; // the range sensors see no further
constexpr qint64 bumperInterval = 1200;
constexpr qint64 bumperPressedSteps = 20;
constexpr double missedCycleShare = 1.0 / 80.0;

constexpr qint64 extraKeysPerStep = 10000;
constexpr int extraKeysPerCheck = 4096;

struct Joint
{
    const char* name;
    double limit;     // radians to either side
    double amplitude; // of the command; beyond the limit for a joint that runs into it
    double period;    // seconds
};
constexpr std::array<Joint, 4> joints{{
    {"Shoulder", 1.5, 1.2, 11.0},
    {"Elbow", 1.3, 1.5, 7.0},
    {"Wrist", 2.0, 1.6, 5.0},
    {"Gripper", 0.8, 0.9, 4.0},
}};

struct RangeSensor
{
    const char* name;
    double direction; // radians, from the robot's front to its left
};
constexpr std::array<RangeSensor, 6> rangeSensors{{
    {"Front", 0.0},
    {"FrontLeft", pi / 4},
    {"Left", pi / 2},
    {"Rear", pi},
    {"Right", -pi / 2},
    {"FrontRight", -pi / 4},
}};

QByteArray jointKey(const Joint& joint, const char* quantity)
{
    return QByteArray("Arm/") + joint.name + '/' + quantity;
}

/// How far it is from a place in the hall to the wall in that direction.
double distanceToWall(double x, double y, double direction)
{
    const double dx = std::cos(direction);
    const double dy = std::sin(direction);
    const double alongX = dx == 0.0 ? farAway : (std::copysign(hallLength / 2, dx) - x) / dx;
    const double alongY = dy == 0.0 ? farAway : (std::copysign(hallWidth / 2, dy) - y) / dy;
    return std::min({alongX, alongY, farAway});
}

} // namespace

struct SimulatedRobot::Motion
{
    bool isDriving;
    double x, y, theta;
    double linear, angular; // velocities
};

SimulatedRobot::SimulatedRobot(const Parameters& parameters, std::shared_ptr<RobotMemory> memory)
    : m_parameters(parameters)
    , m_memory(std::move(memory))
{}

SimulatedRobot::~SimulatedRobot() = default;

void SimulatedRobot::declareKeys(const std::function<bool()>& mayGoOn)
{
    writeRobot();
    for (const char* name : {"Bumper/Front", "Bumper/Rear", "Battery/Low", "Obstacle/Detected"})
        m_memory->declareEvent(QLatin1String(name));
    m_memory->declareMicroEvent(QStringLiteral("Control/CycleMissed"));
    for (const Joint& joint : joints)
        m_memory->declareMicroEvent(QLatin1String(jointKey(joint, "LimitReached")));
    for (int index = m_extraNames.size(); index < m_parameters.extraKeys; ++index) {
        if (index % extraKeysPerCheck == 0 && mayGoOn && !mayGoOn())
            return;
        m_extraNames.append(QStringLiteral("Extra/%1").arg(index + 1));
        m_memory->setData(m_extraNames.last(), extraValue(index));
    }
}

void SimulatedRobot::step()
{
    ++m_step;
    writeRobot();
    const qint64 extraKeys = m_extraNames.size();
    const qint64 count = std::min(extraKeys, extraKeysPerStep);
    for (qint64 i = 0; i < count; ++i) {
        const int index = static_cast<int>((m_step * count + i) % extraKeys);
        m_memory->setData(m_extraNames.at(index), extraValue(index));
    }
    raiseEvents();
}

double SimulatedRobot::seconds(qint64 step) const
{
    // The seed decides where in its working day the robot is first seen: driving, with the charging still ahead.
    const double start = SimulatedNoise(m_parameters.seed, QByteArray("start")).uniform(0) * (drivingTime - 60.0);
    return start + 0.001 * stepPeriodMs * static_cast<double>(step);
}

double SimulatedRobot::noise(const QByteArray& channel) const
{
    return SimulatedNoise(m_parameters.seed, channel).symmetric(m_step);
}

SimulatedRobot::Motion SimulatedRobot::motion(qint64 step) const
{
    const double time = std::fmod(seconds(step), cycleTime);
    const bool isDriving = time < drivingTime;

    // The share of full speed rises, stays and falls; `progress` is its integral.
    double speed = 0.0;
    double progress = drivingTime - rampTime;
    if (time < rampTime) {
        speed = time / rampTime;
        progress = 0.5 * time * speed;
    } else if (time < drivingTime - rampTime) {
        speed = 1.0;
        progress = time - 0.5 * rampTime;
    } else if (isDriving) {
        speed = (drivingTime - time) / rampTime;
        progress -= 0.5 * (drivingTime - time) * speed;
    }

    const double rate = 2.0 * pi * roundsPerCycle / (drivingTime - rampTime);
    const double u = rate * progress;
    const double dx = 3.0 * std::cos(u);
    const double dy = 3.0 * std::cos(2.0 * u);
    const double ddx = -3.0 * std::sin(u);
    const double ddy = -6.0 * std::sin(2.0 * u);
    const double squared = dx * dx + dy * dy;

    Motion motion;
    motion.isDriving = isDriving;
    motion.x = 3.0 * std::sin(u);
    motion.y = 1.5 * std::sin(2.0 * u);
    motion.theta = std::atan2(dy, dx);
    motion.linear = std::sqrt(squared) * rate * speed;
    motion.angular = (dx * ddy - dy * ddx) / squared * rate * speed;
    return motion;
}

double SimulatedRobot::jointCommand(int joint, qint64 step) const
{
    const Joint& j = joints[static_cast<std::size_t>(joint)];
    const double phase = 2.0 * pi * SimulatedNoise(m_parameters.seed, QByteArray(j.name)).uniform(0);
    return j.amplitude * std::sin(2.0 * pi * seconds(step) / j.period + phase);
}

double SimulatedRobot::jointPosition(int joint, qint64 step) const
{
    // The joint follows its command a tenth of a second later, and no further than it can turn.
    const double limit = joints[static_cast<std::size_t>(joint)].limit;
    return std::clamp(jointCommand(joint, step - 100 / stepPeriodMs), -limit, limit);
}

double SimulatedRobot::batteryCharge(qint64 step) const
{
    const double time = std::fmod(seconds(step), cycleTime);
    return time < drivingTime ? 95.0 - 80.0 * time / drivingTime
                              : 15.0 + 80.0 * (time - drivingTime) / (cycleTime - drivingTime);
}

double SimulatedRobot::obstacleDistance(qint64 step) const
{
    const double time = seconds(step);
    const double sinceAppearance = std::fmod(time, obstacleInterval);
    const auto occasion = static_cast<qint64>(time / obstacleInterval);
    const bool isThere = SimulatedNoise(m_parameters.seed, QByteArray("obstacle")).uniform(occasion) < 0.5;
    if (!isThere || sinceAppearance >= obstacleTime)
        return farAway;
    return 2.0 - 1.6 * sinceAppearance / obstacleTime;
}

double SimulatedRobot::extraValue(int index) const
{
    const SimulatedNoise character(m_parameters.seed, static_cast<quint64>(index));
    const double period = 1.0 + 20.0 * character.uniform(0);
    const double phase = 2.0 * pi * character.uniform(1);
    return 10.0 * character.uniform(2) * std::sin(2.0 * pi * seconds(m_step) / period + phase);
}

void SimulatedRobot::set(const char* name, const QVariant& value)
{
    m_memory->setData(QLatin1String(name), value);
}

void SimulatedRobot::writeRobot()
{
    const Motion present = motion(m_step);
    const Motion previous = motion(m_step - 1);
    writeBase(present, previous);
    writeArm();
    writeInertialUnit(present, previous);
    writeBattery(present);
    writeRangeSensors(present);
    set("Control/CycleTime", 0.0006 + 0.0001 * noise("cycle"));
}

void SimulatedRobot::writeBase(const Motion& present, const Motion& previous)
{
    set("Base/Mode", present.isDriving ? QStringLiteral("driving") : QStringLiteral("charging"));
    set("Base/Pose/X", present.x);
    set("Base/Pose/Y", present.y);
    set("Base/Pose/Theta", present.theta);
    set("Base/Velocity/Linear", present.linear);
    set("Base/Velocity/Angular", present.angular);

    const double acceleration = (present.linear - previous.linear) / (0.001 * stepPeriodMs);
    const auto wheel = [this, &present, acceleration](const char* speedKey, const char* currentKey, double side) {
        const double speed = (present.linear + side * present.angular * wheelDistance / 2.0) / wheelRadius;
        set(speedKey, speed + 0.02 * noise(speedKey));
        set(currentKey, 0.3 + 0.25 * std::abs(speed) + 1.5 * acceleration + 0.05 * noise(currentKey));
    };
    wheel("Base/Wheel/Left/Speed", "Base/Wheel/Left/Current", -1.0);
    wheel("Base/Wheel/Right/Speed", "Base/Wheel/Right/Current", 1.0);
}

void SimulatedRobot::writeArm()
{
    for (std::size_t i = 0; i < joints.size(); ++i) {
        const int joint = static_cast<int>(i);
        const QByteArray position = jointKey(joints[i], "Position");
        const QByteArray temperature = jointKey(joints[i], "Temperature");
        set(position, jointPosition(joint, m_step) + 0.002 * noise(position));
        set(jointKey(joints[i], "Command"), jointCommand(joint, m_step));
        set(temperature,
            38.0 + 2.0 * joint + 4.0 * std::sin(2.0 * pi * seconds(m_step) / 90.0 + joint) + 0.05 * noise(temperature));
    }
}

void SimulatedRobot::writeInertialUnit(const Motion& present, const Motion& previous)
{
    const double roll = 0.004 * noise("roll") + 0.01 * present.angular;
    const double pitch = 0.004 * noise("pitch");
    set("Inertial/Orientation/Roll", roll);
    set("Inertial/Orientation/Pitch", pitch);
    set("Inertial/Orientation/Yaw", present.theta);
    set("Inertial/AngularVelocity/X", 0.01 * noise("angular x"));
    set("Inertial/AngularVelocity/Y", 0.01 * noise("angular y"));
    set("Inertial/AngularVelocity/Z", present.angular + 0.01 * noise("angular z"));
    const double forward = (present.linear - previous.linear) / (0.001 * stepPeriodMs);
    set("Inertial/Acceleration/X", forward - gravity * std::sin(pitch) + 0.05 * noise("linear x"));
    set("Inertial/Acceleration/Y", present.linear * present.angular + 0.05 * noise("linear y"));
    set("Inertial/Acceleration/Z", gravity * std::cos(roll) * std::cos(pitch) + 0.05 * noise("linear z"));
}

void SimulatedRobot::writeBattery(const Motion& present)
{
    const double charge = batteryCharge(m_step);
    const double current = present.isDriving ? -(2.0 + 3.0 * present.linear) : 12.0;
    set("Battery/Charge", charge);
    set("Battery/Current", current + 0.1 * noise("battery"));
    set("Battery/Voltage", 22.0 + 0.06 * charge + 0.05 * current);
    set("Battery/Temperature", 30.0 + 0.2 * current + 3.0 * std::sin(2.0 * pi * seconds(m_step) / cycleTime));
    set("Battery/Charging", !present.isDriving);
}

void SimulatedRobot::writeRangeSensors(const Motion& present)
{
    for (const RangeSensor& sensor : rangeSensors) {
        const QByteArray key = QByteArray("Range/") + sensor.name + "/Distance";
        double distance = distanceToWall(present.x, present.y, present.theta + sensor.direction);
        if (sensor.direction == 0.0)
            distance = std::min(distance, obstacleDistance(m_step));
        set(key, std::max(distance + 0.01 * noise(key), 0.0));
    }
}

void SimulatedRobot::raiseEvents()
{
    if (batteryCharge(m_step) < lowCharge && batteryCharge(m_step - 1) >= lowCharge)
        m_memory->raiseEvent(QStringLiteral("Battery/Low"), batteryCharge(m_step));

    const double distance = obstacleDistance(m_step);
    if (distance < farAway && obstacleDistance(m_step - 1) == farAway)
        m_memory->raiseEvent(QStringLiteral("Obstacle/Detected"), distance);

    for (const char* bumper : {"Bumper/Front", "Bumper/Rear"}) {
        const SimulatedNoise occasions(m_parameters.seed, QByteArray(bumper));
        const qint64 pressedAt = static_cast<qint64>(occasions.uniform(m_step / bumperInterval) *
                                                     static_cast<double>(bumperInterval - bumperPressedSteps));
        if (m_step % bumperInterval == pressedAt)
            m_memory->raiseEvent(QLatin1String(bumper), true);
        else if (m_step % bumperInterval == pressedAt + bumperPressedSteps)
            m_memory->raiseEvent(QLatin1String(bumper), false);
    }

    const SimulatedNoise cycles(m_parameters.seed, QByteArray("missed cycles"));
    if (cycles.uniform(m_step) < missedCycleShare)
        m_memory->raiseMicroEvent(QStringLiteral("Control/CycleMissed"), 0.001 + 0.01 * cycles.uniform(-m_step));

    for (std::size_t i = 0; i < joints.size(); ++i) {
        const double position = jointPosition(static_cast<int>(i), m_step);
        const double before = jointPosition(static_cast<int>(i), m_step - 1);
        if (std::abs(position) >= joints[i].limit && std::abs(before) < joints[i].limit)
            m_memory->raiseMicroEvent(QLatin1String(jointKey(joints[i], "LimitReached")), position);
    }
}

} // namespace Velk
