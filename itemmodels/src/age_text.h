// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_AGE_TEXT_H
#define ITEMMODELS_AGE_TEXT_H

#include <QString>

namespace Velk {

/// The age of a value in words: seconds up to a minute, then minutes, then hours and minutes.
QString ageText(qint64 ageMs);

/// A number that changes exactly when ageText() does.
qint64 ageTextStep(qint64 ageMs);

} // namespace Velk

#endif
