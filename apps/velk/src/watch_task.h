// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_WATCH_TASK_H
#define APPS_VELK_SRC_WATCH_TASK_H

#include "displayed_keys_task.h"
#include "watch_screen.h"

#include <QHash>
#include <QSet>

namespace Velk {

class DisplayedMemoryKey;

/// Writes the newest values of the keys as they come: in place on a terminal, a line each otherwise. After a
/// reconnection it continues.
class WatchTask : public DisplayedKeysTask
{
    Q_OBJECT

public:
    enum Format
    {
        Automatic, ///< in place on a terminal, otherwise lines of text
        JsonLines
    };

    WatchTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs, const DisplayedKeysOptions& options,
              Format format);

protected:
    void begin(const QVector<MemoryKey>& keys) override;
    void onConnectedAgain() override;
    using RobotTask::report;
    void report(const QString& text) override;

private:
    void onKeysUpdated(const QSet<DisplayedMemoryKey>& keys);
    void paint();

    const Format m_format;
    const bool m_isInPlace;
    WatchScreen m_screen;
    QVector<MemoryKey> m_keys;
    QVector<WatchRow> m_rows; // of the keys, in their order
    QHash<QString, int> m_rowOfKey;
};

} // namespace Velk

#endif
