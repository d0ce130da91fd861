// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_blocking_tests.h"

#include "contract_list_tests.h"
#include "contract_session.h"

#include <QMetaObject>
#include <QTest>

#include <functional>
#include <utility>

#include <sys/resource.h>

namespace Velk {

namespace {

/// What an application has when it makes a call: a link that delivers values of `data`, and a writer.
struct WatchedRobot : ContractSession
{
    explicit WatchedRobot(const ContractSubjectFactory& createSubject)
        : ContractSession(createSubject)
        , writer(subject->createWriter())
    {
        subject->setData(data, 1);
        subject->setData(otherData, 1);
    }

    /// Waits until values are delivered and the writer is connected.
    bool start()
    {
        if (!startWatching({data}))
            return false;
        if (!writer)
            return true;
        writer->open();
        return QTest::qWaitFor([this] { return writer->isConnected(); }, contractTimeoutMs);
    }

    RealTimeAsker asker;
    std::unique_ptr<RobotWriter> writer;
};

using Step = std::function<void(WatchedRobot&)>;

struct Call
{
    Step call;
    Step prepare = nullptr; ///< what has to come before, so that the call has something to do
};

/// The calls by name. Each is made on a robot that is watched.
QMap<QString, Call> linkCalls()
{
    return {
        {QStringLiteral("getDataList"), {[](WatchedRobot& robot) { robot.memory->getDataList(); }}},
        {QStringLiteral("getEventList"), {[](WatchedRobot& robot) { robot.memory->getEventList(); }}},
        {QStringLiteral("getMicroEventList"), {[](WatchedRobot& robot) { robot.memory->getMicroEventList(); }}},
        {QStringLiteral("watchKey"), {[](WatchedRobot& robot) { robot.memory->watchKey(otherData, 30); }}},
        {QStringLiteral("watchKey, another period"), {[](WatchedRobot& robot) { robot.memory->watchKey(data, 30); }}},
        {QStringLiteral("unwatchKey"), {[](WatchedRobot& robot) { robot.memory->unwatchKey(data); }}},
        {QStringLiteral("unwatchAll"), {[](WatchedRobot& robot) { robot.memory->unwatchAll(); }}},
        {QStringLiteral("startWatcher"),
         {[](WatchedRobot& robot) { robot.memory->startWatcher(200, 20); },
          [](WatchedRobot& robot) { robot.memory->stopWatcher(); }}},
        {QStringLiteral("stopWatcher"), {[](WatchedRobot& robot) { robot.memory->stopWatcher(); }}},
        {QStringLiteral("setGatherPeriod"), {[](WatchedRobot& robot) { robot.memory->setGatherPeriod(300); }}},
        {QStringLiteral("setSamplingPeriod"), {[](WatchedRobot& robot) { robot.memory->setSamplingPeriod(30); }}},
        {QStringLiteral("isRealTimeSupported"),
         {[](WatchedRobot& robot) { robot.memory->isRealTimeSupported(&robot.asker, "gotAnswer"); }}},
        {QStringLiteral("requestReport"),
         {[](WatchedRobot& robot) { robot.link->requestReport([](const LinkReport&) {}); }}},
        {QStringLiteral("losses"), {[](WatchedRobot& robot) { robot.link->losses(); }}},
        {QStringLiteral("close"), {[](WatchedRobot& robot) { robot.link->close(); }}},
        {QStringLiteral("open"),
         {[](WatchedRobot& robot) { robot.link->open(); }, [](WatchedRobot& robot) { robot.link->close(); }}},
        {QStringLiteral("close and open"), {[](WatchedRobot& robot) {
             robot.link->close();
             robot.link->open();
         }}},
    };
}

QMap<QString, Call> writerCalls()
{
    return {
        {QStringLiteral("writer declare"), {[](WatchedRobot& robot) {
             robot.writer->declare({{data}, {}, {}});
         }}},
        {QStringLiteral("writer setRealTimeSupported"),
         {[](WatchedRobot& robot) { robot.writer->setRealTimeSupported(true); }}},
        {QStringLiteral("writer put"), {[](WatchedRobot& robot) { robot.writer->put(data, 2); }}},
        {QStringLiteral("writer raise"), {[](WatchedRobot& robot) { robot.writer->raise(anEvent, 2); }}},
        {QStringLiteral("writer remove"), {[](WatchedRobot& robot) { robot.writer->remove({data}); }}},
        {QStringLiteral("writer close"), {[](WatchedRobot& robot) { robot.writer->close(); }}},
        {QStringLiteral("writer open"),
         {[](WatchedRobot& robot) { robot.writer->open(); }, [](WatchedRobot& robot) { robot.writer->close(); }}},
        {QStringLiteral("writer close and open"), {[](WatchedRobot& robot) {
             robot.writer->close();
             robot.writer->open();
         }}},
    };
}

/// How often this thread has given up the processor to wait for something.
long waits()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

/// Whether this thread waits for something in the call. Time is not measured: a busy machine makes every call slow.
template <typename Function>
bool doesWait(const Function& call)
{
    const long before = waits();
    call();
    return waits() != before;
}

} // namespace

ContractBlockingTests::ContractBlockingTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractBlockingTests::noCallWaitsOrRunsTheEventLoop_data()
{
    QTest::addColumn<QString>("name");
    QStringList names = linkCalls().keys();
    if (m_createSubject()->createWriter())
        names += writerCalls().keys();
    for (const QString& name : std::as_const(names))
        QTest::newRow(qPrintable(name)) << name;
}

void ContractBlockingTests::noCallWaitsOrRunsTheEventLoop()
{
    QFETCH(QString, name);
    const Call call = linkCalls().contains(name) ? linkCalls().value(name) : writerCalls().value(name);

    // The robot's threads, which write into the same memory, can hold a call up for a moment: now and then, not each
    // time. Each attempt has a robot of its own, because the second of two equal calls often has nothing to do.
    bool hasWaited = true;
    for (int attempt = 0; attempt < 10 && hasWaited; ++attempt) {
        WatchedRobot robot(m_createSubject);
        QVERIFY(robot.start());
        if (call.prepare)
            call.prepare(robot);
        bool hasEventLoopRun = false;
        QObject context;
        QMetaObject::invokeMethod(
            &context, [&] { hasEventLoopRun = true; }, Qt::QueuedConnection);
        hasWaited = doesWait([&] { call.call(robot); });
        QVERIFY(!hasEventLoopRun);
        CONTRACT_TRY_VERIFY(hasEventLoopRun);
    }
    QVERIFY2(!hasWaited, "The thread has waited in each of ten calls.");
}

void ContractBlockingTests::aWaitingCallIsFound()
{
    // A short sleep can be over before the thread has given up the processor; it is then not counted.
    QVERIFY(doesWait([] { QTest::qSleep(200); }));
}

} // namespace Velk
