// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/redis_robot_writer.h>

#include "redis_write_queue.h"

#include <connections/link/json_value.h>
#include <connections/redis/client/redis_connection.h>
#include <connections/redis/client/redis_url.h>
#include <connections/redis/memory/redis_metadata.h>

#include <QPointer>

#include <utility>

namespace Velk {

struct RedisRobotWriter::Private
{
    explicit Private(const RedisUrl& url)
        : connection(url, {RedisMetadata::command(RedisLayout(url.robot())), {}})
        , queue(connection.session(), RedisLayout(url.robot()))
    {}

    RedisConnection connection;
    RedisWriteQueue queue;
};

std::unique_ptr<RedisRobotWriter> RedisRobotWriter::fromUrl(const QString& url, QString* error)
{
    QString discarded;
    QString& message = error ? *error : discarded;
    const std::optional<RedisUrl> parsed = RedisUrl::parse(url, &message);
    if (!parsed)
        return nullptr;
    if (parsed->isPlain()) {
        message = tr("A memory in plain mode is only read: leave out the option \"plain\" to write.");
        return nullptr;
    }
    return std::unique_ptr<RedisRobotWriter>(new RedisRobotWriter(std::make_unique<Private>(*parsed)));
}

RedisRobotWriter::RedisRobotWriter(std::unique_ptr<Private> data)
    : d(std::move(data))
{
    connect(&d->connection, &RedisConnection::established, this, [this] {
        forgetFailures();
        emit connected();
    });
    connect(&d->connection, &RedisConnection::lost, this, [this](const QString& title, const QString& message) {
        d->queue.onConnectionLost();
        const QPointer<RedisRobotWriter> self(this);
        emit connectionLost();
        if (self)
            reportFailure(title, message);
    });
    connect(&d->connection, &RedisConnection::attemptFailed, this, &RedisRobotWriter::reportFailure);
    connect(&d->connection, &RedisConnection::reported, this, &RedisRobotWriter::reportFailure);
    connect(&d->queue, &RedisWriteQueue::refused, this, &RedisRobotWriter::reportFailure);
    connect(&d->queue, &RedisWriteQueue::idle, this, &RobotWriter::idle);
}

RedisRobotWriter::~RedisRobotWriter()
{
    d->connection.disconnect(this);
    d->queue.disconnect(this);
}

QString RedisRobotWriter::url() const
{
    return d->connection.url().displayText();
}

bool RedisRobotWriter::isConnected() const
{
    return d->connection.isEstablished();
}

WriteLosses RedisRobotWriter::losses() const
{
    return d->queue.losses();
}

qint64 RedisRobotWriter::openCount() const
{
    return d->queue.openCount();
}

bool RedisRobotWriter::isIdle() const
{
    return isConnected() ? d->queue.isIdle() : openCount() == 0;
}

bool RedisRobotWriter::areDeclarationsWritten() const
{
    return isConnected() && d->queue.areDeclarationsWritten();
}

void RedisRobotWriter::open()
{
    if (d->connection.isOpen())
        return;
    resetFailures();
    d->queue.resetLosses();
    d->connection.open();
}

void RedisRobotWriter::close()
{
    d->queue.onConnectionLost(); // before the types of the keys are forgotten with the connection
    d->connection.close();
    d->queue.clear();
}

void RedisRobotWriter::declare(const KeyNames& names)
{
    d->queue.declare(names);
}

void RedisRobotWriter::setRealTimeSupported(bool isSupported)
{
    d->queue.setRealTimeSupported(isSupported);
}

void RedisRobotWriter::put(const QString& name, const QVariant& value, std::optional<double> timeStamp, Done done)
{
    if (isConnected())
        d->queue.put(name, JsonValue::write(value), timeStamp, done);
    else
        d->queue.keep(name, JsonValue::write(value), timeStamp);
}

void RedisRobotWriter::raise(const QString& name, const QVariant& value, std::optional<double> timeStamp, Done done)
{
    if (isConnected())
        d->queue.raise(name, JsonValue::write(value), timeStamp, done);
    else
        d->queue.countDropped();
}

void RedisRobotWriter::remove(const QStringList& names, Done done)
{
    d->queue.remove(names, done);
}

} // namespace Velk
