// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/robot_link.h>

#include <robotconnection/memory_interface.h>

#include <QMetaObject>
#include <QPointer>

#include <utility>

namespace Velk {

RobotLink::RobotLink(QObject* parent)
    : ConnectionManager(parent)
{
    m_ledger.setRecorded([this] { QMetaObject::invokeMethod(this, &RobotLink::publishLosses, Qt::QueuedConnection); });
}

RobotLink::~RobotLink()
{
    Q_ASSERT_X(!m_isConnecting && !m_memoryInterface, "~RobotLink",
               "The destructor of a class that implements a hook calls shutDown().");
}

void RobotLink::open()
{
    if (m_state != Disconnected || m_isShutDown)
        return;
    m_ledger.clear();
    m_failures = {};
    if (changeState(Connecting) && !m_isEnding)
        beginConnecting();
}

void RobotLink::close()
{
    if (m_state == Disconnected)
        return;
    const bool wasConnected = m_state == Connected;
    // The state changes first: code that the hooks call back finds the link closed.
    m_state = Disconnected;
    const int change = ++m_change;
    const QPointer<RobotLink> self(this);
    endConnection();
    if (!self || m_change != change)
        return;
    emit stateChanged(m_state);
    if (self && m_change == change && wasConnected)
        emit disconnected();
}

const LossLedger& RobotLink::lossLedger() const
{
    // Collecting only copies existing counts, so the link counts as unchanged.
    const_cast<RobotLink*>(this)->collectLosses();
    return m_ledger;
}

void RobotLink::requestReport(std::function<void(const LinkReport&)> done)
{
    if (m_state != Connected)
        return;
    QMetaObject::invokeMethod(
        this,
        [this, change = m_change, done = std::move(done)] {
            if (m_change == change)
                done(LinkReport());
        },
        Qt::QueuedConnection);
}

void RobotLink::endService(MemoryInterface&, Ending) {}

void RobotLink::establish(boost::shared_ptr<MemoryInterface> service)
{
    if (m_state != Connecting && m_state != Lost)
        return;
    m_memoryInterface = std::move(service);
    m_realTimeSupport.reset();
    m_failures.clear();
    if (changeState(Connected))
        emit connectionEstablished();
}

void RobotLink::lose(const QString& title, const QString& message)
{
    if (m_state != Connected)
        return;
    const QPointer<RobotLink> self(this);
    const int connectedChange = m_change;
    const boost::shared_ptr<MemoryInterface> service = m_memoryInterface;
    endService(*service, Ending::Lost);
    if (!self || m_change != connectedChange)
        return;
    m_memoryInterface.reset();
    m_realTimeSupport.reset();
    if (!changeState(Lost))
        return;
    const int change = m_change;
    emit connectionLost();
    if (self && m_change == change)
        reportFailure(title, message);
}

void RobotLink::giveUp(const QString& title, const QString& message)
{
    const QPointer<RobotLink> self(this);
    close();
    if (!self || m_state != Disconnected)
        return;
    // Past the filter: receivers learn by this signal that the link is closed.
    emit failed(title, message);
}

void RobotLink::reportFailure(const QString& title, const QString& message)
{
    if (m_failures.isNew(title, message))
        emit failed(title, message);
}

void RobotLink::setRealTimeSupport(bool isSupported)
{
    if (m_state != Connected || m_realTimeSupport)
        return;
    m_realTimeSupport = isSupported;
    // Queued behind the answer: the asker has it when this is emitted.
    QMetaObject::invokeMethod(
        this,
        [this, change = m_change, isSupported] {
            if (m_change == change)
                emit realTimeSupportAnswered(isSupported);
        },
        Qt::QueuedConnection);
}

void RobotLink::shutDown()
{
    m_isShutDown = true;
    m_state = Disconnected;
    ++m_change;
    // Also when a hook that has not returned yet led here: the link is being deleted.
    m_isEnding = false;
    endConnection();
}

void RobotLink::beginConnecting()
{
    m_isConnecting = true;
    startConnecting();
}

// Callers of the service's lists run within endService() and when the service goes. They may close, open or delete the
// link: a new attempt begins after the old one was stopped.
void RobotLink::endConnection()
{
    m_realTimeSupport.reset();
    if (m_isEnding)
        return;
    const QPointer<RobotLink> self(this);
    m_isEnding = true;
    if (boost::shared_ptr<MemoryInterface> service = std::exchange(m_memoryInterface, {})) {
        endService(*service, Ending::Closed);
        service.reset();
        if (!self)
            return;
    }
    if (std::exchange(m_isConnecting, false)) {
        stopConnecting();
        if (!self)
            return;
    }
    m_isEnding = false;
    if (m_state == Connecting)
        beginConnecting();
}

// Whether the state is still that one after the signal. False also when the link is gone.
bool RobotLink::changeState(State state)
{
    m_state = state;
    const int change = ++m_change;
    const QPointer<RobotLink> self(this);
    emit stateChanged(state);
    return self && m_change == change;
}

void RobotLink::publishLosses()
{
    m_ledger.rearm();
    if (!m_ledger.total().isEmpty()) // the link may have been opened again
        emit lossesRecorded();
}

} // namespace Velk
