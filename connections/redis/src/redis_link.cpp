// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/redis_link.h>

#include "redis_link_report.h"
#include "redis_server_inspection.h"

#include <connections/redis/client/redis_connection.h>
#include <connections/redis/client/redis_url.h>
#include <connections/redis/memory/redis_carry_over.h>
#include <connections/redis/memory/redis_key_space.h>
#include <connections/redis/memory/redis_memory_interface.h>
#include <connections/redis/memory/redis_metadata.h>

namespace Velk {

struct RedisLink::Private
{
    explicit Private(const RedisUrl& url)
        : connection(url, handshake(url))
    {}

    RedisHandshake handshake(const RedisUrl& url)
    {
        return {RedisKeySpace::handshakeCommand(url),
                [this](const RedisReply& reply) { metadata = RedisMetadata::of(reply); }};
    }

    RedisMetadata metadata;
    RedisConnection connection;
    std::shared_ptr<RedisCarryOver> carryOver;
};

std::unique_ptr<RedisLink> RedisLink::fromUrl(const QString& url, QString* error)
{
    QString discarded;
    const std::optional<RedisUrl> parsed = RedisUrl::parse(url, error ? error : &discarded);
    return parsed ? std::unique_ptr<RedisLink>(new RedisLink(*parsed)) : nullptr;
}

RedisLink::RedisLink(const RedisUrl& url)
    : d(std::make_unique<Private>(url))
{
    connect(&d->connection, &RedisConnection::established, this, &RedisLink::onEstablished);
    connect(&d->connection, &RedisConnection::lost, this, &RedisLink::lose);
    connect(&d->connection, &RedisConnection::attemptFailed, this, &RedisLink::reportFailure);
    connect(&d->connection, &RedisConnection::reported, this, &RedisLink::reportFailure);
}

RedisLink::~RedisLink()
{
    d->connection.disconnect(this);
    shutDown();
}

QString RedisLink::url() const
{
    return d->connection.url().displayText();
}

void RedisLink::startConnecting()
{
    d->carryOver = std::make_shared<RedisCarryOver>(&ledger());
    d->connection.open();
}

void RedisLink::stopConnecting()
{
    d->connection.close();
}

void RedisLink::endService(MemoryInterface& service, Ending ending)
{
    // What a former service answers is not the connection's answer.
    disconnect(&service, nullptr, this, nullptr);
    // Callers may keep the service: a report that is not complete ends with the connection all the same.
    qDeleteAll(service.findChildren<RedisServerInspection*>(QString(), Qt::FindDirectChildrenOnly));
    static_cast<RedisMemoryInterface&>(service).end(ending == Ending::Lost);
}

void RedisLink::onEstablished()
{
    const boost::shared_ptr<RedisMemoryInterface> memory(
        new RedisMemoryInterface(d->connection.session(), d->connection.url(), d->metadata, d->carryOver));
    connect(memory.get(), &RedisMemoryInterface::realTimeAnswered, this, &RedisLink::setRealTimeSupport);
    establish(memory);
}

void RedisLink::requestServerReport(std::function<void(const RedisServerReport&)> done)
{
    const auto memory = boost::static_pointer_cast<RedisMemoryInterface>(memoryInterface());
    if (!memory)
        return;
    // A child of the memory service: endService() deletes it.
    auto* const inspection = new RedisServerInspection(d->connection.session(), memory.get());
    inspection->start(d->metadata, memory->neededCommands(), std::move(done));
}

void RedisLink::requestReport(std::function<void(const LinkReport&)> done)
{
    requestServerReport([done = std::move(done)](const RedisServerReport& report) { done(linkReport(report)); });
}

} // namespace Velk
