#include <connections/redis/redis_link.h>

#include "redis_server_examination.h"

#include <connections/redis/client/redis_connection.h>
#include <connections/redis/client/redis_url.h>
#include <connections/redis/memory/redis_layout.h>
#include <connections/redis/memory/redis_memory_interface.h>
#include <connections/redis/memory/redis_metadata.h>
#include <connections/redis/memory/redis_sampling_history.h>

#include <QPointer>

namespace Velk {

struct RedisLink::Private
{
    explicit Private(const RedisUrl& url)
        : connection(url, handshake(url))
    {}

    RedisHandshake handshake(const RedisUrl& url)
    {
        if (url.isPlain())
            return {};
        return {RedisMetadata::command(RedisLayout(url.robot())),
                [this](const RedisReply& reply) { metadata = RedisMetadata::of(reply); }};
    }

    RedisMetadata metadata;
    RedisConnection connection;
    std::shared_ptr<RedisSamplingHistory> history = std::make_shared<RedisSamplingHistory>();
    boost::shared_ptr<RedisMemoryInterface> memory;
    RobotLink::State state = RobotLink::Disconnected;
    int change = 0; // counts the changes of state, to tell whether a slot has made another one meanwhile
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
    connect(&d->connection, &RedisConnection::lost, this, &RedisLink::onLost);
    connect(&d->connection, &RedisConnection::attemptFailed, this, &RedisLink::onAttemptFailed);
    connect(&d->connection, &RedisConnection::reported, this, &RedisLink::failed);
}

RedisLink::~RedisLink()
{
    d->connection.disconnect(this);
    if (d->memory)
        d->memory->end(false);
    // The models are deleted after this, as children, and ask for the state and the interface still.
    d->memory.reset();
    d->state = Disconnected;
}

QString RedisLink::url() const
{
    return d->connection.url().displayText();
}

RobotLink::State RedisLink::state() const
{
    return d->state;
}

boost::shared_ptr<MemoryInterface> RedisLink::memoryInterface()
{
    return d->memory;
}

SampleLosses RedisLink::losses() const
{
    return d->history->total;
}

SampleLosses RedisLink::losses(const QString& keyName) const
{
    const auto found = d->history->keys.find(keyName);
    return found == d->history->keys.end() ? SampleLosses() : found->second.losses;
}

void RedisLink::open()
{
    if (d->state != Disconnected)
        return;
    d->history = std::make_shared<RedisSamplingHistory>();
    d->state = Connecting;
    ++d->change;
    d->connection.open();
    emit stateChanged(d->state);
}

void RedisLink::close()
{
    if (d->state == Disconnected)
        return;
    const bool wasConnected = d->state == Connected;
    const boost::shared_ptr<RedisMemoryInterface> memory = std::move(d->memory);
    d->memory.reset();
    if (memory)
        memory->end(false);
    d->connection.close();
    d->state = Disconnected;
    const int change = ++d->change;
    const QPointer<RedisLink> self(this);
    emit stateChanged(d->state);
    if (self && wasConnected && d->change == change)
        emit disconnected();
}

void RedisLink::onEstablished()
{
    d->memory.reset(new RedisMemoryInterface(d->connection.session(), d->connection.url(), d->metadata, d->history));
    d->state = Connected;
    const int change = ++d->change;
    const QPointer<RedisLink> self(this);
    emit stateChanged(d->state);
    if (self && d->change == change)
        emit connectionEstablished();
}

void RedisLink::onLost(const QString& title, const QString& message)
{
    const QPointer<RedisLink> self(this);
    const int connectedChange = d->change;
    const boost::shared_ptr<RedisMemoryInterface> memory = d->memory;
    memory->end(true);
    if (!self || d->change != connectedChange)
        return;
    d->memory.reset();
    d->state = Lost;
    const int change = ++d->change;
    emit stateChanged(d->state);
    if (self && d->change == change)
        emit connectionLost();
    if (self && d->change == change)
        emit failed(title, message);
}

void RedisLink::onAttemptFailed(const QString& title, const QString& message)
{
    emit failed(title, message);
}

void RedisLink::requestServerReport(std::function<void(const RedisServerReport&)> done)
{
    if (d->state != Connected)
        return;
    auto* const examination = new RedisServerExamination(d->connection.session(), d->connection.url(), d->memory.get());
    examination->start(d->metadata, std::move(done));
}

} // namespace Velk
