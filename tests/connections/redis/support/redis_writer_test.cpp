// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_writer_test.h"

#include <algorithm>

using namespace Velk;

std::unique_ptr<RedisRobotWriter> writerFor(const QString& url)
{
    QString error;
    std::unique_ptr<RedisRobotWriter> writer =
        RedisRobotWriter::fromUrl(url + QStringLiteral("?pong-timeout=60000"), &error);
    if (!writer)
        qFatal("%s", qPrintable(error));
    return writer;
}

std::unique_ptr<RedisRobotWriter> writerFor(const ScriptedServer& server)
{
    return writerFor(QStringLiteral("redis://127.0.0.1:%1/arm1").arg(server.serverPort()));
}

bool connectWriter(RedisRobotWriter& writer)
{
    writer.open();
    return QTest::qWaitFor([&writer] { return writer.isConnected(); }, 60000);
}

QByteArrayList RedisWriterTest::members(const QByteArray& index)
{
    QByteArrayList names = m_robot->client().list({"SMEMBERS", "mem:{arm1}:" + index});
    std::sort(names.begin(), names.end());
    return names;
}

void RedisWriterTest::init()
{
    startRobot();
    if (m_robot)
        m_writer = writerFor(m_robot->url());
}
