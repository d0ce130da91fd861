// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/robot_memory.h>
#include <connections/simulated/simulated_robot.h>

#include <QMap>
#include <QTest>

#include <algorithm>
#include <cmath>

using namespace Velk;

namespace {

/// A robot with its memory.
struct Scene
{
    explicit Scene(quint64 seed, int extraKeys = 0)
        : robot({seed, extraKeys}, memory)
    {
        robot.declareKeys();
    }

    void steps(int count)
    {
        for (int i = 0; i < count; ++i)
            robot.step();
    }

    double value(const char* name) const
    {
        const std::optional<MemorySample> newest = memory->newest(QLatin1String(name));
        return newest ? newest->value.toDouble() : std::nan("");
    }

    std::shared_ptr<RobotMemory> memory = std::make_shared<RobotMemory>();
    SimulatedRobot robot;
};

QStringList sorted(QStringList names)
{
    std::sort(names.begin(), names.end());
    return names;
}

/// The newest value of every key that has one.
QVariantMap values(const RobotMemory& memory)
{
    QVariantMap values;
    for (const QString& name : memory.dataNames() + memory.eventNames() + memory.microEventNames()) {
        const std::optional<MemorySample> newest = memory.newest(name);
        if (newest)
            values.insert(name, newest->value);
    }
    return values;
}

/// The smallest and the largest value of every number within a working cycle, of one robot for all tests: a cycle has
/// 30 000 steps.
const QMap<QString, QPair<double, double>>& extremesOfACycle()
{
    static const QMap<QString, QPair<double, double>> extremes = [] {
        Scene scene(2);
        QMap<QString, QPair<double, double>> found;
        for (const QString& name : scene.memory->dataNames()) {
            const double value = scene.value(qPrintable(name));
            found.insert(name, {value, value});
        }
        for (int i = 0; i < 30000; ++i) {
            scene.steps(1);
            for (auto extreme = found.begin(); extreme != found.end(); ++extreme) {
                const double value = scene.memory->newest(extreme.key())->value.toDouble();
                extreme->first = std::min(extreme->first, value);
                extreme->second = std::max(extreme->second, value);
            }
        }
        return found;
    }();
    return extremes;
}

} // namespace

class TestSimulatedRobot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itHasTheKeysOfAMobileRobotWithAnArm();
    void everyDataKeyHasAValueFromTheStart();
    void itWritesTheSameForOneSeed();
    void itWritesSomethingElseForAnotherSeed();
    void preparingInPiecesMakesNoDifference();
    void theArmFollowsItsCommandsWithinItsLimits();
    void theBaseDrivesInTheHallAndCharges();
    void valuesMove_data();
    void valuesMove();
    void valuesStayPlausible_data();
    void valuesStayPlausible();
    void everyEventHappensWithinAWorkingCycle();
    void extraKeysComeOnTop();
    void manyExtraKeysAllMove();
    void extraKeysCanBePreparedInPieces();
};

void TestSimulatedRobot::itHasTheKeysOfAMobileRobotWithAnArm()
{
    const Scene scene(1);

    const QStringList dataNames = scene.memory->dataNames();
    for (const char* name :
         {"Base/Pose/X", "Base/Wheel/Left/Speed", "Base/Wheel/Right/Current", "Arm/Elbow/Position", "Arm/Elbow/Command",
          "Arm/Wrist/Temperature", "Inertial/Acceleration/Z", "Battery/Charge", "Range/Front/Distance"})
        QVERIFY2(dataNames.contains(QLatin1String(name)), name);
    QCOMPARE(sorted(scene.memory->eventNames()).join(QLatin1Char(' ')),
             QStringLiteral("Battery/Low Bumper/Front Bumper/Rear Obstacle/Detected"));
    QCOMPARE(sorted(scene.memory->microEventNames()).join(QLatin1Char(' ')),
             QStringLiteral("Arm/Elbow/LimitReached Arm/Gripper/LimitReached Arm/Shoulder/LimitReached "
                            "Arm/Wrist/LimitReached Control/CycleMissed"));
}

