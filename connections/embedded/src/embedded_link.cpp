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

void EmbeddedLink::setBufferCapacity(int capacity)
{
    m_bufferCapacity = std::max(capacity, 1);
}

void EmbeddedLink::startConnecting()
{
    m_feed->setReceiver([this](const RobotFeed::Report& report) { addReport(report); });
    m_feed->start();
}

void EmbeddedLink::stopConnecting()
{
    ++m_run;
    m_feed->setReceiver({});
    {
        const std::lock_guard<std::mutex> lock(m_reportMutex);
        m_reports.clear();
    }
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

// On the reporting thread. Bounds the list, however fast reports come: a report of reach that cancels the one before it
// removes that one, the same failure waits once, and no more failures wait than are reported at once.
void EmbeddedLink::addReport(const RobotFeed::Report& report)
{
    using Report = RobotFeed::Report;
    const std::lock_guard<std::mutex> lock(m_reportMutex);
    const std::size_t count = m_reports.size();
    if (report.type == Report::Failed) {
        int failures = 0;
        bool isOfThisReach = true;
        for (auto other = m_reports.rbegin(); other != m_reports.rend(); ++other) {
            isOfThisReach = isOfThisReach && other->type == Report::Failed;
            if (isOfThisReach && other->title == report.title && other->message == report.message)
                return;
            failures += other->type == Report::Failed ? 1 : 0;
        }
        if (failures >= FailureFilter::maxPerInterval)
            return;
    } else {
        if (count >= 1 && m_reports[count - 1].type == report.type)
            return;
        if (count >= 2 && m_reports[count - 1].type != Report::Failed && m_reports[count - 2].type == report.type) {
            m_reports.pop_back();
            return;
        }
    }
    m_reports.push_back(report);
    // By name: the queued call then holds nothing that another thread has written.
    if (count == 0)
        QMetaObject::invokeMethod(this, "scheduleReports", Qt::QueuedConnection);
}

// With a timer: a slot that queues the next call directly would starve the other events of the loop.
void EmbeddedLink::scheduleReports()
{
    QTimer::singleShot(0, this, &EmbeddedLink::takeReports);
}

void EmbeddedLink::takeReports()
{
    std::vector<RobotFeed::Report> reports;
    {
        const std::lock_guard<std::mutex> lock(m_reportMutex);
        reports.swap(m_reports);
    }
    // A slot may close or delete the link. What was reported before that belongs to the run that ended with it.
    const QPointer<EmbeddedLink> self(this);
    const int run = m_run;
    for (const RobotFeed::Report& report : reports) {
        if (!self || m_run != run)
            return;
        onReport(report);
    }
}

void EmbeddedLink::onReport(const RobotFeed::Report& report)
{
    switch (report.type) {
    case RobotFeed::Report::InReach: {
        if (isConnected())
            return;
        const boost::shared_ptr<EmbeddedMemoryInterface> service(
            new EmbeddedMemoryInterface(memory(), &ledger(), m_bufferCapacity, m_isRealTimeSupported));
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
