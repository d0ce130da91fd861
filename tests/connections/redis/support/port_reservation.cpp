// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "port_reservation.h"

#include <QHostAddress>
#include <QRandomGenerator>
#include <QTcpServer>

namespace {

constexpr int firstPort = 10100;
constexpr int endPort = 20000;
constexpr int busPortDistance = 10000;

bool isFree(int port)
{
    QTcpServer probe;
    return probe.listen(QHostAddress::LocalHost, quint16(port));
}

} // namespace

PortReservation::PortReservation()
{
    for (;;) {
        const int port = QRandomGenerator::system()->bounded(firstPort, endPort);
        auto mark = std::make_unique<QLocalServer>();
        mark->setSocketOptions(QLocalServer::AbstractNamespaceOption);
        if (!mark->listen(QStringLiteral("memorykeymodel-test-port-%1").arg(port)))
            continue;
        if (!isFree(port) || !isFree(port + busPortDistance))
            continue;
        m_mark = std::move(mark);
        m_port = quint16(port);
        return;
    }
}
