// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk_run.h"

#include <QDeadlineTimer>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

const QString velkProgram = QStringLiteral(VELK_PROGRAM);
const QString testVelkProgram = QStringLiteral(TEST_VELK_PROGRAM);

namespace {

constexpr int patienceMs = 60000;

QRegularExpression expression(const QString& pattern)
{
    return QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption);
}

} // namespace

VelkRun::VelkRun(const QString& program)
    : m_program(program)
    , m_environment(QProcessEnvironment::systemEnvironment())
{
    m_environment.remove(QStringLiteral("VELK_ROBOT"));
    m_environment.insert(QStringLiteral("TMPDIR"), m_temporaryDirectory.path());
    m_environment.insert(QStringLiteral("TERM"), QStringLiteral("xterm"));
}

VelkRun::~VelkRun()
{
    if (m_process.state() != QProcess::NotRunning)
        end();
}

void VelkRun::start(const QStringList& arguments)
{
    m_process.setProcessEnvironment(m_environment);
    if (m_fileSizeLimit == 0) {
        m_process.start(m_program, arguments);
    } else {
        const QString command = QStringLiteral("ulimit -f %1; exec \"$0\" \"$@\"").arg(m_fileSizeLimit);
        m_process.start(QStringLiteral("/bin/sh"), QStringList{QStringLiteral("-c"), command, m_program} + arguments);
    }
    if (!m_process.waitForStarted(patienceMs))
        qFatal("The test cannot start %s.", qPrintable(m_program));
}

void VelkRun::read()
{
    m_output += m_process.readAllStandardOutput();
    m_messages += m_process.readAllStandardError();
}

bool VelkRun::waitFor(const QByteArray& text, const QString& pattern)
{
    const QDeadlineTimer deadline(patienceMs);
    read();
    while (!expression(pattern).match(QString::fromUtf8(text)).hasMatch()) {
        if (m_process.state() == QProcess::NotRunning || deadline.hasExpired())
            return false;
        // Either channel: a wait for the current one would sleep over the other.
        m_process.waitForFinished(10);
        read();
    }
    return true;
}

bool VelkRun::waitForOutput(const QString& pattern)
{
    return waitFor(m_output, pattern);
}

bool VelkRun::waitForMessage(const QString& pattern)
{
    return waitFor(m_messages, pattern);
}

void VelkRun::sendSignal(int signalNumber)
{
    if (m_process.state() == QProcess::Running)
        ::kill(pid_t(m_process.processId()), signalNumber);
}

int VelkRun::end()
{
    const bool isOver = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(patienceMs);
    read();
    if (!isOver) {
        m_process.kill();
        m_process.waitForFinished(patienceMs);
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

int VelkRun::run(const QStringList& arguments)
{
    start(arguments);
    return end();
}

QString VelkRun::messagesButMissedTicks() const
{
    return messages().remove(
        QRegularExpression(QStringLiteral("^velk: Not everything was delivered: \\d+ sampling ticks missed, [^;]*\\n"),
                           QRegularExpression::MultilineOption));
}

VelkTerminal::VelkTerminal(const QString& program)
    : m_program(program)
{}

VelkTerminal::~VelkTerminal()
{
    if (m_process > 0)
        end();
}

void VelkTerminal::start(const QStringList& arguments)
{
    // All that allocates happens before the fork.
    std::vector<QByteArray> words{QFile::encodeName(m_program)};
    for (const QString& argument : arguments)
        words.push_back(argument.toLocal8Bit());
    std::vector<char*> argv;
    for (QByteArray& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    const QByteArray temporaryDirectory = QFile::encodeName(m_temporaryDirectory.path());

    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    m_process = ::forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_process == 0) {
        ::setenv("TERM", "xterm", 1);
        ::setenv("TMPDIR", temporaryDirectory.constData(), 1);
        ::unsetenv("VELK_ROBOT");
        ::execv(argv[0], argv.data());
        ::_exit(127);
    }
    if (m_process < 0)
        qFatal("The test cannot open a terminal.");
    // Tests that run at the same time are not to hold this terminal open.
    ::fcntl(m_terminal, F_SETFD, FD_CLOEXEC);
}

bool VelkTerminal::read()
{
    pollfd readable{m_terminal, POLLIN, 0};
    if (::poll(&readable, 1, 10) <= 0)
        return true;
    char bytes[4096];
    const ssize_t count = ::read(m_terminal, bytes, sizeof bytes);
    if (count > 0)
        m_text.append(bytes, int(count));
    return count > 0 || errno == EINTR;
}

bool VelkTerminal::waitFor(const QString& pattern)
{
    const QDeadlineTimer deadline(patienceMs);
    bool isOpen = true;
    while (!expression(pattern).match(text()).hasMatch()) {
        if (!isOpen || deadline.hasExpired())
            return false;
        isOpen = read();
    }
    return true;
}

void VelkTerminal::typeCtrlC()
{
    const char key = '\x03';
    if (::write(m_terminal, &key, 1) != 1)
        qFatal("The test cannot type on its terminal.");
}

void VelkTerminal::sendSignal(int signalNumber)
{
    if (m_process > 0)
        ::kill(m_process, signalNumber);
}

int VelkTerminal::end()
{
    const QDeadlineTimer deadline(patienceMs);
    while (read() && !deadline.hasExpired())
        continue;
    if (deadline.hasExpired())
        ::kill(m_process, SIGKILL);
    int status = 0;
    ::waitpid(m_process, &status, 0);
    m_process = -1;
    ::close(m_terminal);
    m_terminal = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
