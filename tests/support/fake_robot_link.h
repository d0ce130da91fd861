// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_FAKE_ROBOT_LINK_H
#define TESTS_SUPPORT_FAKE_ROBOT_LINK_H

#include "fake_robot.h"

#include <connections/link/robot_link.h>

#include <QRegularExpression>

namespace Velk {

/// A link that the test controls, to a robot whose memory service the test controls too.
class FakeRobotLink : public RobotLink
{
public:
    FakeRobotLink()
        : memory(boost::make_shared<FakeMemoryInterface>(&log))
    {}
    /// Deletes the models, which are children, before the log.
    ~FakeRobotLink() override
    {
        shutDown();
        qDeleteAll(findChildren<QObject*>(QString(), Qt::FindDirectChildrenOnly));
    }

    QString url() const override { return QStringLiteral("fake:"); }

    /// Opens the link first when it is closed.
    void establish()
    {
        open();
        RobotLink::establish(memory);
    }
    void lose() { RobotLink::lose(QStringLiteral("Lost"), QStringLiteral("The test took the robot away.")); }
    void giveUp() { RobotLink::giveUp(QStringLiteral("Given up"), QStringLiteral("The robot cannot be reached.")); }
    using RobotLink::ledger;
    using RobotLink::reportFailure;
    /// Answers the last isRealTimeSupported(), and reports the answer from the event loop. Nothing without a
    /// connection.
    void answerRealTimeSupported(bool isSupported)
    {
        if (!isConnected())
            return;
        memory->answerRealTimeSupported(isSupported);
        setRealTimeSupport(isSupported);
    }

    /// What the memory service was asked since the last call, without what the lists of a catalogue ask.
    QStringList takeLog()
    {
        QStringList lines;
        lines.swap(log);
        return lines.filter(QRegularExpression(QStringLiteral("^(?!get|isReal)")));
    }

    QStringList log;
    boost::shared_ptr<FakeMemoryInterface> memory;

protected:
    void startConnecting() override {}
    void stopConnecting() override {}
};

} // namespace Velk

#endif
