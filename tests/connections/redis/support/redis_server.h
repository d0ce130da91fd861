// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_SERVER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_SERVER_H

#include "port_reservation.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/// Waits, without an event loop, until the condition holds; false after a minute.
bool waitUntil(const std::function<bool()>& condition);

/// The path of a program; empty, with *error set to what to install, when it is missing.
QString findProgram(const QString& name, const QString& debianPackage, QString* error);

/// A real redis-server (or redis-sentinel) as a process of the test, on a loopback port of its own, with an empty
/// directory of its own and no persistence. It ends with this object, and also when the test is killed.
///
/// Nothing here runs an event loop: what is under test stands still while a method of this class works.
class RedisServer
{
public:
    enum Kind
    {
        Server,
        Sentinel
    };

    /// `arguments` are added to the command line, after our own; a later one wins.
    explicit RedisServer(const QStringList& arguments = {}, Kind kind = Server);
    ~RedisServer();

    /// Starts the process and waits until it answers, be it with an error. On false errorString() says why; a test
    /// checks it. After a stop it is the same port and directory.
    bool start();
    QString errorString() const { return m_errorString; }

    /// Takes effect with the next start().
    void setArguments(const QStringList& arguments) { m_arguments = arguments; }

    quint16 port() const { return m_port.port(); }
    /// "redis://127.0.0.1:12345/arm1".
    QString url(const QString& robot = QStringLiteral("arm1")) const;
    QString directory() const { return m_directory.path(); }
    /// The file in which a sentinel keeps what it knows; to be written before the first start.
    QString configurationPath() const { return m_directory.filePath(QStringLiteral("sentinel.conf")); }
    qint64 processId() const { return m_process.processId(); }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    /// What the server has logged since its last start.
    QString log() const;

    /// Ends the process in order (SIGTERM), or at once (SIGKILL), and waits for its end.
    void stop();
    void kill();
    /// SIGSTOP and SIGCONT: a server that accepts connections and bytes, and answers nothing.
    void pause();
    void resume();

private:
    bool startOnce(const QString& program);
    QString logPath() const { return m_directory.filePath(QStringLiteral("log")); }

    Kind m_kind;
    QStringList m_arguments;
    QTemporaryDir m_directory;
    PortReservation m_port;
    QProcess m_process;
    QString m_errorString;
    bool m_wasStarted = false;
};

#endif
