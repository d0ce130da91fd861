// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_robot.h"

bool RedisRobot::start()
{
    if (!m_server.start())
        return false;
    m_client = std::make_unique<RedisTestClient>(m_server.port());
    return true;
}

void RedisRobot::put(const QByteArray& name, const QByteArray& value)
{
    m_client->command({"SADD", "mem:{arm1}:data", name});
    m_client->command({"SET", "mem:{arm1}:v:" + name, value});
}

void RedisRobot::raise(const QByteArray& name, const QByteArray& value, const QByteArray& time)
{
    m_client->command({"SADD", "mem:{arm1}:event", name});
    QByteArrayList command = {"XADD", "mem:{arm1}:e:" + name, "*", "v", value};
    if (!time.isEmpty())
        command << "t" << time;
    m_client->command(command);
}