void TestSimulatedRobot::everyDataKeyHasAValueFromTheStart()
{
    const Scene scene(1, 3);

    QCOMPARE(values(*scene.memory).size(), scene.memory->dataNames().size());
}

void TestSimulatedRobot::itWritesTheSameForOneSeed()
{
    Scene first(7, 20);
    Scene second(7, 20);

    first.steps(2000);
    second.steps(2000);

    QCOMPARE(first.robot.steps(), 2000);
    QVERIFY(values(*first.memory).size() > 60);
    QCOMPARE(values(*second.memory), values(*first.memory));
}

void TestSimulatedRobot::itWritesSomethingElseForAnotherSeed()
{
    Scene first(7);
    Scene second(8);

    first.steps(100);
    second.steps(100);

    for (const char* name : {"Base/Pose/X", "Arm/Elbow/Position", "Battery/Charge", "Inertial/Acceleration/X"})
        QVERIFY2(first.value(name) != second.value(name), name);
}

void TestSimulatedRobot::preparingInPiecesMakesNoDifference()
{
    Scene whole(7, 10);
    Scene pieces(7, 10);
    whole.steps(50);

    pieces.steps(20);
    pieces.robot.declareKeys();
    pieces.steps(30);

    QCOMPARE(values(*pieces.memory), values(*whole.memory));
}

void TestSimulatedRobot::theArmFollowsItsCommandsWithinItsLimits()
{
    Scene scene(3);
    double largestPosition = 0.0;
    double largestCommand = 0.0;
    double largestLag = 0.0;
    for (int i = 0; i < 1500; ++i) {
        scene.steps(1);
        largestPosition = std::max(largestPosition, std::abs(scene.value("Arm/Elbow/Position")));
        largestCommand = std::max(largestCommand, std::abs(scene.value("Arm/Elbow/Command")));
        largestLag =
            std::max(largestLag, std::abs(scene.value("Arm/Elbow/Position") - scene.value("Arm/Elbow/Command")));
    }

    QVERIFY(largestCommand > 1.4);
    QVERIFY(largestPosition > 1.2);
    QVERIFY(largestPosition < 1.31); // the joint's limit, and the noise of its sensor
    QVERIFY(largestLag < 0.5);
}

void TestSimulatedRobot::theBaseDrivesInTheHallAndCharges()
{
    Scene scene(5);
    bool hasCharged = false;
    double fastest = 0.0;
    double farthest = 0.0;
    double largestJump = 0.0;
    double x = scene.value("Base/Pose/X");
    for (int i = 0; i < 30000; ++i) {
        scene.steps(1);
        if (scene.memory->newest(QStringLiteral("Battery/Charging"))->value.toBool()) {
            hasCharged = true;
            QCOMPARE(scene.value("Base/Velocity/Linear"), 0.0);
        }
        largestJump = std::max(largestJump, std::abs(scene.value("Base/Pose/X") - x));
        x = scene.value("Base/Pose/X");
        farthest = std::max({farthest, std::abs(x), std::abs(scene.value("Base/Pose/Y"))});
        fastest = std::max(fastest, scene.value("Base/Velocity/Linear"));
    }

    QVERIFY(hasCharged);
    QVERIFY(fastest > 0.3);
    QVERIFY(fastest < 1.0);
    QVERIFY(farthest < 3.01);
    QVERIFY(largestJump < 0.01); // no faster than a metre per second, also from one round to the next
}

void TestSimulatedRobot::valuesMove_data()
{
    QTest::addColumn<QString>("name");
    const Scene scene(1, 2);
    for (const QString& name : sorted(scene.memory->dataNames())) {
        // Two change with the phase of the working cycle only.
        if (name != QLatin1String("Base/Mode") && name != QLatin1String("Battery/Charging"))
            QTest::newRow(qPrintable(name)) << name;
    }
}

