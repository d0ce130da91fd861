// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_reply_limiter.h"

#include <algorithm>
#include <cstring>

namespace Velk {

namespace {

constexpr qint64 maxLineBytes = 64 * 1024;
// What the reader allocates for an element beside its bytes.
constexpr qint64 elementBytes = 64;
// Ids, field names and numbers are let through even when the reply has used up its bytes: without them the
// values that are missing could not be named.
constexpr qint64 shortValueBytes = 64;
// The protocol reader takes no deeper replies.
constexpr std::size_t maxDepth = 7;

} // namespace

bool RedisReplyLimiter::filter(const char* input, qint64 size, QByteArray* output)
{
    if (!m_errorString.isEmpty())
        return false;
    const char* const end = input + size;
    while (input != end) {
        if (m_state == Line) {
            const void* const found = std::memchr(input, '\n', std::size_t(end - input));
            const char* const lineEnd = found ? static_cast<const char*>(found) + 1 : end;
            m_line.append(input, lineEnd - input);
            input = lineEnd;
            // Another protocol may never send a line end.
            if (!std::strchr("$*+-:", m_line.at(0)) || m_line.at(0) == '\0')
                return fail(tr("a reply that starts with the byte %1").arg(int(uchar(m_line.at(0)))));
            if (m_line.size() > maxLineBytes)
                return fail(tr("a line of more than %1 bytes").arg(maxLineBytes));
            if (found && !takeLine(output))
                return false;
        } else {
            const qint64 taken = std::min<qint64>(end - input, m_valueBytesLeft);
            if (m_state == Value)
                output->append(input, taken);
            input += taken;
            m_valueBytesLeft -= taken;
            if (m_valueBytesLeft == 0) {
                m_state = Line;
                elementDone();
            }
        }
    }
    return true;
}

bool RedisReplyLimiter::takeLine(QByteArray* output)
{
    if (!m_line.endsWith("\r\n"))
        return fail(tr("a line that does not end with a carriage return and a line feed"));
    m_replyBytes += m_line.size() + elementBytes;
    switch (m_line.at(0)) {
    case '$':
        return takeValueLength(output);
    case '*':
        return takeListLength(output);
    default:
        output->append(m_line);
        m_line.clear();
        elementDone();
        return true;
    }
}

bool RedisReplyLimiter::takeValueLength(QByteArray* output)
{
    bool isNumber = false;
    const qint64 length = m_line.mid(1, m_line.size() - 3).toLongLong(&isNumber);
    if (!isNumber || length < -1 || length > (qint64(1) << 40))
        return fail(tr("a value whose length is not a number"));
    if (length == -1) {
        output->append(m_line);
        m_line.clear();
        elementDone();
        return true;
    }
    const bool isTooLong =
        length > m_limits.valueBytes || (length > shortValueBytes && m_replyBytes + length > m_limits.replyBytes);
    if (isTooLong) {
        output->append("-OVERSIZE " + QByteArray::number(length) + "\r\n");
    } else {
        output->append(m_line);
        m_replyBytes += length;
    }
    m_line.clear();
    m_state = isTooLong ? DroppedValue : Value;
    m_valueBytesLeft = length + 2;
    return true;
}

bool RedisReplyLimiter::takeListLength(QByteArray* output)
{
    bool isNumber = false;
    const qint64 length = m_line.mid(1, m_line.size() - 3).toLongLong(&isNumber);
    if (!isNumber || length < -1)
        return fail(tr("a list whose length is not a number"));
    if (length > m_limits.elements)
        return fail(tr("a list of %1 elements").arg(length));
    output->append(m_line);
    m_line.clear();
    if (length <= 0) {
        elementDone();
        return true;
    }
    if (m_openLists.size() == maxDepth)
        return fail(tr("lists within lists, more than %1 deep").arg(maxDepth));
    m_openLists.push_back(length);
    return true;
}

bool RedisReplyLimiter::fail(const QString& reason)
{
    m_errorString = reason;
    return false;
}

void RedisReplyLimiter::elementDone()
{
    while (!m_openLists.empty() && --m_openLists.back() == 0)
        m_openLists.pop_back();
    if (m_openLists.empty())
        m_replyBytes = 0;
}

} // namespace Velk
