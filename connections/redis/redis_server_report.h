// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_REDIS_SERVER_REPORT_H
#define CONNECTIONS_REDIS_REDIS_SERVER_REPORT_H

#include <QString>
#include <QStringList>

namespace Velk {

/// The server that a link is connected to.
struct RedisServerReport
{
    QString address;               ///< "127.0.0.1:6379"
    QString version;               ///< "7.0.15"; empty when the server does not report it to this user
    QString mode;                  ///< "standalone", "sentinel" or "cluster"; empty as above
    QString role;                  ///< "master" or "slave", in the server's own words; empty as above
    QString robotName;             ///< what the robot's metadata call it; empty when they do not
    double roundTripMedianMs = 0;  ///< of 20 round trips
    double roundTripLongestMs = 0; ///< of the same
    double clockOffsetSeconds = 0; ///< the server's clock minus this machine's, half a round trip allowed for
    QString user;                  ///< the user that the link is logged in as; empty when the server does not report it
    QStringList granted;           ///< what the link needs and may run: "GET", "XREAD", …
    QStringList refused;           ///< what it needs and may not run
};

} // namespace Velk

#endif
