// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_list_tests.h"

#include "contract_helpers.h"

#include <QFutureWatcher>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <array>
#include <utility>

namespace Velk {

namespace {

constexpr const char* realTimeMember = "gotAnswer";

struct Lists
{
    QFuture<QStringList> data;
    QFuture<QStringList> events;
    QFuture<QStringList> microEvents;

    explicit Lists(MemoryInterface& memory)
        : data(memory.getDataList())
        , events(memory.getEventList())
        , microEvents(memory.getMicroEventList())
    {}

    bool areFinished() const { return data.isFinished() && events.isFinished() && microEvents.isFinished(); }
    /// "1 1 1" when each has reported its one result, and "cancelled" after a cancelled one.
    QString resultCounts() const
    {
        QStringList texts;
        for (const QFuture<QStringList>& list : {data, events, microEvents})
            texts << QString::number(list.resultCount()) + QLatin1String(list.isCanceled() ? " cancelled" : "");
        return texts.join(QLatin1Char(' '));
    }
};

/// Our own names in a list, sorted: a robot may have keys of its own.
QStringList contractNames(const QFuture<QStringList>& list)
{
    QStringList names = list.result().filter(QStringLiteral("Contract/"));
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

ContractListTests::ContractListTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void RealTimeAsker::gotAnswer(bool supported)
{
    ++answers;
    isSupported = supported;
    thread = QThread::currentThread(); // last: the test waits for it
}

void ContractListTests::eachListNamesTheKeysOfItsKind()
{
    const auto subject = m_createSubject();
    subject->setData(QStringLiteral("Contract/Data/1"), 1);
    subject->setData(QStringLiteral("Contract/Data/2"), 2);
    subject->raiseEvent(QStringLiteral("Contract/Event"), true);
    subject->raiseMicroEvent(QStringLiteral("Contract/MicroEvent"), true);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const Lists lists(*link->memoryInterface());

    CONTRACT_TRY_VERIFY(lists.areFinished());
    QCOMPARE(contractNames(lists.data),
             QStringList({QStringLiteral("Contract/Data/1"), QStringLiteral("Contract/Data/2")}));
    QCOMPARE(contractNames(lists.events), QStringList(QStringLiteral("Contract/Event")));
    QCOMPARE(contractNames(lists.microEvents), QStringList(QStringLiteral("Contract/MicroEvent")));
}

void ContractListTests::aNameIsListedOnce()
{
    const auto subject = m_createSubject();
    subject->setData(QStringLiteral("Contract/Data"), 1);
    subject->setData(QStringLiteral("Contract/Data"), 2);
    subject->raiseEvent(QStringLiteral("Contract/Event"), 1);
    subject->raiseEvent(QStringLiteral("Contract/Event"), 2);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const Lists lists(*link->memoryInterface());

    CONTRACT_TRY_VERIFY(lists.areFinished());
    QCOMPARE(contractNames(lists.data), QStringList(QStringLiteral("Contract/Data")));
    QCOMPARE(contractNames(lists.events), QStringList(QStringLiteral("Contract/Event")));
}

void ContractListTests::aRemovedKeyIsNotListed()
{
    const auto subject = m_createSubject();
    for (const QString& name :
         {QStringLiteral("Contract/A"), QStringLiteral("Contract/B"), QStringLiteral("Contract/C")})
        subject->setData(name, 1);
    subject->removeKey(QStringLiteral("Contract/A"));
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const QFuture<QStringList> list = link->memoryInterface()->getDataList();

    CONTRACT_TRY_VERIFY(list.isFinished());
    QCOMPARE(contractNames(list), QStringList({QStringLiteral("Contract/B"), QStringLiteral("Contract/C")}));
}

void ContractListTests::aKeyThatComesLaterIsListedByTheNextFetch()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    const QFuture<QStringList> before = link->memoryInterface()->getDataList();
    CONTRACT_TRY_VERIFY(before.isFinished());
    QCOMPARE(contractNames(before), QStringList());

    subject->setData(QStringLiteral("Contract/Late"), 1);
    const QFuture<QStringList> after = link->memoryInterface()->getDataList();

    CONTRACT_TRY_VERIFY(after.isFinished());
    QCOMPARE(contractNames(after), QStringList(QStringLiteral("Contract/Late")));
}

void ContractListTests::namesArriveAsTheyAreSpelt_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("path") << QStringLiteral("Contract/Arm/Elbow/Position");
    QTest::newRow("blanks") << QStringLiteral(" Contract/ Arm ");
    QTest::newRow("not Latin") << QStringLiteral("Contract/Größe/関節");
    QTest::newRow("beyond 16 bits") << QStringLiteral("Contract/\U0001F916");
    QTest::newRow("punctuation") << QStringLiteral("Contract/a;b:c\"d'e\\f*[g]{h}?%41");
}

void ContractListTests::namesArriveAsTheyAreSpelt()
{
    QFETCH(QString, name);
    const auto subject = m_createSubject();
    subject->setData(name, 1);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    const BatchLog log(*memory);

    const QFuture<QStringList> list = memory->getDataList();
    QVERIFY(startWatching(*subject, *memory, log, {name}));

    CONTRACT_TRY_VERIFY(list.isFinished());
    QVERIFY(list.result().contains(name));
    CONTRACT_TRY_VERIFY(log.sampleCount(name) > 0);
}

void ContractListTests::aListIsAStartedOperationWithOneResult()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const Lists lists(*link->memoryInterface());

