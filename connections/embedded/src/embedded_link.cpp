#include <connections/embedded/embedded_link.h>

#include "embedded_memory_interface.h"

#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Velk {

EmbeddedLink::EmbeddedLink(std::shared_ptr<RobotMemory> memory, QObject* parent)
    : RobotLink(parent)
    , m_memory(memory ? std::move(memory) : std::make_shared<RobotMemory>())
    , m_dropCounts(std::make_shared<DropCounts>())
{}

EmbeddedLink::~EmbeddedLink()
{
    dropInterface();
}

QString EmbeddedLink::url() const
{
    return QStringLiteral("embedded:");
}

RobotLink::State EmbeddedLink::state() const
{
    return m_state;
}

boost::shared_ptr<MemoryInterface> EmbeddedLink::memoryInterface()
{
    return m_memoryInterface;
}

SampleLosses EmbeddedLink::losses() const
{
    SampleLosses losses;
    for (const SampleQueue::DropCount& count : std::as_const(*m_dropCounts))
        losses.dropped += count->load(std::memory_order_relaxed);
    return losses;
}

SampleLosses EmbeddedLink::losses(const QString& keyName) const
{
    SampleLosses losses;
    const auto count = m_dropCounts->constFind(keyName);
    if (count != m_dropCounts->constEnd())
        losses.dropped = count.value()->load(std::memory_order_relaxed);
    return losses;
}

void EmbeddedLink::setQueueCapacity(int capacity)
{
    m_queueCapacity = std::max(capacity, 1);
}

void EmbeddedLink::open()
{
    if (m_state != Disconnected)
        return;
    m_dropCounts = std::make_shared<DropCounts>();
    m_state = Connecting;
    const int change = ++m_change;
    const QPointer<EmbeddedLink> self(this);
    emit stateChanged(m_state);
    if (self && m_change == change)
        startRobot();
}

void EmbeddedLink::close()
{
    if (m_state == Disconnected)
        return;
    const bool wasConnected = m_state == Connected;
    dropInterface();
    stopRobot();
    m_isRobotRunning = false;
    m_state = Disconnected;
    const int change = ++m_change;
    const QPointer<EmbeddedLink> self(this);
    emit stateChanged(m_state);
    if (self && wasConnected && m_change == change)
        emit disconnected();
}

void EmbeddedLink::loseConnection()
{
    m_isRobotInReach = false;
    if (m_state != Connected)
        return;
    dropInterface();
    m_state = Lost;
    const int change = ++m_change;
    const QPointer<EmbeddedLink> self(this);
    emit stateChanged(m_state);
    if (self && m_change == change)
        emit connectionLost();
    if (self && m_change == change)
        emit failed(tr("Connection lost"), tr("The robot is out of reach.\nIt is connected again when it is back."));
}

void EmbeddedLink::restoreConnection()
{
    if (m_isRobotInReach)
        return;
    m_isRobotInReach = true;
    const int change = m_change;
    QTimer::singleShot(0, this, [this, change] {
        if (m_change == change && m_state != Disconnected && m_isRobotRunning)
            connectToRobot();
    });
}

void EmbeddedLink::startRobot()
{
    const int change = m_change;
    QTimer::singleShot(0, this, [this, change] {
        if (m_change == change)
            robotStarted();
    });
}

void EmbeddedLink::robotStarted()
{
    if (m_state != Connecting || m_isRobotRunning)
        return;
    m_isRobotRunning = true;
    if (m_isRobotInReach)
        connectToRobot();
    else
        emit failed(tr("Robot not in reach"), tr("The robot is out of reach.\nIt is connected when it is back."));
}

void EmbeddedLink::robotFailed(const QString& title, const QString& message)
{
    if (m_state == Connecting)
        emit failed(title, message);
}

void EmbeddedLink::connectToRobot()
{
    // A robot that went and came back several times has asked for several connections.
    if (!m_isRobotInReach || m_state == Connected)
        return;
    m_memoryInterface = boost::shared_ptr<EmbeddedMemoryInterface>(
        new EmbeddedMemoryInterface(m_memory, m_dropCounts, m_queueCapacity, m_isRealTimeSupported));
    m_state = Connected;
    const int change = ++m_change;
    const QPointer<EmbeddedLink> self(this);
    emit stateChanged(m_state);
    if (self && m_change == change)
        emit connectionEstablished();
}

void EmbeddedLink::dropInterface()
{
    if (!m_memoryInterface)
        return;
    m_memoryInterface->shutDown();
    m_memoryInterface.reset();
}

} // namespace Velk
