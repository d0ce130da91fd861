// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SESSION_SESSION_ON_FAKE_ROBOT_H
#define TESTS_SESSION_SESSION_ON_FAKE_ROBOT_H

#include "support/fake_robot_link.h"
#include "support/key_text.h"

#include <session/robot_session.h>

#include <QCoreApplication>
#include <QList>
#include <QSet>

namespace Velk {

inline QSet<MemoryKey> unknownKeys(const QStringList& keyNames)
{
    return keySet(keyNames, UnknownNature);
}

/// "A DATA, X UNKNOWN"
inline QString text(const QSet<MemoryKey>& keys)
{
    QStringList lines;
    for (const MemoryKey& key : keys)
        lines << key.name() + QLatin1Char(' ') + key.natureToString();
    lines.sort();
    return lines.join(QStringLiteral(", "));
}

/// A session on a robot under the test's hand, which lists the data keys A and B and the event E.
class SessionOnFakeRobot
{
public:
    explicit SessionOnFakeRobot(RobotSession::Use use = RobotSession::WatchKeys)
        : session(std::unique_ptr<RobotLink>(link), use)
    {
        link->open();
    }

    static void deliverQueuedEvents()
    {
        for (int i = 0; i < 3; ++i)
            QCoreApplication::processEvents();
    }

    /// Connects, to a memory service of this connection. Nothing while it is connected.
    void connectRobot()
    {
        if (link->isConnected())
            return;
        link->open();
        link->memory = boost::make_shared<FakeMemoryInterface>(&link->log);
        m_services.append({link->memory, {}});
        link->establish();
    }

    /// Finishes the lists of one fetch of this connection, or of the last one; nothing when they are finished or were
    /// not asked for. A connection has two fetches: that of the displayed key set, 0, and that of the session's
    /// catalogue, 1.
    void finishFetch(int fetch)
    {
        if (!m_services.isEmpty())
            finishFetch(m_services.last(), fetch);
    }
    void finishAllFetches()
    {
        for (Service& service : m_services) {
            for (int fetch = 0; fetch < service.memory->fetchCount(); ++fetch)
                finishFetch(service, fetch);
        }
    }
    /// Those of the connections before.
    void finishLateFetches()
    {
        for (int i = 0; i + 1 < m_services.size(); ++i) {
            for (int fetch = 0; fetch < m_services.at(i).memory->fetchCount(); ++fetch)
                finishFetch(m_services[i], fetch);
        }
    }

    /// Connects, and answers everything.
    void becomeReady(bool isRealTime = false)
    {
        connectRobot();
        finishAllFetches();
        answerRealTimeSupported(isRealTime);
    }
    void answerRealTimeSupported(bool isRealTime)
    {
        link->answerRealTimeSupported(isRealTime);
        deliverQueuedEvents();
    }

    QStringList displayed() const { return names(session.displayedKeys()->keys()); }

    FakeRobotLink* link = new FakeRobotLink; // the session's
    RobotSession session;

private:
    struct Service
    {
        boost::shared_ptr<FakeMemoryInterface> memory;
        QSet<int> finishedFetches;
    };

    static void finishFetch(Service& service, int fetch)
    {
        if (fetch >= service.memory->fetchCount() || service.finishedFetches.contains(fetch))
            return;
        service.finishedFetches.insert(fetch);
        service.memory->finishLists({"A", "B"}, {"E"}, {}, fetch);
        deliverQueuedEvents();
    }

    QList<Service> m_services;
};

} // namespace Velk

#endif
