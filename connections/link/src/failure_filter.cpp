// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/failure_filter.h>

namespace Velk {

namespace {

constexpr int maxRemembered = 100;

} // namespace

bool FailureFilter::isNew(const QString& title, const QString& message)
{
    const QString failure = title + QLatin1Char('\n') + message;
    if (m_reported.contains(failure))
        return false;
    if (m_reported.size() == maxRemembered)
        m_reported.removeFirst();
    m_reported.append(failure);
    return true;
}

} // namespace Velk
