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

/// The table that `velk watch` writes again in place on a terminal. It keeps count of the lines that it wrote; what
/// else is written to the terminal in between is announced by forget().
class WatchScreen
{
public:
    /// What to send to the terminal to show the rows in place of those shown before. Rows that do not fit on the
    /// screen are left out, and counted in the last line; long lines are cut.
    QByteArray paint(const QVector<WatchRow>& rows, Console::Size size);
    /// What to send before anything else is written: removes the table.
    QByteArray erase();

private:
    int m_lines = 0;
};

} // namespace Velk

#endif
