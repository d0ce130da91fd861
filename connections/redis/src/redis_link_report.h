// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_LINK_REPORT_H
#define CONNECTIONS_REDIS_SRC_REDIS_LINK_REPORT_H

#include <connections/link/link_report.h>
#include <connections/redis/redis_server_report.h>

namespace Velk {

/// The report as lines to be shown.
LinkReport linkReport(const RedisServerReport& report);

} // namespace Velk

#endif
