#ifndef CONNECTIONS_REDIS_REDIS_ROBOT_WRITER_H
#define CONNECTIONS_REDIS_REDIS_ROBOT_WRITER_H

#include <connections/redis/redis_export.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>

namespace Velk {

/// Writes a robot's memory to a Redis server, in the layout of docs/redis-robot-memory.md: the other side of RedisLink.
///
/// Keeps its connection up by itself, as the link does. What it declared and the newest value of each data key are
/// written again after every reconnection, for the server may have come back empty; occurrences that are raised without
/// a connection are lost and counted. Lives on one thread; nothing here blocks.
class REDIS_EXPORT RedisRobotWriter : public QObject
{
    Q_OBJECT

public:
    /// Is told how a write ended: an empty text, or a sentence that says what went wrong. Not called when the
    /// connection is lost before the server has answered.
    using Done = std::function<void(const QString& error)>;

    /// The writer for a URL as RedisLink takes it; null when it is not valid, or asks for plain mode, which only reads,
    /// with *error, if given, set to a sentence without a password in it.
    static std::unique_ptr<RedisRobotWriter> fromUrl(const QString& url, QString* error);
    ~RedisRobotWriter() override;

    /// As RedisLink::url().
    QString url() const;
    bool isConnected() const;
    /// Occurrences that could not be written, and values that the server was too slow to take.
    qint64 lostCount() const;

    /// Connects, from the event loop, and again after every loss until close() is called. Nothing when it is open.
    void open();
    /// Ends the connection without waiting for replies, without a signal. What was declared is forgotten.
    void close();

    /// The names of the robot's keys by their kind, in place of all that were declared before. Names that others have
    /// put in the robot's lists stay there. A name that is a data key's and an event's is written as an event.
    void declare(const QStringList& dataKeys, const QStringList& eventKeys, const QStringList& microEventKeys);
    /// Whether sampling the robot every 10 ms makes sense; not said at first.
    void setRealTimeSupported(bool isSupported);

    /// Writes a data key's value and lists the key. A key that is a stream on the server gets an entry.
    void put(const QString& name, const QVariant& value, Done done = {});
    /// Adds an occurrence and lists the key, as a micro-event if that was declared, else as an event. `seconds` is its
    /// time since the epoch, the server's when it is 0. The newest 10 000 occurrences, about, are kept.
    void raise(const QString& name, const QVariant& value, double seconds = 0.0, Done done = {});

Q_SIGNALS:
    void connected();
    void connectionLost();
    /// An attempt to connect failed, the connection was lost, or the server refuses a write: a short title, and a
    /// sentence that says what happened and what to do. The writer goes on trying.
    void failed(const QString& title, const QString& message);

private:
    struct Private;

    explicit RedisRobotWriter(std::unique_ptr<Private> data);

    void onEstablished();
    void writeDeclared();
    void writeValue(const QString& name, const QByteArray& bytes, const Done& done);
    void write(const QList<QByteArrayList>& commands, const Done& done);

    const std::unique_ptr<Private> d; // keeps the socket's headers out of this one
};

} // namespace Velk

#endif