void TestSimulatedRobot::valuesMove()
{
    QFETCH(QString, name);
    Scene scene(1, 2);
    const QVariant before = scene.memory->newest(name)->value;

    scene.steps(300);

    QVERIFY(scene.memory->newest(name)->value != before);
}

void TestSimulatedRobot::valuesStayPlausible_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::newRow("charge") << QStringLiteral("Battery/Charge") << 0.0 << 100.0;
    QTest::newRow("voltage") << QStringLiteral("Battery/Voltage") << 20.0 << 30.0;
    QTest::newRow("joint temperature") << QStringLiteral("Arm/Wrist/Temperature") << 20.0 << 60.0;
    QTest::newRow("gravity") << QStringLiteral("Inertial/Acceleration/Z") << 9.0 << 10.5;
    QTest::newRow("range") << QStringLiteral("Range/Front/Distance") << 0.0 << 8.1;
    QTest::newRow("wheel current") << QStringLiteral("Base/Wheel/Left/Current") << -1.0 << 5.0;
    QTest::newRow("cycle time") << QStringLiteral("Control/CycleTime") << 0.0 << 0.01;
}

void TestSimulatedRobot::valuesStayPlausible()
{
    QFETCH(QString, name);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    const auto [smallest, largest] = extremesOfACycle().value(name);

    QVERIFY2(smallest >= lowest, qPrintable(QString::number(smallest)));
    QVERIFY2(largest <= highest, qPrintable(QString::number(largest)));
}

void TestSimulatedRobot::everyEventHappensWithinAWorkingCycle()
{
    Scene scene(4);

    scene.steps(30000);

    // The shoulder and the wrist are not commanded beyond their limits: their micro-events are for worse days.
    QStringList silent;
    for (const QString& name : sorted(scene.memory->eventNames() + scene.memory->microEventNames())) {
        if (!scene.memory->newest(name))
            silent << name;
    }
    QCOMPARE(silent.join(QLatin1Char(' ')), QStringLiteral("Arm/Shoulder/LimitReached Arm/Wrist/LimitReached"));
}

void TestSimulatedRobot::extraKeysComeOnTop()
{
    const Scene plain(1);
    const Scene more(1, 25);

    QCOMPARE(more.memory->dataNames().size(), plain.memory->dataNames().size() + 25);
    QVERIFY(more.memory->newest(QStringLiteral("Extra/1")));
    QVERIFY(more.memory->newest(QStringLiteral("Extra/25")));
    QVERIFY(!more.memory->newest(QStringLiteral("Extra/26")));
}

void TestSimulatedRobot::manyExtraKeysAllMove()
{
    constexpr int count = 25000; // more than are written in one step
    Scene scene(1, count);
    QVariantMap before = values(*scene.memory);

    scene.steps(10);

    const QVariantMap after = values(*scene.memory);
    int moved = 0;
    for (int i = 1; i <= count; ++i) {
        const QString name = QStringLiteral("Extra/%1").arg(i);
        if (after.value(name) != before.value(name))
            ++moved;
    }
    QCOMPARE(moved, count);
}

void TestSimulatedRobot::extraKeysCanBePreparedInPieces()
{
    const auto memory = std::make_shared<RobotMemory>();
    SimulatedRobot robot({1, 20000}, memory);
    int questions = 0;

    robot.declareKeys([&questions] { return ++questions < 3; });
    QVERIFY(!memory->newest(QStringLiteral("Extra/20000")));
    QVERIFY(memory->newest(QStringLiteral("Extra/1")));
    robot.declareKeys();

    QVERIFY(memory->newest(QStringLiteral("Extra/20000")));
    QCOMPARE(memory->dataNames().filter(QStringLiteral("Extra/")).size(), 20000);
}

QTEST_APPLESS_MAIN(TestSimulatedRobot)
#include "tst_simulated_robot.moc"
