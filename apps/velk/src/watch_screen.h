// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_WATCH_SCREEN_H
#define APPS_VELK_SRC_WATCH_SCREEN_H

#include "console.h"

#include <QByteArray>
#include <QString>
#include <QVector>

namespace Velk {

/// One watched key as it is shown.
struct WatchRow
{
    QString name;
    QString nature;
    QString time;
    QString value;
};

/// The table that `velk watch` updates in place on a terminal. It counts the lines that it wrote, to move the cursor
/// back over them: write erase() to the terminal before anything else is written there.
class WatchScreen
{
public:
    /// The bytes that show these rows in place of those of the call before. Rows that do not fit on the screen are left
    /// out, and counted in the last line; long lines are cut.
    QByteArray paint(const QVector<WatchRow>& rows, Console::Size size);
    /// The bytes that remove the table; none if there is none.
    QByteArray erase();

private:
    int m_lines = 0;
};

} // namespace Velk

#endif
