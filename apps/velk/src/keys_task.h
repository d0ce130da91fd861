// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_KEYS_TASK_H
#define APPS_VELK_SRC_KEYS_TASK_H

#include "robot_task.h"

#include <memorykeymodel/memory_key.h>

#include <QStringList>

namespace Velk {

/// Which keys `velk keys` writes, and how.
struct KeysOptions
{
    QStringList names;   ///< further names, which are shown as unknown when the robot does not list them
    QStringList filters; ///< patterns; a name must match one of them; without patterns every name passes
    int natures = DataNature | EventNature | UnknownNature;
    bool json = false;
};

/// Writes the robot's catalogue, sorted by name.
class KeysTask : public RobotTask
{
    Q_OBJECT

public:
    KeysTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs, const KeysOptions& options);

protected:
    void onListed(const MemoryKeyListModel& catalogue) override;

private:
    KeysOptions m_options;
};

} // namespace Velk

#endif
