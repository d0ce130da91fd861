// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "embedded_session.h"

#include <QFuture>
#include <QSignalSpy>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace Velk;

class RealTimeListener : public QObject
{
    Q_OBJECT

public:
    explicit RealTimeListener(QStringList& answers)
        : m_answers(answers)
    {}

public Q_SLOTS:
    void gotAnswer(bool supported) { m_answers << (supported ? QStringLiteral("yes") : QStringLiteral("no")); }

private:
    QStringList& m_answers;
};

class TestEmbeddedLink : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theLinkHasTheMemoryThatItWasGiven();
    void aLinkWithoutAMemoryMakesOne();
    void theRealTimeAnswerIsSetForTheNextConnection();
    void listsFinishFromTheEventLoop();
    void aMillionNamesAreListed();
    void eventsOfManyThreadsAreAllDelivered();
    void writersMayGoOnWhileTheLinkComesAndGoes();
};

void TestEmbeddedLink::theLinkHasTheMemoryThatItWasGiven()
{
    const auto memory = std::make_shared<RobotMemory>();
    const EmbeddedLink link(memory);

    QCOMPARE(link.memory().get(), memory.get());
    QCOMPARE(link.url(), QStringLiteral("embedded:"));
    QVERIFY(link.isRealTimeSupported());
    QCOMPARE(link.bufferCapacity(), 4096);
}

void TestEmbeddedLink::aLinkWithoutAMemoryMakesOne()
{
    const EmbeddedLink link(std::shared_ptr<RobotMemory>(nullptr));

    QVERIFY(link.memory());
}

void TestEmbeddedLink::theRealTimeAnswerIsSetForTheNextConnection()
{
    EmbeddedLink link(std::make_shared<RobotMemory>());
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    QStringList answers;
    RealTimeListener listener(answers);

    link.setRealTimeSupported(false);
    link.memoryInterface()->isRealTimeSupported(&listener, "gotAnswer");
    QTRY_COMPARE_WITH_TIMEOUT(answers, QStringList(QStringLiteral("yes")), timeoutMs);
    link.close();
    link.open();
    QTRY_VERIFY_WITH_TIMEOUT(link.isConnected(), timeoutMs);
    link.memoryInterface()->isRealTimeSupported(&listener, "gotAnswer");

    QTRY_COMPARE_WITH_TIMEOUT(answers, QStringList({QStringLiteral("yes"), QStringLiteral("no")}), timeoutMs);
}

void TestEmbeddedLink::listsFinishFromTheEventLoop()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);

    const QFuture<QStringList> list = session.service->getDataList();

    QVERIFY(list.isStarted());
    QVERIFY(!list.isFinished());
    QTRY_VERIFY_WITH_TIMEOUT(list.isFinished(), timeoutMs);
}

void TestEmbeddedLink::aMillionNamesAreListed()
{
    constexpr int count = 1000000;
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    for (int i = 0; i < count; ++i)
        session.memory->declareData(QString::number(i));

    const QFuture<QStringList> list = session.service->getDataList();
    // The robot's code goes on meanwhile; the list is that of the moment of the question.
    session.memory->declareData(QStringLiteral("late"));

    QTRY_VERIFY_WITH_TIMEOUT(list.isFinished(), timeoutMs);
    QCOMPARE(list.result().size(), count);
    QCOMPARE(session.memory->dataNames().size(), count + 1);
}

void TestEmbeddedLink::eventsOfManyThreadsAreAllDelivered()
{
    constexpr int threadCount = 4;
    constexpr int occurrences = 1000;
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    QStringList expected;
    for (int i = 0; i < occurrences; ++i)
        expected << QString::number(i);
    for (int t = 0; t < threadCount; ++t)
        session.service->watchKey(QString::number(t), 100);
    session.service->watchKey(QStringLiteral("shared"), 100);
    session.service->startWatcher(20, 10);

    std::vector<std::thread> robot;
    for (int t = 0; t < threadCount; ++t) {
        robot.emplace_back([&session, t] {
            for (int i = 0; i < occurrences; ++i) {
                session.memory->raiseEvent(QString::number(t), i);
                session.memory->raiseMicroEvent(QStringLiteral("shared"), i);
            }
        });
    }
    for (std::thread& thread : robot)
        thread.join();

    for (int t = 0; t < threadCount; ++t)
        QTRY_COMPARE_WITH_TIMEOUT(session.values.value(QString::number(t)), expected, timeoutMs);
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(QStringLiteral("shared")).size(), threadCount * occurrences,
                              timeoutMs);
    QList<double> stamps = session.stamps.value(QStringLiteral("shared"));
    QVERIFY(std::adjacent_find(stamps.begin(), stamps.end(), std::greater_equal<double>()) == stamps.end());
}

void TestEmbeddedLink::writersMayGoOnWhileTheLinkComesAndGoes()
{
    const auto memory = std::make_shared<RobotMemory>();
    std::atomic<bool> isStopping{false};
    std::vector<std::thread> robot;
    for (int t = 0; t < 2; ++t) {
        robot.emplace_back([&memory, &isStopping] {
            for (int i = 0; !isStopping; ++i) {
                memory->setData(QString::number(i % 10), i);
                memory->raiseEvent(anEvent, i);
                memory->removeKey(QString::number((i + 5) % 10));
            }
        });
    }

    int batches = 0;
    bool isConnected = true;
    for (int round = 0; round < 5 && isConnected; ++round) {
        EmbeddedLink link(memory);
        link.open();
        isConnected = QTest::qWaitFor([&link] { return link.isConnected(); }, timeoutMs);
        const boost::shared_ptr<MemoryInterface> service = link.memoryInterface();
        connect(service.get(), &MemoryInterface::dataGathered, this, [&batches] { ++batches; });
        for (int i = 0; i < 10; ++i)
            service->watchKey(QString::number(i), 1);
        service->watchKey(anEvent, 1);
        service->startWatcher(5, 0);
        const int before = batches;
        isConnected = isConnected && QTest::qWaitFor([&] { return batches >= before + 3; }, timeoutMs);
        service->unwatchKey(QString::number(round));
    }
    isStopping = true;
    for (std::thread& thread : robot)
        thread.join();

    QVERIFY(isConnected);
    QVERIFY(batches >= 15);
}

QTEST_GUILESS_MAIN(TestEmbeddedLink)
#include "tst_embedded_link.moc"
