// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_FAILURE_FILTER_H
#define CONNECTIONS_LINK_FAILURE_FILTER_H

#include <connections/link/link_export.h>

#include <QString>
#include <QStringList>

namespace Velk {

/// Keeps a connection that tries again and again from reporting the same failure each time.
class LINK_EXPORT FailureFilter
{
public:
    /// Whether this failure was not reported since the last clear(); it counts as reported then. The newest 100 are
    /// remembered.
    bool isNew(const QString& title, const QString& message);
    void clear() { m_reported.clear(); }

private:
    QStringList m_reported;
};

} // namespace Velk

#endif
