// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_DISPLAYED_KEYS_TASK_H
#define APPS_VELK_SRC_DISPLAYED_KEYS_TASK_H

#include "robot_task.h"

#include <memorykeymodel/memory_key.h>

#include <QStringList>
#include <QVector>

namespace Velk {

class DisplayedMemoryKeyListModel;

/// Which keys a command displays, and how often they are sampled.
struct DisplayedKeysOptions
{
    QStringList keys; ///< names and patterns
    bool all = false; ///< every key that the robot lists
    int periodMs = 0; ///< 0: the displayed key set's own
    int forMs = 0;    ///< how long; 0: until interrupted
};

/// A task on the displayed key set. Before it displays a key, it chooses the keys from the catalogue and reports the
/// sampling period when the robot grants another one than was asked for.
class DisplayedKeysTask : public RobotTask
{
    Q_OBJECT

public:
    DisplayedKeysTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs,
                      const DisplayedKeysOptions& options);

protected:
    DisplayedMemoryKeyListModel& displayedKeys() { return *session().displayedKeys(); }
    const DisplayedKeysOptions& options() const { return m_options; }

    /// The keys are chosen, at least one, and none of them is displayed yet. Once.
    virtual void begin(const QVector<MemoryKey>& keys) = 0;
    /// Reports what was not delivered, and ends the task.
    void finish(int status) override;

    void onListed(const MemoryKeyListModel& catalogue) override;

private:
    void reportGrantedPeriod();

    DisplayedKeysOptions m_options;
    bool m_isEnding = false;
};

} // namespace Velk

#endif
