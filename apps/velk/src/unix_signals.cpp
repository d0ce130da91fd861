// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "unix_signals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace Velk {

namespace {

volatile std::sig_atomic_t pending = 0;
int pipeEnds[2] = {-1, -1};

// A signal handler may do little: the byte wakes the event loop, which does the rest.
void onSignal(int signalNumber)
{
    const int savedErrno = errno;
    pending = 1;
    const unsigned char byte = static_cast<unsigned char>(signalNumber);
    // A pipe that is full has woken the event loop already.
    if (::write(pipeEnds[1], &byte, 1) != 1)
        errno = savedErrno;
    errno = savedErrno;
}

void catchSignal(int signalNumber)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART: a blocked write returns when a signal comes.
    ::sigaction(signalNumber, &action, nullptr);
}

bool isIgnored(int signalNumber)
{
    struct sigaction action = {};
    return ::sigaction(signalNumber, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

UnixSignals::UnixSignals(QObject* parent)
    : QObject(parent)
{
    if (pipeEnds[0] < 0 && ::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("velk cannot open a pipe.");
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSignals::onReadable);
    catchSignal(SIGINT);
    catchSignal(SIGTERM);
    // nohup ignores it, and velk then keeps it ignored.
    if (!isIgnored(SIGHUP))
        catchSignal(SIGHUP);
}

UnixSignals::~UnixSignals() = default;

bool UnixSignals::isPending()
{
    return pending != 0;
}

void UnixSignals::ignoreWriteSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void UnixSignals::onReadable()
{
    unsigned char byte = 0;
    while (::read(pipeEnds[0], &byte, 1) == 1)
        emit received(byte);
}

} // namespace Velk
