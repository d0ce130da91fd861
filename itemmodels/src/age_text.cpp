// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "age_text.h"

#include <itemmodels/watch_model.h>

namespace Velk {

QString ageText(qint64 ageMs)
{
    const qint64 seconds = ageMs / 1000;
    if (seconds < 1)
        return WatchModel::tr("< 1 s");
    if (seconds < 60)
        return WatchModel::tr("%1 s").arg(seconds);
    if (seconds < 3600)
        return WatchModel::tr("%1 min").arg(seconds / 60);
    return WatchModel::tr("%1 h %2 min").arg(seconds / 3600).arg(seconds / 60 % 60);
}

qint64 ageTextStep(qint64 ageMs)
{
    const qint64 seconds = ageMs / 1000;
    return seconds < 60 ? seconds : seconds / 60 * 60;
}

} // namespace Velk
