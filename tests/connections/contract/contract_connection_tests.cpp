// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "contract_connection_tests.h"

#include "contract_helpers.h"

#include <QSignalSpy>
#include <QTest>

#include <utility>

namespace Velk {

namespace {

/// The signals of a link in the order of their emission, each with what the link said of itself at that moment.
class LinkLog : public QObject
{
public:
    explicit LinkLog(RobotLink& link)
    {
        connect(&link, &RobotLink::stateChanged, this,
                [this, &link](RobotLink::State state) { add(QStringLiteral("state %1").arg(nameOf(state)), link); });
        connect(&link, &RobotLink::connectionEstablished, this,
                [this, &link] { add(QStringLiteral("established"), link); });
        connect(&link, &RobotLink::connectionLost, this, [this, &link] { add(QStringLiteral("lost"), link); });
        connect(&link, &RobotLink::disconnected, this, [this, &link] { add(QStringLiteral("disconnected"), link); });
    }

    QStringList entries;

private:
    static QString nameOf(RobotLink::State state) { return QVariant::fromValue(state).toString(); }

    void add(const QString& signal, RobotLink& link)
    {
        entries << QStringLiteral("%1: %2, %3, %4")
                       .arg(signal, nameOf(link.state()),
                            link.isConnected() ? QStringLiteral("connected") : QStringLiteral("not connected"),
                            link.memoryInterface() ? QStringLiteral("memory") : QStringLiteral("no memory"));
    }
};

const QStringList establishing{
    QStringLiteral("state Connecting: Connecting, not connected, no memory"),
    QStringLiteral("state Connected: Connected, connected, memory"),
    QStringLiteral("established: Connected, connected, memory"),
};
const QStringList losing{
    QStringLiteral("state Lost: Lost, not connected, no memory"),
    QStringLiteral("lost: Lost, not connected, no memory"),
};
const QStringList returning{
    QStringLiteral("state Connected: Connected, connected, memory"),
    QStringLiteral("established: Connected, connected, memory"),
};
const QStringList closing{
    QStringLiteral("state Disconnected: Disconnected, not connected, no memory"),
    QStringLiteral("disconnected: Disconnected, not connected, no memory"),
};

} // namespace

ContractConnectionTests::ContractConnectionTests(ContractSubjectFactory createSubject)
    : m_createSubject(std::move(createSubject))
{}

void ContractConnectionTests::aNewLinkIsDisconnectedAndWithoutAMemoryService()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();

    QCOMPARE(link->state(), RobotLink::Disconnected);
    QVERIFY(!link->isConnected());
    QVERIFY(!link->memoryInterface());
    QVERIFY(!link->url().isEmpty());
    QCOMPARE(link->losses(), SampleLosses());
}

void ContractConnectionTests::openingConnectsFromTheEventLoop()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QSignalSpy established(link.get(), &RobotLink::connectionEstablished);

    link->open();

    QCOMPARE(link->state(), RobotLink::Connecting);
    QVERIFY(!link->isConnected());
    QVERIFY(!link->memoryInterface());
    QCOMPARE(established.count(), 0);
    CONTRACT_TRY_COMPARE(established.count(), 1);
}

void ContractConnectionTests::theStateIsNewWhenASignalTellsIt_data()
{
    QTest::addColumn<bool>("isLost");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("opened and closed") << false << establishing + closing;
    QTest::newRow("lost in between") << true << establishing + losing + returning + closing;
}

void ContractConnectionTests::theStateIsNewWhenASignalTellsIt()
{
    QFETCH(bool, isLost);
    QFETCH(QStringList, expected);
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    QVERIFY(connectLink(*link));
    if (isLost) {
        subject->loseConnection();
        CONTRACT_TRY_COMPARE(link->state(), RobotLink::Lost);
        subject->restoreConnection();
        CONTRACT_TRY_COMPARE(link->state(), RobotLink::Connected);
    }
    link->close();

    QCOMPARE(log.entries, expected);
}

void ContractConnectionTests::openingAnOpenLinkDoesNothing()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    link->open();
    link->open();
    CONTRACT_TRY_VERIFY(link->isConnected());
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    link->open();
    QVERIFY(waitForSomeBatches(*subject));

    QCOMPARE(log.entries, establishing);
    QCOMPARE(link->memoryInterface().get(), memory.get());
}

void ContractConnectionTests::closingEndsTheConnectionAtOnce()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    QSignalSpy disconnected(link.get(), &RobotLink::disconnected);

    link->close();

    QCOMPARE(disconnected.count(), 1);
    QCOMPARE(link->state(), RobotLink::Disconnected);
    QVERIFY(!link->memoryInterface());
}

void ContractConnectionTests::closingAClosedLinkDoesNothing()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    link->close();
    QVERIFY(connectLink(*link));
    link->close();
    link->close();

    QCOMPARE(log.entries, establishing + closing);
}

void ContractConnectionTests::closingBeforeTheConnectionStandsTellsNoDisconnection()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    link->open();
    link->close();
    QVERIFY(waitForSomeBatches(*subject));

    QCOMPARE(log.entries, QStringList() << establishing.first() << closing.first());
}

void ContractConnectionTests::aLostConnectionIsToldWithWhatToDo()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    QSignalSpy failed(link.get(), &RobotLink::failed);

    subject->loseConnection();

    CONTRACT_TRY_VERIFY(failed.count() > 0);
    QCOMPARE(link->state(), RobotLink::Lost);
    QVERIFY(!failed.at(0).at(0).toString().isEmpty());
    QVERIFY(!failed.at(0).at(1).toString().isEmpty());
}

