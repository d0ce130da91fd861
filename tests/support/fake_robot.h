// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_FAKE_ROBOT_H
#define TESTS_SUPPORT_FAKE_ROBOT_H

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QFutureInterface>
#include <QStringList>
#include <QVector>

#include <boost/make_shared.hpp>

namespace Velk {

using Samples = QMap<double, QVariant>;
using Batch = QMap<QString, Samples>;

/// A memory service that the test controls: it logs the calls, and the test finishes its lists.
class FakeMemoryInterface : public MemoryInterface
{
public:
    explicit FakeMemoryInterface(QStringList* log)
        : m_log(log)
    {}

    QFuture<QStringList> getDataList() override { return startFetch("getDataList", &m_dataLists); }
    QFuture<QStringList> getEventList() override { return startFetch("getEventList", &m_eventLists); }
    QFuture<QStringList> getMicroEventList() override { return startFetch("getMicroEventList", &m_microEventLists); }

    void watchKey(const QString& name, int period) override
    {
        note(QStringLiteral("watchKey %1 %2").arg(name).arg(period));
    }
    void unwatchKey(const QString& name) override { note(QStringLiteral("unwatchKey %1").arg(name)); }
    void unwatchAll() override { note(QStringLiteral("unwatchAll")); }
    void startWatcher(int gatherPeriod, int samplingPeriod) override
    {
        note(QStringLiteral("startWatcher %1 %2").arg(gatherPeriod).arg(samplingPeriod));
    }
    void stopWatcher() override { note(QStringLiteral("stopWatcher")); }
    void setGatherPeriod(int period) override { note(QStringLiteral("setGatherPeriod %1").arg(period)); }
    void setSamplingPeriod(int period) override { note(QStringLiteral("setSamplingPeriod %1").arg(period)); }
    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        note(QStringLiteral("isRealTimeSupported %1").arg(QLatin1String(member)));
        m_questioner = receiver;
        m_answerMember = member;
    }

    /// Answers the last isRealTimeSupported() as the contract requires.
    bool answerRealTimeSupported(bool supported)
    {
        return QMetaObject::invokeMethod(m_questioner, m_answerMember.constData(), Q_ARG(bool, supported));
    }

    int fetchCount() const { return int(m_microEventLists.size()); }
    /// Finish the list of the newest fetch, or of the given one, counted from 0.
    void finishDataList(const QStringList& names, int fetch = -1) { finish(m_dataLists, names, fetch); }
    void finishEventList(const QStringList& names, int fetch = -1) { finish(m_eventLists, names, fetch); }
    void finishMicroEventList(const QStringList& names, int fetch = -1) { finish(m_microEventLists, names, fetch); }
    void finishLists(const QStringList& data = {}, const QStringList& events = {}, const QStringList& microEvents = {},
                     int fetch = -1)
    {
        finishDataList(data, fetch);
        finishEventList(events, fetch);
        finishMicroEventList(microEvents, fetch);
    }
    template <typename Exception>
    void failDataList(const Exception& exception)
    {
        m_dataLists.last().reportException(exception);
        m_dataLists.last().reportFinished();
    }
    template <typename Exception>
    void failMicroEventList(const Exception& exception)
    {
        m_microEventLists.last().reportException(exception);
        m_microEventLists.last().reportFinished();
    }

    void deliver(const Batch& batch) { emit dataGathered(batch); }

    int dataGatheredReceivers() const { return receivers(SIGNAL(dataGathered(QMap<QString, QMap<double, QVariant>>))); }

private:
    using Fetches = QVector<QFutureInterface<QStringList>>;

    void note(const QString& call) { m_log->append(call); }

    QFuture<QStringList> startFetch(const char* call, Fetches* fetches)
    {
        note(QLatin1String(call));
        QFutureInterface<QStringList> fetch;
        fetch.reportStarted();
        fetches->append(fetch);
        return fetch.future();
    }

    static void finish(Fetches& fetches, const QStringList& names, int fetch)
    {
        QFutureInterface<QStringList> list = fetch < 0 ? fetches.last() : fetches.at(fetch);
        list.reportResult(names);
        list.reportFinished();
    }

    QStringList* m_log;
    QObject* m_questioner = nullptr;
    QByteArray m_answerMember;
    Fetches m_dataLists;
    Fetches m_eventLists;
    Fetches m_microEventLists;
};

/// A connection that the test controls.
class FakeConnectionManager : public ConnectionManager
{
public:
    explicit FakeConnectionManager(QObject* parent = nullptr)
        : ConnectionManager(parent)
        , memory(boost::make_shared<FakeMemoryInterface>(&log))
    {}
    /// Deletes the models, which are children, while the log exists to which their signals are written.
    ~FakeConnectionManager() override { qDeleteAll(findChildren<QObject*>(QString(), Qt::FindDirectChildrenOnly)); }

    boost::shared_ptr<MemoryInterface> memoryInterface() override { return memory; }
    bool isConnected() const override { return connected; }

    void establish()
    {
        connected = true;
        emit connectionEstablished();
    }
    void lose()
    {
        connected = false;
        emit connectionLost();
    }
    void close()
    {
        connected = false;
        emit disconnected();
    }

    /// The calls to the memory interface since the last takeLog(), and the signals after logSignals(), in their order.
    QStringList takeLog()
    {
        QStringList lines;
        lines.swap(log);
        return lines;
    }

    QStringList log;
    bool connected = false;
    boost::shared_ptr<FakeMemoryInterface> memory; ///< reset it for a connection without a memory service
};

} // namespace Velk

#endif
