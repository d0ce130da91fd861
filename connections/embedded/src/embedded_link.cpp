#include <connections/embedded/embedded_link.h>

#include "embedded_memory_interface.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Velk {

EmbeddedLink::EmbeddedLink(std::shared_ptr<RobotMemory> memory, QObject* parent)
    : RobotLink(parent)
    , m_memory(memory ? std::move(memory) : std::make_shared<RobotMemory>())
    , m_dropCounts(std::make_shared<DropCounts>())
{}

EmbeddedLink::~EmbeddedLink()
{
    shutDown();
}

QString EmbeddedLink::url() const
{
    return QStringLiteral("embedded:");
}

void EmbeddedLink::setQueueCapacity(int capacity)
{
    m_queueCapacity = std::max(capacity, 1);
}

void EmbeddedLink::startConnecting()
{
    m_dropCounts = std::make_shared<DropCounts>();
    m_recordedDrops.clear();
    ++m_opening;
    startRobot();
}

void EmbeddedLink::stopConnecting()
{
    ++m_opening;
    stopRobot();
    m_isRobotRunning = false;
}

void EmbeddedLink::endService(MemoryInterface& service, Ending)
{
    static_cast<EmbeddedMemoryInterface&>(service).shutDown();
    collectLosses();
}

void EmbeddedLink::collectLosses()
{
    const double now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
    for (auto count = m_dropCounts->cbegin(); count != m_dropCounts->cend(); ++count) {
        qint64& recorded = m_recordedDrops[count.key()];
        const qint64 dropped = count.value()->load(std::memory_order_relaxed);
        ledger().record(ledger().account(count.key()), LossCause::Dropped, dropped - recorded, now, now);
        recorded = dropped;
    }
}

void EmbeddedLink::loseConnection()
{
    m_isRobotInReach = false;
    lose(tr("Connection lost"), tr("The robot is out of reach.\nIt is connected again when it is back."));
}

void EmbeddedLink::restoreConnection()
{
    if (m_isRobotInReach)
        return;
    m_isRobotInReach = true;
    QTimer::singleShot(0, this, [this, opening = m_opening] {
        if (m_opening == opening && m_isRobotRunning)
            connectToRobot();
    });
}

void EmbeddedLink::startRobot()
{
    QTimer::singleShot(0, this, [this, opening = m_opening] {
        if (m_opening == opening)
            robotStarted();
    });
}

void EmbeddedLink::robotStarted()
{
    if (state() != Connecting || m_isRobotRunning)
        return;
    m_isRobotRunning = true;
    if (m_isRobotInReach)
        connectToRobot();
    else
        reportFailure(tr("Robot not in reach"), tr("The robot is out of reach.\nIt is connected when it is back."));
}

void EmbeddedLink::robotFailed(const QString& title, const QString& message)
{
    if (state() == Connecting)
        reportFailure(title, message);
}

void EmbeddedLink::connectToRobot()
{
    // A robot that went and came back several times has asked for several connections.
    if (!m_isRobotInReach || isConnected())
        return;
    const auto service = boost::shared_ptr<EmbeddedMemoryInterface>(
        new EmbeddedMemoryInterface(m_memory, m_dropCounts, m_queueCapacity, m_isRealTimeSupported));
    connect(service.get(), &EmbeddedMemoryInterface::realTimeAnswered, this, &EmbeddedLink::setRealTimeSupport);
    establish(service);
}

} // namespace Velk
