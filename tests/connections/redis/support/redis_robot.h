// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_ROBOT_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_ROBOT_H

#include "redis_server.h"
#include "redis_test_client.h"

#include <memory>

/// The robot "arm1" on a server of its own, written with bare commands.
class RedisRobot
{
public:
    /// On false server().errorString() says why.
    bool start();

    RedisServer& server() { return m_server; }
    RedisTestClient& client() { return *m_client; }
    QString url() const { return m_server.url(); }

    /// Lists a data key and sets its value.
    void put(const QByteArray& name, const QByteArray& value);
    /// Lists an event and adds an occurrence, with the producer's time if there is one.
    void raise(const QByteArray& name, const QByteArray& value, const QByteArray& time = "");

private:
    RedisServer m_server;
    std::unique_ptr<RedisTestClient> m_client;
};

#endif
