// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_ROBOT_TEST_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_ROBOT_TEST_H

#include "redis_robot.h"

#include <QByteArrayList>
#include <QObject>
#include <QTest>

#include <memory>

/// A test program whose test functions each have a new robot on a new server. Derived classes add the test functions.
class RedisRobotTest : public QObject
{
    Q_OBJECT

protected:
    static constexpr int patienceMs = 60000;

    void startRobot()
    {
        auto robot = std::make_unique<RedisRobot>();
        QVERIFY2(robot->start(), qPrintable(robot->server().errorString()));
        m_robot = std::move(robot);
    }

    /// "Key/0", "Key/1" …
    static QByteArrayList keyNames(int count)
    {
        QByteArrayList names;
        for (int i = 0; i < count; ++i)
            names.append("Key/" + QByteArray::number(i));
        return names;
    }

    std::unique_ptr<RedisRobot> m_robot;

private Q_SLOTS:
    void initTestCase() { qunsetenv("VELK_REDIS_PASSWORD"); }
    void init() { startRobot(); }
};

#endif
