// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_WRITER_TEST_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_WRITER_TEST_H

#include "redis_robot_test.h"
#include "scripted_server.h"

#include <connections/redis/redis_robot_writer.h>

#include <QByteArrayList>
#include <QString>

#include <memory>

/// A writer that does not lose its connection because the machine is busy. A URL that is not valid ends the test
/// program.
std::unique_ptr<Velk::RedisRobotWriter> writerFor(const QString& url);
std::unique_ptr<Velk::RedisRobotWriter> writerFor(const ScriptedServer& server);

/// Opens the writer and waits until it is connected.
bool connectWriter(Velk::RedisRobotWriter& writer);

/// A test program whose test functions each have a new robot and a writer to it, which is not open yet.
class RedisWriterTest : public RedisRobotTest
{
    Q_OBJECT

protected:
    QByteArray command(const QByteArrayList& command) { return m_robot->client().command(command); }
    /// The names in an index set of the robot, sorted.
    QByteArrayList members(const QByteArray& index);

    std::unique_ptr<Velk::RedisRobotWriter> m_writer;

private Q_SLOTS:
    void init();
    void cleanup() { m_writer.reset(); }
};

#endif