    QVERIFY(lists.data.isStarted());
    QVERIFY(lists.events.isStarted());
    QVERIFY(lists.microEvents.isStarted());
    CONTRACT_TRY_VERIFY(lists.areFinished());
    QCOMPARE(lists.resultCounts(), QStringLiteral("1 1 1"));
}

void ContractListTests::thousandsOfNamesAreListed()
{
    constexpr int count = 3000;
    const auto subject = m_createSubject();
    for (int i = 0; i < count; ++i)
        subject->setData(QStringLiteral("Contract/Data/%1").arg(i), i);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const QFuture<QStringList> list = link->memoryInterface()->getDataList();

    CONTRACT_TRY_VERIFY(list.isFinished());
    const QStringList names = contractNames(list);
    QCOMPARE(names.size(), count);
    QVERIFY(names.contains(QStringLiteral("Contract/Data/%1").arg(count - 1)));
}

void ContractListTests::aListEndsWithOneResultWhateverHappens_data()
{
    QTest::addColumn<QString>("event");
    QTest::newRow("the connection stands") << QString();
    QTest::newRow("the link is closed") << QStringLiteral("close");
    QTest::newRow("the link is destroyed") << QStringLiteral("destroy");
    QTest::newRow("the connection is lost") << QStringLiteral("lose");
}

void ContractListTests::aListEndsWithOneResultWhateverHappens()
{
    QFETCH(QString, event);
    const auto subject = m_createSubject();
    auto link = subject->createLink();
    QVERIFY(connectLink(*link));

    const Lists lists(*link->memoryInterface());
    if (event == QLatin1String("close"))
        link->close();
    else if (event == QLatin1String("destroy"))
        link.reset();
    else if (event == QLatin1String("lose"))
        subject->loseConnection();

    CONTRACT_TRY_VERIFY(lists.areFinished());
    QCOMPARE(lists.resultCounts(), QStringLiteral("1 1 1"));
}

void ContractListTests::aServiceWithoutConnectionGivesEmptyLists()
{
    const auto subject = m_createSubject();
    subject->setData(QStringLiteral("Contract/Data"), 1);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    link->close();

    const Lists lists(*memory);

    QVERIFY(lists.data.isStarted());
    CONTRACT_TRY_VERIFY(lists.areFinished());
    QCOMPARE(lists.resultCounts(), QStringLiteral("1 1 1"));
    QCOMPARE(lists.data.result(), QStringList());
}

void ContractListTests::theRealTimeAnswerComesFromTheEventLoopOnce()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    RealTimeAsker asker;

    link->memoryInterface()->isRealTimeSupported(&asker, realTimeMember);

    QCOMPARE(asker.answers, 0);
    CONTRACT_TRY_COMPARE(asker.answers, 1);
    QCOMPARE(asker.isSupported, subject->isRealTimeSupported());
    QVERIFY(waitForSomeBatches(*subject));
    QCOMPARE(asker.answers, 1);
}

void ContractListTests::theRealTimeAnswerComesOnTheReceiversThread()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    RealTimeAsker asker;
    QThread thread;
    asker.moveToThread(&thread);
    thread.start();

    link->memoryInterface()->isRealTimeSupported(&asker, realTimeMember);

    const bool isAnswered = QTest::qWaitFor([&asker] { return asker.thread != nullptr; }, contractTimeoutMs);
    const QThread* const answeredOn = asker.thread;
    thread.quit();
    thread.wait();
    QVERIFY(isAnswered);
    QCOMPARE(answeredOn, &thread);
}

void ContractListTests::aReceiverMayBeGoneBeforeTheRealTimeAnswer()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    auto gone = std::make_unique<RealTimeAsker>();
    RealTimeAsker asker;

    link->memoryInterface()->isRealTimeSupported(gone.get(), realTimeMember);
    gone.reset();
    link->memoryInterface()->isRealTimeSupported(&asker, realTimeMember);

    CONTRACT_TRY_COMPARE(asker.answers, 1);
}

void ContractListTests::theRealTimeAnswerMayOutliveTheConnection()
{
    const auto subject = m_createSubject();
    auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    link.reset();
    RealTimeAsker asker;

    memory->isRealTimeSupported(&asker, realTimeMember);

    // Without a robot nothing is promised about real time, but a question does not stay without an answer.
    CONTRACT_TRY_COMPARE(asker.answers, 1);
    QVERIFY(!asker.isSupported);
}

} // namespace Velk
