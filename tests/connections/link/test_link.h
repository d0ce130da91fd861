// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_LINK_TEST_LINK_H
#define TESTS_CONNECTIONS_LINK_TEST_LINK_H

#include <connections/link/robot_link.h>
#include <robotconnection/memory_interface.h>

#include <QStringList>

#include <boost/make_shared.hpp>

#include <functional>
#include <utility>

namespace Velk {

class NoService : public MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return {}; }
    QFuture<QStringList> getEventList() override { return {}; }
    QFuture<QStringList> getMicroEventList() override { return {}; }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override {}
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject*, const char*) override {}
};

/// A connection under the test's hand. The log has the hooks and the signals in their order, each with the state and
/// the presence of the memory service at that moment.
class TestLink : public RobotLink
{
public:
    explicit TestLink(QStringList* hookLog)
        : log(*hookLog)
    {
        connect(this, &RobotLink::stateChanged, this, [this] { note("stateChanged"); });
        connect(this, &RobotLink::connectionEstablished, this, [this] { note("established"); });
        connect(this, &RobotLink::connectionLost, this, [this] { note("lost"); });
        connect(this, &RobotLink::disconnected, this, [this] { note("disconnected"); });
        connect(this, &RobotLink::failed, this, [this](const QString& title, const QString& message) {
            note(QStringLiteral("failed %1/%2").arg(title, message));
        });
    }
    ~TestLink() override { shutDown(); }

    QString url() const override { return "test:"; }

    void establish() { RobotLink::establish(boost::make_shared<NoService>()); }
    using RobotLink::giveUp;
    using RobotLink::ledger;
    using RobotLink::lose;
    using RobotLink::reportFailure;
    using RobotLink::setRealTimeSupport;

    QStringList takeLog() { return std::exchange(log, {}); }

    QStringList& log;
    int uncollected = 0; // losses of "Arm" that are counted outside the ledger
    std::function<void()> onEndService;

protected:
    void startConnecting() override { note("start"); }
    void stopConnecting() override { note("stop"); }
    void endService(MemoryInterface&, Ending ending) override
    {
        note(ending == Ending::Lost ? "end lost" : "end closed");
        // A copy: the callback may delete the link.
        if (const auto callback = onEndService)
            callback();
    }
    void collectLosses() override
    {
        ledger().record(ledger().account("Arm"), LossCause::Dropped, std::exchange(uncollected, 0), 1, 2);
    }

private:
    void note(const QString& what)
    {
        const char* const states[] = {"Disconnected", "Connecting", "Connected", "Lost"};
        log << QStringLiteral("%1: %2%3").arg(what, states[state()], memoryInterface() ? " with memory" : "");
    }
};

} // namespace Velk

#endif
