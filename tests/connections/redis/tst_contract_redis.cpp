// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "connections/contract/contract_subject.h"
#include "support/fault_proxy.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"

#include <connections/redis/redis_link.h>
#include <connections/redis/redis_robot_writer.h>

#include <QJsonArray>
#include <QJsonDocument>

using namespace Velk;

namespace {

QByteArray json(const QVariant& value)
{
    const QByteArray list = QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

/// A robot on a real server; what writes into it shares no code with what reads. Links reach it by way of a proxy.
class RedisSubject : public ContractSubject
{
public:
    RedisSubject()
    {
        if (!m_server.start())
            qFatal("%s", qPrintable(m_server.errorString()));
        m_client = std::make_unique<RedisTestClient>(m_server.port());
        m_proxy = std::make_unique<FaultProxy>(m_server.port());
        write({"HSET", "mem:{arm1}:meta", "realtime", "1"});
    }

    std::unique_ptr<RobotLink> createLink() override
    {
        // A machine with much to do does not answer within a second every time.
        return RedisLink::fromUrl(m_proxy->url() + QStringLiteral("?pong-timeout=60000"), nullptr);
    }

    std::unique_ptr<RobotWriter> createWriter() override
    {
        return RedisRobotWriter::fromUrl(m_proxy->url() + QStringLiteral("?pong-timeout=60000"), nullptr);
    }

    void setData(const QString& name, const QVariant& value) override
    {
        write({"SADD", "mem:{arm1}:data", name.toUtf8()});
        write({"SET", "mem:{arm1}:v:" + name.toUtf8(), json(value)});
    }
    void raiseEvent(const QString& name, const QVariant& value) override
    {
        write({"SADD", "mem:{arm1}:event", name.toUtf8()});
        write({"XADD", "mem:{arm1}:e:" + name.toUtf8(), "*", "v", json(value)});
    }
    void raiseMicroEvent(const QString& name, const QVariant& value) override
    {
        write({"SADD", "mem:{arm1}:microevent", name.toUtf8()});
        write({"XADD", "mem:{arm1}:m:" + name.toUtf8(), "*", "v", json(value)});
    }
    void removeKey(const QString& name) override
    {
        for (const QByteArray kind : {"data", "event", "microevent"})
            write({"SREM", "mem:{arm1}:" + kind, name.toUtf8()});
        for (const QByteArray kind : {"v:", "e:", "m:"})
            write({"DEL", "mem:{arm1}:" + kind + name.toUtf8()});
    }
    bool isRealTimeSupported() const override { return true; }

    void loseConnection() override
    {
        m_proxy->setSwallowing(true);
        m_proxy->closeAll();
    }
    void restoreConnection() override
    {
        // Attempts that were made meanwhile have been swallowed: they end here instead of at their time-out.
        m_proxy->setSwallowing(false);
        m_proxy->closeAll();
    }

private:
    void write(const QByteArrayList& command)
    {
        const QByteArray reply = m_client->command(command);
        if (reply.startsWith("(error)") || reply == "(no connection)")
            qFatal("%s: %s", command.join(' ').constData(), reply.constData());
    }

    RedisServer m_server;
    std::unique_ptr<RedisTestClient> m_client;
    std::unique_ptr<FaultProxy> m_proxy;
};

} // namespace

int main(int argc, char** argv)
{
    return runContractSuite(argc, argv, [] { return std::make_unique<RedisSubject>(); });
}
