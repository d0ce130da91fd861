// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_screen.h"

#include <algorithm>

namespace Velk {

namespace {

const QByteArray eraseToEndOfLine = QByteArrayLiteral("\x1b[K");
const QByteArray eraseBelow = QByteArrayLiteral("\x1b[J");

// Without the last column: some terminals wrap a line that fills it, and the count of lines would be wrong.
QByteArray line(const QString& text, int columns)
{
    return text.left(std::max(1, columns - 1)).toUtf8() + eraseToEndOfLine + "\n";
}

} // namespace

QByteArray WatchScreen::paint(const QVector<WatchRow>& rows, Console::Size size)
{
    int nameWidth = 3;
    for (const WatchRow& row : rows)
        nameWidth = std::max(nameWidth, int(row.name.size()));
    const auto format = [&](const WatchRow& row) {
        return QStringLiteral("%1  %2  %3  %4")
            .arg(row.name, -nameWidth)
            .arg(row.nature, -7)
            .arg(row.time, -12)
            .arg(row.value);
    };

    // Two lines hold no key: the header, and the line below the table, where the cursor is.
    const int capacity = std::max(1, size.rows - 2);
    const bool fits = rows.size() <= capacity;
    const int shown = fits ? int(rows.size()) : capacity - 1;
    QByteArray text = m_lines > 0 ? QByteArray("\x1b[" + QByteArray::number(m_lines) + "A\r") : QByteArray();
    text +=
        line(format({QStringLiteral("KEY"), QStringLiteral("NATURE"), QStringLiteral("TIME"), QStringLiteral("VALUE")}),
             size.columns);
    for (int i = 0; i < shown; ++i)
        text += line(format(rows.at(i)), size.columns);
    if (!fits)
        text += line(QStringLiteral("and %1 more").arg(rows.size() - shown), size.columns);
    m_lines = 1 + shown + (fits ? 0 : 1);
    return text + eraseBelow;
}

QByteArray WatchScreen::erase()
{
    if (m_lines == 0)
        return QByteArray();
    const QByteArray text = "\x1b[" + QByteArray::number(m_lines) + "A\r" + eraseBelow;
    m_lines = 0;
    return text;
}

} // namespace Velk
