// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_WRITE_LOSSES_H
#define CONNECTIONS_LINK_WRITE_LOSSES_H

#include <QtGlobal>

namespace Velk {

/// Counts of values and occurrences that were not written, or perhaps not, by cause, since the writer was opened.
struct WriteLosses
{
    qint64 refused = 0; ///< refused by the other side
    qint64 dropped = 0; ///< not sent: no connection, the writer was closed, or the other side did not keep up
    qint64 unknown = 0; ///< sent, and the connection was lost before the answer: written or not

    qint64 total() const { return refused + dropped + unknown; }
};

} // namespace Velk

#endif
