// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_UNIX_TIME_H
#define CONNECTIONS_LINK_UNIX_TIME_H

#include <chrono>

namespace Velk {

/// The present time by this computer's clock: seconds since the Unix epoch.
inline double unixTime()
{
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

} // namespace Velk

#endif
