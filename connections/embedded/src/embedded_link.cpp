// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>

#include "embedded_memory_interface.h"

#include <connections/embedded/robot_memory.h>

#include <QMetaObject>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Velk {

namespace {

// Long enough for any step that works; one that hangs, as on a dead disk, ends by itself if it ever does.
constexpr std::chrono::milliseconds stopLimit{1000};

} // namespace

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
    // A program that ends must not pull the libraries from under a robot that is still writing.
    m_feed->waitUntilStopped(stopLimit);
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
    m_feed->setReceiver([this, run = m_run](const RobotFeed::Report& report) { addReport(run, report); });
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

// On the reporting thread. However fast reports come, few wait: a robot that came and went again has not been in reach.
void EmbeddedLink::addReport(int run, const RobotFeed::Report& report)
{
    const std::lock_guard<std::mutex> lock(m_reportMutex);
    const std::size_t count = m_reports.size();
    if (report.type != RobotFeed::Report::Failed) {
        const auto isOfThisRun = [&](std::size_t index, RobotFeed::Report::Type type) {
            return index < count && m_reports[index].run == run && m_reports[index].report.type == type;
        };
        const RobotFeed::Report::Type opposite =
            report.type == RobotFeed::Report::InReach ? RobotFeed::Report::OutOfReach : RobotFeed::Report::InReach;
        if (isOfThisRun(count - 1, report.type))
            return;
        if (isOfThisRun(count - 2, report.type) && isOfThisRun(count - 1, opposite)) {
            m_reports.pop_back();
            return;
        }
    }
    m_reports.push_back({run, report});
    // By name: the queued call then holds nothing that another thread has written.
    if (count == 0)
        QMetaObject::invokeMethod(this, "scheduleReports", Qt::QueuedConnection);
}

// By a timer: a queued call that leads to another one keeps the event loop from everything else.
void EmbeddedLink::scheduleReports()
{
    QTimer::singleShot(0, this, &EmbeddedLink::takeReports);
}

void EmbeddedLink::takeReports()
{
    std::vector<PendingReport> reports;
    {
        const std::lock_guard<std::mutex> lock(m_reportMutex);
        reports.swap(m_reports);
    }
    // A slot may delete the link. What was reported before the link was closed belongs to the run that ended with it.
    const QPointer<EmbeddedLink> self(this);
    for (const PendingReport& pending : reports) {
        if (self && pending.run == m_run)
            onReport(pending.report);
    }
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
