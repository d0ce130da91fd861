// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "period_text.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/robot_session.h>

namespace Velk {

QString PeriodText::of(const RobotSession& session)
{
    const DisplayedMemoryKeyListModel* const keys = session.displayedKeys();
    return of(session.wantedPeriod(), session.grantedPeriod(), keys->minSamplingPeriod(), keys->maxSamplingPeriod());
}

QString PeriodText::of(int wanted, int granted, int min, int max)
{
    if (wanted < min && granted >= min)
        return tr("%1 ms asked, this robot gives %2 ms and more: %3 ms in force").arg(wanted).arg(min).arg(granted);
    if (wanted > max)
        return tr("%1 ms asked, this robot gives %2 ms at most: %3 ms in force").arg(wanted).arg(max).arg(granted);
    if (granted < min)
        return tr("%1 ms in force, below the %2 ms that this robot gives").arg(granted).arg(min);
    return tr("%1 ms in force, this robot gives %2 ms and more").arg(granted).arg(min);
}

} // namespace Velk
