#include <connections/redis/redis_robot_writer.h>

#include <connections/redis/client/redis_connection.h>
#include <connections/redis/client/redis_url.h>
#include <connections/redis/memory/redis_layout.h>
#include <connections/redis/memory/redis_metadata.h>
#include <connections/redis/memory/redis_value.h>

#include <QHash>
#include <QSet>

#include <optional>

namespace Velk {

namespace {

// Commands that the server has not answered yet: beyond them the network is slower than the robot.
constexpr int maxOutstanding = 20000;
constexpr int namesPerCommand = 1000;
const QByteArrayList streamLimit = {"MAXLEN", "~", "10000"};

} // namespace

struct RedisRobotWriter::Private
{
    explicit Private(const RedisUrl& url)
        : layout(url.robot())
        , connection(url, {RedisMetadata::command(layout), {}})
    {}

    RedisLayout layout;
    RedisConnection connection;
    QStringList dataKeys;
    QStringList eventKeys;
    QSet<QString> microEventKeys;
    std::optional<bool> isRealTime;
    QHash<QString, QByteArray> newestValues;
    QHash<QString, bool> isStream; // of the data keys whose type on the server is known, for this connection
    int outstanding = 0;
    qint64 lostCount = 0;
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
    connect(&d->connection, &RedisConnection::established, this, &RedisRobotWriter::onEstablished);
    connect(&d->connection, &RedisConnection::lost, this, [this](const QString& title, const QString& message) {
        const QPointer<RedisRobotWriter> self(this);
        emit connectionLost();
        if (self)
            emit failed(title, message);
    });
    connect(&d->connection, &RedisConnection::attemptFailed, this, &RedisRobotWriter::failed);
    connect(&d->connection, &RedisConnection::reported, this, &RedisRobotWriter::failed);
    // Callbacks of a former connection never come.
    connect(d->connection.session(), &RedisSession::replaced, this, [this] {
        d->outstanding = 0;
        d->isStream.clear();
    });
}

RedisRobotWriter::~RedisRobotWriter()
{
    d->connection.session()->disconnect(this);
    d->connection.disconnect(this);
}

QString RedisRobotWriter::url() const
{
    return d->connection.url().displayText();
}

bool RedisRobotWriter::isConnected() const
{
    return d->connection.isEstablished();
}

qint64 RedisRobotWriter::lostCount() const
{
    return d->lostCount;
}

void RedisRobotWriter::open()
{
    d->connection.open();
}

void RedisRobotWriter::close()
{
    d->connection.close();
    d->dataKeys.clear();
    d->eventKeys.clear();
    d->microEventKeys.clear();
    d->newestValues.clear();
}

void RedisRobotWriter::declare(const QStringList& dataKeys, const QStringList& eventKeys,
                               const QStringList& microEventKeys)
{
    d->dataKeys = dataKeys;
    d->eventKeys = eventKeys;
    d->microEventKeys = QSet<QString>(microEventKeys.begin(), microEventKeys.end());
    if (isConnected())
        writeDeclared();
}

void RedisRobotWriter::setRealTimeSupported(bool isSupported)
{
    d->isRealTime = isSupported;
    if (isConnected())
        writeDeclared();
}

void RedisRobotWriter::onEstablished()
{
    writeDeclared();
    for (auto value = d->newestValues.cbegin(); value != d->newestValues.cend(); ++value)
        writeValue(value.key(), value.value(), {});
    emit connected();
}

void RedisRobotWriter::writeDeclared()
{
    QList<QByteArrayList> commands;
    const auto addNames = [&commands](const QByteArray& index, const QStringList& names) {
        for (int i = 0; i < names.size(); ++i) {
            if (i % namesPerCommand == 0)
                commands.append({"SADD", index});
            commands.last().append(names.at(i).toUtf8());
        }
    };
    addNames(d->layout.index(KeyKind::Data), d->dataKeys);
    addNames(d->layout.index(KeyKind::Event), d->eventKeys);
    addNames(d->layout.index(KeyKind::MicroEvent), d->microEventKeys.values());
    if (d->isRealTime)
        commands.append({"HSET", d->layout.metadata(), "realtime", *d->isRealTime ? "1" : "0"});
    for (const QByteArrayList& command : commands)
        d->connection.session()->send(this, command, [](const RedisReply&) {});
}

void RedisRobotWriter::put(const QString& name, const QVariant& value, Done done)
{
    const QByteArray bytes = redisBytes(value);
    d->newestValues.insert(name, bytes);
    if (isConnected())
        writeValue(name, bytes, done);
}

void RedisRobotWriter::writeValue(const QString& name, const QByteArray& bytes, const Done& done)
{
    const QByteArray key = d->layout.key(KeyKind::Data, name.toUtf8());
    const QByteArrayList listing = {"SADD", d->layout.index(KeyKind::Data), name.toUtf8()};
    const auto known = d->isStream.constFind(name);
    if (known != d->isStream.cend()) {
        write({listing, *known ? QByteArrayList{"XADD", key} + streamLimit + QByteArrayList{"*", "v", bytes}
                               : QByteArrayList{"SET", key, bytes}},
              done);
        return;
    }
    // What is a stream there stays one: others count on every sample of it.
    d->connection.session()->send(this, {"TYPE", key}, [this, name, bytes, key, done](const RedisReply& reply) {
        const QByteArray type = reply.bytes();
        if (type != "none" && type != "string" && type != "stream") {
            if (done)
                done(tr("The key %1 on the server holds a %2, which no data key is. Check which program writes it.")
                         .arg(QString::fromUtf8(key), reply.text()));
            return;
        }
        d->isStream.insert(name, type == "stream");
        writeValue(name, bytes, done);
    });
}

void RedisRobotWriter::raise(const QString& name, const QVariant& value, double seconds, Done done)
{
    if (!isConnected()) {
        ++d->lostCount;
        return;
    }
    const QByteArray rawName = name.toUtf8();
    const bool isMicroEvent = d->microEventKeys.contains(name);
    QByteArrayList command = {"XADD", isMicroEvent ? d->layout.key(KeyKind::MicroEvent, rawName)
                                                   : d->layout.key(KeyKind::Event, rawName)};
    command += streamLimit;
    command << "*";
    if (seconds != 0.0)
        command << "t" << QByteArray::number(seconds, 'f', 6);
    command << "v" << redisBytes(value);
    write({{"SADD", isMicroEvent ? d->layout.index(KeyKind::MicroEvent) : d->layout.index(KeyKind::Event), rawName},
           command},
          done);
}

// A key's name and its value in one transaction: no viewer sees one without the other.
void RedisRobotWriter::write(const QList<QByteArrayList>& commands, const Done& done)
{
    RedisSession* const session = d->connection.session();
    if (d->outstanding >= maxOutstanding || !session->isUp()) {
        ++d->lostCount;
        if (done)
            done(tr("The server does not keep up with what is written."));
        return;
    }
    session->send(this, {"MULTI"}, [](const RedisReply&) {});
    for (const QByteArrayList& command : commands)
        session->send(this, command, [](const RedisReply&) {});
    ++d->outstanding;
    session->send(this, {"EXEC"}, [this, done, server = session->server()](const RedisReply& reply) {
        --d->outstanding;
        if (!done)
            return;
        RedisReply failure = reply;
        for (qsizetype i = 0; i < reply.size(); ++i) {
            if (reply.at(i).isError())
                failure = reply.at(i);
        }
        done(failure.isError() ? RedisError::of(failure.view()).message(server) : QString());
    });
}

} // namespace Velk
