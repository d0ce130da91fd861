// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_blocking_tests.h"

#include "contract_helpers.h"
#include "contract_list_tests.h"

#include <QMetaObject>
#include <QTest>

#include <functional>
#include <utility>

#include <sys/resource.h>

namespace Velk {

namespace {

const QString data = QStringLiteral("Contract/Data");

/// How often this thread has given up the processor to wait for something.
long waits()
{
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

/// Whether the call waits each time it is made. A call that the robot's threads hold up for a moment, because they
/// write into the same memory, does so now and then only. Time is not measured: a busy machine makes every call slow.
bool doesAlwaysWait(const std::function<void()>& call, int attempts = 50)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const long before = waits();
        call();
        if (waits() == before)
            return false;
    }
    return true;
}

} // namespace

ContractBlockingTests::ContractBlockingTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractBlockingTests::noCallWaitsOrRunsTheEventLoop_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"getDataList", "getEventList", "getMicroEventList", "watchKey", "unwatchKey", "unwatchAll",
                             "startWatcher", "stopWatcher", "setGatherPeriod", "setSamplingPeriod",
                             "isRealTimeSupported", "requestReport", "losses", "close and open"})
        QTest::newRow(name) << QString::fromLatin1(name);
    if (m_createSubject()->createWriter()) {
        for (const char* name : {"writer declare", "writer setRealTimeSupported", "writer put", "writer raise",
                                 "writer remove", "writer close and open"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void ContractBlockingTests::noCallWaitsOrRunsTheEventLoop()
{
    QFETCH(QString, name);
    const auto subject = m_createSubject();
    subject->setData(data, 1);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    const BatchLog log(*memory);
    QVERIFY(startWatching(*subject, *memory, log, {data}));
    const std::unique_ptr<RobotWriter> writer = subject->createWriter();
    if (writer) {
        writer->open();
        CONTRACT_TRY_VERIFY(writer->isConnected());
    }
    RealTimeAsker asker;
    const QMap<QString, std::function<void()>> calls{
        {QStringLiteral("getDataList"), [&] { memory->getDataList(); }},
        {QStringLiteral("getEventList"), [&] { memory->getEventList(); }},
        {QStringLiteral("getMicroEventList"), [&] { memory->getMicroEventList(); }},
        {QStringLiteral("watchKey"), [&] { memory->watchKey(data, 30); }},
        {QStringLiteral("unwatchKey"), [&] { memory->unwatchKey(data); }},
        {QStringLiteral("unwatchAll"), [&] { memory->unwatchAll(); }},
        {QStringLiteral("startWatcher"), [&] { memory->startWatcher(200, 20); }},
        {QStringLiteral("stopWatcher"),
         [&] {
             memory->startWatcher(200, 20);
             memory->stopWatcher();
         }},
        {QStringLiteral("setGatherPeriod"), [&] { memory->setGatherPeriod(300); }},
        {QStringLiteral("setSamplingPeriod"), [&] { memory->setSamplingPeriod(30); }},
        {QStringLiteral("isRealTimeSupported"), [&] { memory->isRealTimeSupported(&asker, "gotAnswer"); }},
        {QStringLiteral("requestReport"), [&] { link->requestReport([](const LinkReport&) {}); }},
        {QStringLiteral("losses"), [&] { link->losses(); }},
        {QStringLiteral("close and open"),
         [&] {
             link->close();
             link->open();
         }},
        {QStringLiteral("writer declare"),
         [&] {
             writer->declare({{data}, {}, {}});
         }},
        {QStringLiteral("writer setRealTimeSupported"), [&] { writer->setRealTimeSupported(true); }},
        {QStringLiteral("writer put"), [&] { writer->put(data, 2); }},
        {QStringLiteral("writer raise"), [&] { writer->raise(QStringLiteral("Contract/Event"), 2); }},
        {QStringLiteral("writer remove"), [&] { writer->remove({data}); }},
        {QStringLiteral("writer close and open"),
         [&] {
             writer->close();
             writer->open();
         }},
    };

    bool hasEventLoopRun = false;
    QMetaObject::invokeMethod(
        this, [&] { hasEventLoopRun = true; }, Qt::QueuedConnection);
    QVERIFY(!doesAlwaysWait(calls.value(name)));
    QVERIFY(!hasEventLoopRun);

    CONTRACT_TRY_VERIFY(hasEventLoopRun);
}

void ContractBlockingTests::aWaitingCallIsFound()
{
    // A sleep that ends while the machine holds the thread up on its way to sleep is no wait. It has to be a long one.
    QVERIFY(doesAlwaysWait([] { QTest::qSleep(200); }, 3));
    QVERIFY(!doesAlwaysWait([] {}));
}

} // namespace Velk
