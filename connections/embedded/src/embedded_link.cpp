#include <connections/embedded/embedded_link.h>

#include "embedded_memory_interface.h"

#include <connections/embedded/robot_memory.h>

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace Velk {

EmbeddedLink::EmbeddedLink(std::shared_ptr<RobotMemory> memory, QObject* parent)
    : EmbeddedLink(std::make_shared<RobotFeed>(std::move(memory)), parent)
{}

EmbeddedLink::EmbeddedLink(std::shared_ptr<RobotFeed> feed, QObject* parent)
    : RobotLink(parent)
    , m_feed(std::move(feed))
    , m_isRealTimeSupported(m_feed->isRealTimeSupported())
{}

EmbeddedLink::~EmbeddedLink()
{
    shutDown();
}

QString EmbeddedLink::url() const
{
    return m_feed->url();
}

void EmbeddedLink::setQueueCapacity(int capacity)
{
    m_queueCapacity = std::max(capacity, 1);
}

void EmbeddedLink::startConnecting()
{
    // Reports come from any thread. What is posted before the link is closed belongs to the run that ends with it.
    m_feed->setReceiver([this, run = m_run](const RobotFeed::Report& report) {
        QMetaObject::invokeMethod(
            this,
            [this, run, report] {
                if (run == m_run)
                    onReport(report);
            },
            Qt::QueuedConnection);
    });
    m_feed->start();
}

void EmbeddedLink::stopConnecting()
{
    ++m_run;
    m_feed->setReceiver({});
    m_feed->stop();
}

void EmbeddedLink::endService(MemoryInterface& service, Ending)
{
    static_cast<EmbeddedMemoryInterface&>(service).shutDown();
}

void EmbeddedLink::collectLosses()
{
    if (const boost::shared_ptr<MemoryInterface> service = memoryInterface())
        static_cast<EmbeddedMemoryInterface&>(*service).collectLosses();
}

void EmbeddedLink::onReport(const RobotFeed::Report& report)
{
    switch (report.type) {
    case RobotFeed::Report::InReach: {
        if (isConnected())
            return;
        const boost::shared_ptr<EmbeddedMemoryInterface> service(
            new EmbeddedMemoryInterface(memory(), &ledger(), m_queueCapacity, m_isRealTimeSupported));
        connect(&service->realTimeQuestion(), &RealTimeQuestion::answered, this, &EmbeddedLink::setRealTimeSupport);
        establish(service);
        return;
    }
    case RobotFeed::Report::OutOfReach:
        if (isConnected())
            lose(tr("Connection lost"), tr("The robot is out of reach.\nIt is connected again when it is back."));
        else if (state() == Connecting)
            reportFailure(tr("Robot not in reach"), tr("The robot is out of reach.\nIt is connected when it is back."));
        return;
    case RobotFeed::Report::Failed:
        reportFailure(report.title, report.message);
        return;
    }
}

} // namespace Velk
