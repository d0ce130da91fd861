// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_ROBOT_LINK_H
#define CONNECTIONS_LINK_ROBOT_LINK_H

#include <connections/link/failure_filter.h>
#include <connections/link/link_export.h>
#include <connections/link/link_report.h>
#include <connections/link/loss_ledger.h>
#include <connections/link/sample_losses.h>
#include <robotconnection/connection_manager.h>

#include <QString>

#include <functional>
#include <optional>

namespace Velk {

/// A connection manager that an application opens and closes: what every connection offers beyond the contract that the
/// models need.
///
/// Time stamps of the values that a link delivers are seconds since the Unix epoch, strictly ascending for each key.
///
/// Lives on the models' thread; every signal is emitted there. No call waits for the robot or a network; a destructor
/// that does says for how long. A slot of any signal may open, close or delete the link. Signals that would follow are
/// then not emitted.
///
/// A connection derives from this class, implements the two hooks startConnecting() and stopConnecting(), and reports
/// what happens by establish(), lose(), giveUp() and reportFailure(). States, signals and their order are done here.
class LINK_EXPORT RobotLink : public ConnectionManager
{
    Q_OBJECT

public:
    enum State
    {
        Disconnected, ///< closed, or never opened
        Connecting,   ///< opened, and not connected yet
        Connected,    ///< as isConnected()
        Lost          ///< opened, was connected, and tries to connect again by itself
    };
    Q_ENUM(State)

    explicit RobotLink(QObject* parent = nullptr);
    ~RobotLink() override;

    /// The robot's URL, fit to be shown: a password in it is left out.
    virtual QString url() const = 0;
    State state() const { return m_state; }
    bool isConnected() const final { return m_state == Connected; }
    boost::shared_ptr<MemoryInterface> memoryInterface() final { return m_memoryInterface; }

    /// Connects to the robot, from the event loop, and again after every loss until close() is called. Nothing when it
    /// is open. The losses of an earlier opening are forgotten.
    void open();
    /// Closes the connection at once; disconnected() is emitted if it was connected. Nothing when it is closed.
    void close();

    /// What was not delivered since the robot was opened.
    const LossLedger& lossLedger() const;
    /// The counts of it, over all keys, and of one key.
    SampleLosses losses() const { return lossLedger().total().losses(); }
    SampleLosses losses(const QString& keyName) const { return lossLedger().ofKey(keyName).losses(); }

    /// The service's answer to MemoryInterface::isRealTimeSupported(), the same for all callers. Empty while it has not
    /// answered, and without a connection.
    std::optional<bool> realTimeSupport() const { return m_realTimeSupport; }

    /// Finds out what can be said about the robot's side, and calls `done` from the event loop, once. Not called when
    /// the link is not connected, or when the connection ends meanwhile. Here: an empty report.
    virtual void requestReport(std::function<void(const LinkReport&)> done);

Q_SIGNALS:
    /// state() changed. Emitted before the connection manager's own signal of the same change.
    void stateChanged(Velk::RobotLink::State state);
    /// An attempt to connect failed, the connection was lost, or the robot's side refuses something: a short title, and
    /// a sentence that says what happened and what to do. The link goes on trying unless state() is Disconnected.
    /// Emitted once for the same failure until the link is connected or opened again, and at most 20 times a minute:
    /// further failures are left out. open() begins a new count. The failure that ended a connection comes after
    /// connectionLost(). The failure that closes the link is never left out.
    void failed(const QString& title, const QString& message);
    /// lossLedger() has counted further losses. At most once per turn of the event loop.
    void lossesRecorded();
    /// realTimeSupport() has its answer: at most once per connection, after the first question. Emitted from the event
    /// loop, after the asker was answered.
    void realTimeSupportAnswered(bool isSupported);

protected:
    enum class Ending
    {
        Lost,  ///< the connection broke: isConnected() is still true, what was gathered can be delivered
        Closed ///< close() was called, or the link is destroyed: nothing is delivered any more
    };

    /// Begins to connect, for open(). Returns before the result is known. Later the connection calls establish() or
    /// giveUp(); each failed attempt before that calls reportFailure().
    virtual void startConnecting() = 0;
    /// Undoes startConnecting(), for close(). No establish() or lose() may come from it afterwards.
    virtual void stopConnecting() = 0;
    /// The connection is over: the service must deliver nothing and finish its lists from now on, whoever still holds
    /// it. The pointer that memoryInterface() gives is dropped after this call.
    virtual void endService(MemoryInterface& service, Ending ending);
    /// Moves the losses that the connection counts itself into the ledger. Called before the ledger is read.
    virtual void collectLosses() {}

    /// The robot is connected, with this memory service, which is not null. Nothing when the link is closed or
    /// connected.
    void establish(boost::shared_ptr<MemoryInterface> service);
    /// The connection broke, for the given reason: the state becomes Lost. Nothing without a connection.
    void lose(const QString& title, const QString& message);
    /// The link cannot connect and does not try again: closes it, as close() does, and reports the failure, also one
    /// that was reported before.
    void giveUp(const QString& title, const QString& message);
    /// Emits failed(), unless FailureFilter finds that it was reported, or that too many were.
    void reportFailure(const QString& title, const QString& message);
    /// The memory service has queued its answer to an asker. Only the first call of a connection counts.
    void setRealTimeSupport(bool isSupported);
    /// To record losses in, from this thread.
    LossLedger& ledger() { return m_ledger; }
    /// Ends the service and stops connecting without a signal; the link is Disconnected and cannot be opened again. The
    /// destructor of each class that implements a hook calls it: the hooks cannot be reached from the destructor of
    /// this class, which asserts it.
    void shutDown();

private:
    bool changeState(State state);
    void beginConnecting();
    void endConnection();
    void publishLosses();

    State m_state = Disconnected;
    int m_change = 0;            // counts the changes of state: a slot may have made another one meanwhile
    bool m_isConnecting = false; // between startConnecting() and stopConnecting()
    bool m_isEnding = false;     // endConnection() has not returned
    bool m_isShutDown = false;
    boost::shared_ptr<MemoryInterface> m_memoryInterface;
    std::optional<bool> m_realTimeSupport;
    FailureFilter m_failures;
    LossLedger m_ledger;
};

} // namespace Velk

#endif
