// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_PORT_RESERVATION_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_PORT_RESERVATION_H

#include <QLocalServer>
#include <QtGlobal>

#include <memory>

/// A loopback port that no other test takes while this object lives, also while nobody listens on it.
///
/// The port lies below the range from which the system takes the ports of outgoing connections, so that a server which
/// is down for a while finds its port free again. The reservation is a name in the abstract socket namespace: the
/// system removes it when the process ends, also after a crash.
class PortReservation
{
public:
    /// A port on which nobody listens; its neighbour 10 000 above it is free as well.
    PortReservation();

    quint16 port() const { return m_port; }

private:
    std::unique_ptr<QLocalServer> m_mark;
    quint16 m_port = 0;
};

#endif
