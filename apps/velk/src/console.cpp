// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "console.h"

#include "unix_signals.h"

#include <QtGlobal>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Velk {

namespace {

const QByteArray eraseLine = QByteArrayLiteral("\r\x1b[K");

bool canMoveCursor(int descriptor)
{
    const QByteArray terminal = qgetenv("TERM");
    return ::isatty(descriptor) != 0 && !terminal.isEmpty() && terminal != "dumb";
}

// Waits until the descriptor takes bytes. Returns false when it takes none and a signal asks velk to end: a reader that
// has stopped reading must not keep velk from ending.
bool waitForRoom(int descriptor)
{
    pollfd waiting{descriptor, POLLOUT, 0};
    while (!UnixSignals::isPending()) {
        if (::poll(&waiting, 1, -1) != -1)
            return true;
    }
    return ::poll(&waiting, 1, 0) != 0;
}

// The error number, or 0 when all is written.
int writeAll(int descriptor, const QByteArray& data)
{
    const char* next = data.constData();
    const char* const end = next + data.size();
    while (next != end) {
        if (!waitForRoom(descriptor))
            return EINTR;
        // A pipe that is ready takes so many bytes without waiting.
        const ssize_t written = ::write(descriptor, next, std::min(size_t(end - next), size_t(PIPE_BUF)));
        if (written >= 0)
            next += written;
        else if (errno != EINTR && errno != EAGAIN && errno != EWOULDBLOCK)
            return errno;
    }
    return 0;
}

} // namespace

Console::Console(int outputDescriptor, int messageDescriptor)
    : m_outputDescriptor(outputDescriptor)
    , m_messageDescriptor(messageDescriptor)
    , m_isOutputTerminal(canMoveCursor(outputDescriptor))
    , m_isMessageTerminal(canMoveCursor(messageDescriptor))
{}

Console::Size Console::outputSize() const
{
    winsize size{};
    if (::ioctl(m_outputDescriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0)
        return {24, 80};
    return {size.ws_row, size.ws_col};
}

bool Console::write(const QByteArray& data)
{
    if (m_outputStatus != Success)
        return false;
    const int error = writeAll(m_outputDescriptor, data);
    if (error == 0 || error == EINTR)
        return error == 0;
    // A closed terminal reports EIO: nobody reads any more.
    m_outputStatus = error == EPIPE || error == EIO ? BrokenPipe : OutputFailed;
    if (m_outputStatus == OutputFailed)
        message(QStringLiteral("Standard output could not be written: %1.\n"
                               "Make room on the disk, or send the output elsewhere.")
                    .arg(QString::fromLocal8Bit(std::strerror(error))));
    return false;
}

void Console::message(const QString& text)
{
    const QByteArray erased = m_hasStatusLine ? eraseLine : QByteArray();
    m_hasStatusLine = false;
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines)
        line = printable(line);
    const QString shown = lines.join(QStringLiteral("\n      "));
    writeAll(m_messageDescriptor, erased + "velk: " + shown.toUtf8() + '\n');
}

void Console::setStatusLine(const QString& text)
{
    if (!m_isMessageTerminal || (text.isEmpty() && !m_hasStatusLine))
        return;
    m_hasStatusLine = !text.isEmpty();
    writeAll(m_messageDescriptor, eraseLine + text.toUtf8());
}

QString Console::printable(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar character : text) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line ||
            character.category() == QChar::Separator_Paragraph)
            result += QStringLiteral("\\u%1").arg(int(character.unicode()), 4, 16, QLatin1Char('0'));
        else
            result += character;
    }
    return result;
}

} // namespace Velk
