// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "serve_task.h"

#include "console.h"

#include <session/sample_stream.h>

#include <utility>

namespace Velk {

namespace {

// Robots get keys while they run.
constexpr int listPeriodMs = 5000;

} // namespace

ServeTask::ServeTask(std::unique_ptr<RobotLink> robot, Console& console, int timeoutMs,
                     std::unique_ptr<RobotWriter> writer, int periodMs, int forMs)
    : RobotTask(std::move(robot), RobotSession::ListKeys, console, timeoutMs)
    , m_writer(std::move(writer))
    , m_periodMs(periodMs)
    , m_forMs(forMs)
{
    m_listTimer.setInterval(listPeriodMs);
    connect(&m_listTimer, &QTimer::timeout, this, &ServeTask::listKeys);
    for (const QFutureWatcher<QStringList>* const list : {&m_dataList, &m_eventList, &m_microEventList})
        connect(list, &QFutureWatcherBase::finished, this, &ServeTask::onListFinished);
    connect(session().samples(), &SampleStream::batchReceived, this, &ServeTask::writeBatch);
    connect(&link(), &RobotLink::realTimeSupportAnswered, this,
            [this](bool isSupported) { m_writer->setRealTimeSupported(isSupported); });
    connect(m_writer.get(), &RobotWriter::failed, this, &ServeTask::reportFailure);
    connect(m_writer.get(), &RobotWriter::connected, this, &ServeTask::beginWhenReady);
    m_answerTimeout.setSingleShot(true);
    m_answerTimeout.setInterval(timeoutMs);
    connect(&m_answerTimeout, &QTimer::timeout, this, &ServeTask::end);
    m_writer->open();
}

void ServeTask::interrupt(int signalNumber)
{
    if (m_isEnding)
        end();
    else
        RobotTask::interrupt(signalNumber);
}

void ServeTask::onListed(const MemoryKeyListModel&)
{
    beginWhenReady();
}

// The time-out runs until both sides are connected.
void ServeTask::beginWhenReady()
{
    if (m_isEnding || isWorking() || !session().isReady() || !m_writer->isConnected())
        return;
    setWorking();
    workFor(m_forMs);
    m_listTimer.start();
    startWatcher();
}

void ServeTask::onConnectedAgain()
{
    if (!m_isEnding)
        startWatcher();
}

void ServeTask::startWatcher()
{
    const boost::shared_ptr<MemoryInterface> memory = link().memoryInterface();
    if (!memory)
        return;
    m_watched.clear();
    session().askRealTimeSupport();
    memory->startWatcher(m_periodMs, m_periodMs);
    m_awaitedLists = 0; // lists of an earlier connection do not count
    listKeys();
}

void ServeTask::listKeys()
{
    const boost::shared_ptr<MemoryInterface> memory = link().memoryInterface();
    if (!memory || m_awaitedLists > 0)
        return;
    m_awaitedLists = 3;
    m_dataList.setFuture(memory->getDataList());
    m_eventList.setFuture(memory->getEventList());
    m_microEventList.setFuture(memory->getMicroEventList());
}

void ServeTask::onListFinished()
{
    if (--m_awaitedLists > 0 || m_isEnding)
        return;
    const boost::shared_ptr<MemoryInterface> memory = link().memoryInterface();
    if (!memory)
        return;
    const KeyNames listed = confirmNames({m_dataList.result(), m_eventList.result(), m_microEventList.result()});
    m_events = QSet<QString>(listed.events.begin(), listed.events.end());
    m_events.unite(QSet<QString>(listed.microEvents.begin(), listed.microEvents.end()));
    const QSet<QString> names = QSet<QString>(listed.data.begin(), listed.data.end()).unite(m_events);
    for (const QString& name : names) {
        if (!m_watched.contains(name))
            memory->watchKey(name, m_periodMs);
    }
    const QSet<QString> goneNames = QSet<QString>(m_watched).subtract(names);
    for (const QString& name : goneNames)
        memory->unwatchKey(name);
    const bool isNew = names != m_watched;
    m_watched = names;
    if (isNew)
        m_writer->declare(listed);
    if (!m_isAnnounced)
        report(QStringLiteral("Serving %1 keys of %2 to %3.").arg(names.size()).arg(link().url(), m_writer->url()));
    m_isAnnounced = true;
}

// Removes a name only when two listings in a row lack it. An empty list may mean that it cannot be read, as after a
// lost permission: the contract has no other answer then. So the served names of that list stay.
KeyNames ServeTask::confirmNames(const KeyNames& listed)
{
    for (const KeyKind kind : keyKinds) {
        if (listed.of(kind).isEmpty())
            continue;
        QStringList names = listed.of(kind) + m_formerList.of(kind);
        names.removeDuplicates();
        m_served.of(kind) = names;
    }
    m_formerList = listed;
    return m_served;
}

void ServeTask::writeBatch(const GatheredData& batch)
{
    for (auto key = batch.cbegin(); key != batch.cend(); ++key) {
        const bool isEvent = m_events.contains(key.key());
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample) {
            if (isEvent)
                m_writer->raise(key.key(), sample.value(), sample.key());
            else
                m_writer->put(key.key(), sample.value(), sample.key());
        }
    }
}

void ServeTask::reportTimeout(const QString& seconds)
{
    if (!session().isReady())
        RobotTask::reportTimeout(seconds);
    if (!m_writer->isConnected())
        reportNotConnected(m_writer->url(), seconds);
}

void ServeTask::finish(int status)
{
    if (std::exchange(m_isEnding, true))
        return;
    m_status = status;
    m_listTimer.stop();
    session().samples()->disconnect(this);
    if (!m_writer->isConnected() || m_writer->isIdle()) {
        end();
        return;
    }
    connect(m_writer.get(), &RobotWriter::idle, this, &ServeTask::end);
    // Queued: failed() reports the reason next, unless its limits leave it out.
    connect(
        m_writer.get(), &RobotWriter::connectionLost, this,
        [this] {
            m_isWaitCutOff = true;
            end();
        },
        Qt::QueuedConnection);
    m_answerTimeout.start();
}

void ServeTask::end()
{
    if (isFinished())
        return;
    reportLosses();
    const WriteLosses losses = m_writer->losses();
    const qint64 openCount = m_writer->openCount();
    QStringList causes;
    if (losses.refused > 0)
        causes << QStringLiteral("%1 values and occurrences refused by the server").arg(losses.refused);
    if (losses.dropped > 0)
        causes << QStringLiteral("%1 dropped, the server was away or too slow").arg(losses.dropped);
    if (losses.unknown > 0)
        causes
            << QStringLiteral("%1 perhaps not written, the connection was lost before the answer").arg(losses.unknown);
    if (openCount > 0)
        causes << (m_writer->isConnected()
                       ? QStringLiteral("%1 not answered at the end, perhaps not written").arg(openCount)
                       : QStringLiteral("the newest values of %1 keys, the server was away at the end").arg(openCount));
    else if ((m_writer->isConnected() && !m_writer->isIdle()) || (m_isWaitCutOff && causes.isEmpty()))
        causes << QStringLiteral("the list of keys was not answered at the end, perhaps not written");
    else if (m_writer->isConnected() && !m_writer->areDeclarationsWritten())
        causes << QStringLiteral("the list of keys, a removal or the metadata was refused by the server");
    if (!causes.isEmpty()) {
        report(QStringLiteral("Not everything was written"), causes.join(QStringLiteral("; ")));
        if (m_status == Success)
            m_status = NotWritten;
    }
    RobotTask::finish(m_status);
}

} // namespace Velk
