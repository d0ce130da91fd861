// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_REDIS_ROBOT_WRITER_H
#define CONNECTIONS_REDIS_REDIS_ROBOT_WRITER_H

#include <connections/link/robot_writer.h>
#include <connections/redis/redis_export.h>

#include <memory>

namespace Velk {

/// Writes a robot's memory to a Redis server, in the layout of docs/redis-robot-memory.md: the other side of RedisLink.
///
/// All that is put and raised in one turn of the event loop is written in one transaction: viewers see all of it or
/// nothing. A key's name is listed once for each connection. A data key that is a stream on the server stays one.
class REDIS_EXPORT RedisRobotWriter : public RobotWriter
{
    Q_OBJECT

public:
    /// The writer for a URL as RedisLink takes it; null when it is not valid, or asks for plain mode, which only reads,
    /// with *error, if given, set to a sentence without a password in it.
    static std::unique_ptr<RedisRobotWriter> fromUrl(const QString& url, QString* error);
    ~RedisRobotWriter() override;

    QString url() const override;
    bool isConnected() const override;
    WriteLosses losses() const override;
    qint64 openCount() const override;
    bool isIdle() const override;
    bool areDeclarationsWritten() const override;

    void open() override;
    void close() override;

    void declare(const KeyNames& names) override;
    void setRealTimeSupported(bool isSupported) override;
    /// The time stamp is written for a key that is a stream only.
    void put(const QString& name, const QVariant& value, std::optional<double> timeStamp = {}, Done done = {}) override;
    /// The server keeps about 10 000 of the newest occurrences.
    void raise(const QString& name, const QVariant& value, std::optional<double> timeStamp = {},
               Done done = {}) override;
    void remove(const QStringList& names, Done done = {}) override;

private:
    struct Private;

    explicit RedisRobotWriter(std::unique_ptr<Private> data);

    const std::unique_ptr<Private> d; // keeps the socket's headers out of this one
};

} // namespace Velk

#endif
