// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "displayed_keys_task.h"

#include "console.h"
#include "key_choice.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <utility>

namespace Velk {

DisplayedKeysTask::DisplayedKeysTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs,
                                     const DisplayedKeysOptions& options)
    : RobotTask(std::move(link), RobotSession::WatchKeys, console, timeoutMs)
    , m_options(options)
{
    if (m_options.periodMs > 0)
        session().setWantedPeriod(m_options.periodMs);
}

void DisplayedKeysTask::finish(int status)
{
    // A report that cannot be written ends the task once more.
    if (std::exchange(m_isEnding, true))
        return;
    reportLosses();
    RobotTask::finish(status);
}

void DisplayedKeysTask::onListed(const MemoryKeyListModel& catalogue)
{
    const KeyChoice choice = chooseKeys(catalogue.keys(), m_options.keys, m_options.all);
    setWorking();
    reportGrantedPeriod();
    for (const QString& pattern : choice.patternsWithoutAMatch)
        report(QStringLiteral("No key of the robot matches %1.").arg(pattern));
    for (const QString& name : choice.unlistedNames)
        report(QStringLiteral("The robot does not list %1: UNKNOWN, watched all the same.").arg(name));
    if (choice.keys.isEmpty()) {
        report(QStringLiteral("There is no key to display"),
               QStringLiteral("`velk keys` lists the keys of %1.").arg(link().url()));
        finish(NoKeys);
        return;
    }
    begin(choice.keys);
}

void DisplayedKeysTask::reportGrantedPeriod()
{
    const int wanted = m_options.periodMs;
    const int granted = session().grantedPeriod();
    if (wanted > 0 && granted != wanted)
        report(QStringLiteral("%1 ms asked for; this robot grants %2 ms.").arg(wanted).arg(granted));
}

} // namespace Velk
