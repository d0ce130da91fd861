// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_server.h"

#include "redis_test_client.h"

#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <sys/prctl.h>

bool waitUntil(const std::function<bool()>& condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.hasExpired(60000))
            return false;
        QThread::msleep(5);
    }
    return true;
}

QString findProgram(const QString& name, const QString& debianPackage, QString* error)
{
    const QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty())
        *error = QStringLiteral("%1 is missing: install the Debian package %2.").arg(name, debianPackage);
    return path;
}

RedisServer::RedisServer(const QStringList& arguments, Kind kind)
    : m_kind(kind)
    , m_arguments(arguments)
{
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

RedisServer::~RedisServer()
{
    kill();
}

bool RedisServer::start()
{
    const QString name = m_kind == Server ? QStringLiteral("redis-server") : QStringLiteral("redis-sentinel");
    const QString program = findProgram(name, name, &m_errorString);
    if (program.isEmpty())
        return false;
    if (!m_directory.isValid()) {
        m_errorString = m_directory.errorString();
        return false;
    }
    // Somebody else may have taken the port since it was chosen. Before the first start another one does as well, later
    // the old one has to become free.
    return waitUntil([this, &program] {
               if (startOnce(program))
                   return true;
               if (!log().contains(QStringLiteral("Address already in use")))
                   m_errorString =
                       QStringLiteral("%1 on port %2 does not start:\n%3").arg(program).arg(port()).arg(log());
               else if (!m_wasStarted)
                   m_port = PortReservation();
               return !m_errorString.isEmpty();
           }) &&
           m_errorString.isEmpty();
}

bool RedisServer::startOnce(const QString& program)
{
    m_errorString.clear();
    QStringList arguments;
    if (m_kind == Sentinel)
        arguments << configurationPath();
    arguments << QStringLiteral("--port") << QString::number(port()) << QStringLiteral("--bind")
              << QStringLiteral("127.0.0.1") << QStringLiteral("-::1") << QStringLiteral("--dir") << directory();
    if (m_kind == Server)
        arguments << QStringLiteral("--save") << QString() << QStringLiteral("--appendonly") << QStringLiteral("no");
    arguments << m_arguments;

    QFile::remove(logPath());
    m_process.setStandardOutputFile(logPath());
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(60000))
        return false;
    // That somebody answers is not enough: it could be another server, on a port that ours did not get. The line is
    // logged once ours listens.
    const bool answers = waitUntil([this] {
        m_process.waitForFinished(0);
        return !isRunning() || (log().contains(QStringLiteral("Running mode=")) &&
                                RedisTestClient(port()).command({"PING"}) != "(no connection)");
    });
    if (!answers || !isRunning()) {
        kill();
        return false;
    }
    m_wasStarted = true;
    return true;
}

QString RedisServer::url(const QString& robot) const
{
    return QStringLiteral("redis://127.0.0.1:%1/%2").arg(port()).arg(robot);
}

QString RedisServer::log() const
{
    QFile file(logPath());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void RedisServer::stop()
{
    if (!isRunning())
        return;
    m_process.terminate();
    m_process.waitForFinished(60000);
}

void RedisServer::kill()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished(60000);
}

void RedisServer::pause()
{
    ::kill(pid_t(processId()), SIGSTOP);
}

void RedisServer::resume()
{
    ::kill(pid_t(processId()), SIGCONT);
}