void ContractConnectionTests::aLostConnectionComesBackByItself()
{
    const auto subject = m_createSubject();
    subject->setData(QStringLiteral("Contract/Value"), 1);
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    subject->loseConnection();
    CONTRACT_TRY_COMPARE(link->state(), RobotLink::Lost);
    QVERIFY(!link->memoryInterface());

    subject->restoreConnection();
    CONTRACT_TRY_VERIFY(link->isConnected());

    subject->setData(QStringLiteral("Contract/Value"), 2);
    const boost::shared_ptr<MemoryInterface> memory = link->memoryInterface();
    const BatchLog log(*memory);
    QVERIFY(startWatching(*subject, *memory, log, {QStringLiteral("Contract/Value")}));
    CONTRACT_TRY_VERIFY(log.sampleCount(QStringLiteral("Contract/Value")) > 0);
    QCOMPARE(log.values(QStringLiteral("Contract/Value")).first().toInt(), 2);
}

void ContractConnectionTests::aLinkThatWasClosedWhileLostStaysClosed()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    QVERIFY(connectLink(*link));
    subject->loseConnection();
    CONTRACT_TRY_COMPARE(link->state(), RobotLink::Lost);
    const LinkLog log(*link);

    link->close();
    subject->restoreConnection();
    QVERIFY(waitForSomeBatches(*subject));

    // It was lost before: there was no connection to be closed, and none has come back.
    QCOMPARE(log.entries, QStringList() << closing.first());
}

void ContractConnectionTests::aClosedLinkCanBeOpenedAgain()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    QVERIFY(connectLink(*link));
    link->close();
    QVERIFY(connectLink(*link));
    link->close();

    QCOMPARE(log.entries, establishing + closing + establishing + closing);
}

void ContractConnectionTests::everyConnectionHasAWorkingMemoryService()
{
    const auto subject = m_createSubject();
    subject->setData(QStringLiteral("Contract/Value"), 1);
    const auto link = subject->createLink();
    QFuture<QStringList> list;
    connect(link.get(), &RobotLink::connectionEstablished, this,
            [&link, &list] { list = link->memoryInterface()->getDataList(); });

    QVERIFY(connectLink(*link));
    CONTRACT_TRY_VERIFY(list.resultCount() == 1 && list.isFinished());
    QVERIFY(list.result().contains(QStringLiteral("Contract/Value")));
    link->close();
    list = {};
    QVERIFY(connectLink(*link));
    CONTRACT_TRY_VERIFY(list.resultCount() == 1 && list.isFinished());
    QVERIFY(list.result().contains(QStringLiteral("Contract/Value")));
}

void ContractConnectionTests::aSlotMayEndTheConnection_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::addColumn<bool>("isStateSignal");
    QTest::newRow("closed when the state is reported") << false << true;
    QTest::newRow("closed when established") << false << false;
    QTest::newRow("destroyed when the state is reported") << true << true;
    QTest::newRow("destroyed when established") << true << false;
}

void ContractConnectionTests::aSlotMayEndTheConnection()
{
    QFETCH(bool, isDestroyed);
    QFETCH(bool, isStateSignal);
    const auto subject = m_createSubject();
    auto link = subject->createLink();
    const LinkLog log(*link);
    bool wasCalled = false;
    const auto end = [&] {
        if (!link->isConnected())
            return;
        wasCalled = true;
        if (isDestroyed)
            link.reset();
        else
            link->close();
    };
    if (isStateSignal)
        connect(link.get(), &RobotLink::stateChanged, this, end);
    else
        connect(link.get(), &RobotLink::connectionEstablished, this, end);

    link->open();

    CONTRACT_TRY_VERIFY(wasCalled);
    QVERIFY(waitForSomeBatches(*subject));
    QVERIFY(!link || link->state() == RobotLink::Disconnected);
    // A connection that was ended while its state was reported is not announced any more.
    QCOMPARE(log.entries.contains(establishing.last()), !isStateSignal);
}

void ContractConnectionTests::losingNothingIsNoLoss()
{
    const auto subject = m_createSubject();
    const auto link = subject->createLink();
    const LinkLog log(*link);

    subject->loseConnection();
    subject->restoreConnection();
    QVERIFY(waitForSomeBatches(*subject));

    QCOMPARE(log.entries, QStringList());
}

void ContractConnectionTests::linksAreIndependentOfEachOther()
{
    const auto subject = m_createSubject();
    const auto first = subject->createLink();
    const auto second = subject->createLink();
    QVERIFY(connectLink(*first));
    QVERIFY(connectLink(*second));
    subject->raiseEvent(QStringLiteral("Contract/Event"), 0);
    const boost::shared_ptr<MemoryInterface> firstMemory = first->memoryInterface();
    const boost::shared_ptr<MemoryInterface> secondMemory = second->memoryInterface();
    const BatchLog firstLog(*firstMemory);
    const BatchLog secondLog(*secondMemory);
    QVERIFY(startWatching(*subject, *firstMemory, firstLog, {QStringLiteral("Contract/Event")}));
    QVERIFY(startWatching(*subject, *secondMemory, secondLog, {QStringLiteral("Contract/Event")}));

    subject->raiseEvent(QStringLiteral("Contract/Event"), 1);
    CONTRACT_TRY_COMPARE(firstLog.values(QStringLiteral("Contract/Event")), QJsonArray{1});
    CONTRACT_TRY_COMPARE(secondLog.values(QStringLiteral("Contract/Event")), QJsonArray{1});
    first->close();
    subject->raiseEvent(QStringLiteral("Contract/Event"), 2);

    CONTRACT_TRY_COMPARE(secondLog.values(QStringLiteral("Contract/Event")), (QJsonArray{1, 2}));
    QCOMPARE(firstLog.values(QStringLiteral("Contract/Event")), QJsonArray{1});
}

} // namespace Velk
