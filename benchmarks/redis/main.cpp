// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Watches many keys of a robot on a Redis server of its own for a while, and prints the skipped ticks and the processor
// time of the viewer and of the server. Then the same for plain MGETs, which redis-benchmark sends at full speed. The
// values do not change meanwhile: the figures are those of reading.

#include <connections/redis/redis_link.h>
#include <connections/redis/support/redis_server.h>
#include <connections/redis/support/redis_test_client.h>
#include <memorykeymodel/memory_key.h>
#include <session/robot_session.h>
#include <session/sample_stream.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

using namespace Velk;

namespace {

// As many keys as the link asks for in one command.
constexpr int keysPerCommand = 500;

struct Setup
{
    int keys = 1000;
    int periodMs = 10;
    int seconds = 60;
};

double seconds(const timeval& time)
{
    return double(time.tv_sec) + double(time.tv_usec) / 1e6;
}

double processorSeconds(int who)
{
    rusage usage = {};
    getrusage(who, &usage);
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double processorSecondsOf(qint64 processId)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(processId));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    // The name in parentheses can hold blanks; user and system time are the 12th and 13th field after it.
    const QByteArray content = file.readAll();
    const QList<QByteArray> fields = content.mid(content.lastIndexOf(')') + 2).split(' ');
    return double(fields.value(11).toLongLong() + fields.value(12).toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

QByteArray nameOf(int i)
{
    return "Bench/" + QByteArray::number(i);
}

QByteArray keyOf(int i)
{
    return "mem:{bench}:v:" + nameOf(i);
}

void writeMemory(RedisTestClient& robot, int keys)
{
    robot.command({"HSET", "mem:{bench}:meta", "realtime", "1"});
    for (int i = 0; i < keys; ++i)
        robot.pipeline({{"SADD", "mem:{bench}:data", nameOf(i)}, {"SET", keyOf(i), QByteArray::number(i * 0.5)}});
}

struct Watched
{
    qint64 ticks = 0;
    qint64 samples = 0;
    SampleLosses losses;
    double viewer = 0;
    double server = 0;
    double elapsed = 0;
};

Watched watch(const Setup& setup, const RedisServer& server)
{
    RobotSession session(RedisLink::fromUrl(server.url(QStringLiteral("bench")), nullptr));
    Watched result;
    QEventLoop loop;

    QSet<MemoryKey> keys;
    for (int i = 0; i < setup.keys; ++i)
        keys.insert(MemoryKey(QString::fromLatin1(nameOf(i)), QString(), DataNature));
    session.setWantedPeriod(setup.periodMs);
    session.watch(keys);
    // The first batch with all keys in the period asked for: the session has started everything.
    const auto started =
        QObject::connect(session.samples(), &SampleStream::batchReceived, &loop, [&](const GatheredData& data) {
            if (session.grantedPeriod() == setup.periodMs && data.size() == setup.keys)
                loop.quit();
        });
    session.link()->open();
    QTimer::singleShot(60000, &loop, [&loop] { loop.exit(1); });
    if (loop.exec() != 0)
        qFatal("The keys are not watched within a minute.");
    QObject::disconnect(started);

    const double viewerBefore = processorSeconds(RUSAGE_SELF);
    const double serverBefore = processorSecondsOf(server.processId());
    const qint64 skippedBefore = session.samples()->losses().skippedTicks;
    QObject::connect(session.samples(), &SampleStream::batchReceived, &loop, [&](const GatheredData& data) {
        for (const Samples& samples : data)
            result.samples += samples.size();
    });
    QElapsedTimer clock;
    clock.start();
    QTimer::singleShot(setup.seconds * 1000, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    result.elapsed = double(clock.elapsed()) / 1000;
    result.viewer = processorSeconds(RUSAGE_SELF) - viewerBefore;
    result.server = processorSecondsOf(server.processId()) - serverBefore;
    result.losses = session.samples()->losses();
    result.losses.skippedTicks -= skippedBefore;
    result.ticks = result.samples / setup.keys;
    return result;
}

struct Bare
{
    double client = 0;
    double server = 0;
    double elapsed = 0;
};

Bare runBare(const Setup& setup, const RedisServer& server, qint64 ticks)
{
    QString error;
    const QString program = findProgram(QStringLiteral("redis-benchmark"), QStringLiteral("redis-tools"), &error);
    if (program.isEmpty())
        qFatal("%s", qPrintable(error));
    Bare bare;
    const double clientBefore = processorSeconds(RUSAGE_CHILDREN);
    const double serverBefore = processorSecondsOf(server.processId());
    QElapsedTimer clock;
    clock.start();
    for (int first = 0; first < setup.keys; first += keysPerCommand) {
        QStringList arguments = {QStringLiteral("-p"), QString::number(server.port()), QStringLiteral("-c"),
                                 QStringLiteral("1"),  QStringLiteral("-n"),           QString::number(ticks),
                                 QStringLiteral("-q"), QStringLiteral("MGET")};
        for (int i = first; i < qMin(first + keysPerCommand, setup.keys); ++i)
            arguments << QString::fromLatin1(keyOf(i));
        QProcess benchmark;
        benchmark.start(program, arguments);
        if (!benchmark.waitForFinished(-1) || benchmark.exitCode() != 0)
            qFatal("redis-benchmark failed: %s", benchmark.readAllStandardError().constData());
    }
    bare.elapsed = double(clock.elapsed()) / 1000;
    bare.client = processorSeconds(RUSAGE_CHILDREN) - clientBefore;
    bare.server = processorSecondsOf(server.processId()) - serverBefore;
    return bare;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("What watching a robot on a Redis server costs."));
    parser.addHelpOption();
    parser.addOptions(
        {{QStringLiteral("keys"), QStringLiteral("Watched keys."), QStringLiteral("N"), QStringLiteral("1000")},
         {QStringLiteral("period"), QStringLiteral("Sampling period."), QStringLiteral("MS"), QStringLiteral("10")},
         {QStringLiteral("seconds"), QStringLiteral("Duration."), QStringLiteral("S"), QStringLiteral("60")}});
    parser.process(application);
    const Setup setup = {qMax(1, parser.value(QStringLiteral("keys")).toInt()),
                         qMax(10, parser.value(QStringLiteral("period")).toInt()),
                         qMax(1, parser.value(QStringLiteral("seconds")).toInt())};

    RedisServer server;
    if (!server.start())
        qFatal("%s", qPrintable(server.errorString()));
    RedisTestClient robot(server.port());
    writeMemory(robot, setup.keys);
    const Watched watched = watch(setup, server);
    const Bare bare = runBare(setup, server, watched.ticks);

    QTextStream out(stdout);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(2);
    out << setup.keys << " keys every " << setup.periodMs << " ms for " << watched.elapsed << " s: " << watched.samples
        << " samples, " << watched.ticks << " ticks, " << watched.losses.skippedTicks << " skipped, "
        << watched.losses.dropped << " dropped\n"
        << "                          client       server  (processor seconds)\n"
        << "watched                 " << qSetFieldWidth(8) << watched.viewer << qSetFieldWidth(13) << watched.server
        << qSetFieldWidth(0) << "  (" << 100 * watched.viewer / watched.elapsed << " % and "
        << 100 * watched.server / watched.elapsed << " % of a processor)\n"
        << "the same MGETs, bare    " << qSetFieldWidth(8) << bare.client << qSetFieldWidth(13) << bare.server
        << qSetFieldWidth(0) << "  (in " << bare.elapsed << " s)\n";
    return 0;
}
