// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/patient_try.h"
#include "test_link.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Velk;

/// What a link reports beside its states: failures, losses, real-time sampling, and the report on demand.
class TestRobotLinkReports : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_log.clear(); }

    void theSameFailureIsReportedOnceUntilConnectedOrOpenedAgain();
    void lossesOfManyCallsAreAnnouncedOncePerTurn();
    void whatIsCountedElsewhereIsCollectedBeforeTheLedgerIsRead();
    void openingForgetsTheLossesAndClosingDoesNot();
    void theRealTimeAnswerIsAnnouncedOnceForEachConnection();
    void theRealTimeAnswerEndsWithTheConnection();
    void theRealTimeAnswerOfAnEndedConnectionIsNotAnnounced();
    void theReportIsEmptyAndComesFromTheEventLoop();
    void thereIsNoReportWithoutAConnection();
    void thereIsNoReportAfterTheConnectionHasEnded();

private:
    QStringList m_log;
};

void TestRobotLinkReports::theSameFailureIsReportedOnceUntilConnectedOrOpenedAgain()
{
    TestLink link(&m_log);
    QSignalSpy failed(&link, &RobotLink::failed);
    link.open();
    link.reportFailure("Refused", "by a");
    link.reportFailure("Refused", "by b");
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 2);

    link.establish();
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 3);
    link.close();
    link.open();
    link.reportFailure("Refused", "by a");
    QCOMPARE(failed.count(), 4);
}

void TestRobotLinkReports::lossesOfManyCallsAreAnnouncedOncePerTurn()
{
    TestLink link(&m_log);
    QSignalSpy recorded(&link, &RobotLink::lossesRecorded);
    qint64 announced = 0;
    connect(&link, &RobotLink::lossesRecorded, this,
            [&] { announced = link.lossLedger().total().span(LossCause::Dropped).count; });

    for (int i = 0; i < 10; ++i)
        link.ledger().record(link.ledger().account("Arm"), LossCause::Dropped, 1, i, i);
    QCOMPARE(recorded.count(), 0);
    QTRY_COMPARE(recorded.count(), 1);
    QCOMPARE(announced, 10);
    link.ledger().record(link.ledger().account("Arm"), LossCause::Dropped, 1, 10, 10);

    QTRY_COMPARE(recorded.count(), 2);
    QCOMPARE(announced, 11);
    QCOMPARE(link.losses().dropped, 11);
}

void TestRobotLinkReports::whatIsCountedElsewhereIsCollectedBeforeTheLedgerIsRead()
{
    TestLink link(&m_log);
    link.uncollected = 3;

    QCOMPARE(link.losses("Arm").dropped, 3);
    QCOMPARE(link.losses().total(), 3);
    QCOMPARE(link.losses("Leg"), SampleLosses());
}

void TestRobotLinkReports::openingForgetsTheLossesAndClosingDoesNot()
{
    TestLink link(&m_log);
    link.open();
    link.ledger().record(link.ledger().account("Arm"), LossCause::Trimmed, 1, 1, 1);
    link.establish();
    link.lose("Gone", "far");
    link.establish();
    link.close();
    QCOMPARE(link.losses().trimmed, 1);

    link.open();

    QCOMPARE(link.losses(), SampleLosses());
}

void TestRobotLinkReports::theRealTimeAnswerIsAnnouncedOnceForEachConnection()
{
    TestLink link(&m_log);
    QSignalSpy answered(&link, &RobotLink::realTimeSupportAnswered);
    link.open();
    link.establish();
    QVERIFY(!link.realTimeSupport());

    link.setRealTimeSupport(true);
    link.setRealTimeSupport(true);
    QCOMPARE(answered.count(), 0);
    QTRY_COMPARE(answered.count(), 1);
    QCOMPARE(answered.at(0).at(0).toBool(), true);
    QCOMPARE(link.realTimeSupport(), std::optional<bool>(true));

    link.lose("Gone", "far");
    link.establish();
    link.setRealTimeSupport(false);
    QTRY_COMPARE(answered.count(), 2);
    QCOMPARE(answered.at(1).at(0).toBool(), false);
}

void TestRobotLinkReports::theRealTimeAnswerEndsWithTheConnection()
{
    TestLink link(&m_log);
    link.setRealTimeSupport(true);
    QVERIFY(!link.realTimeSupport());
    link.open();
    link.establish();
    link.setRealTimeSupport(true);

    link.lose("Gone", "far");
    QVERIFY(!link.realTimeSupport());
    link.establish();
    link.setRealTimeSupport(true);
    link.close();

    QVERIFY(!link.realTimeSupport());
}

void TestRobotLinkReports::theRealTimeAnswerOfAnEndedConnectionIsNotAnnounced()
{
    TestLink link(&m_log);
    QSignalSpy answered(&link, &RobotLink::realTimeSupportAnswered);
    link.open();
    link.establish();
    link.setRealTimeSupport(true);

    link.lose("Gone", "far");
    link.establish();
    QCoreApplication::processEvents();

    QCOMPARE(answered.count(), 0);
}

void TestRobotLinkReports::theReportIsEmptyAndComesFromTheEventLoop()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    int reports = 0;
    int lines = -1;

    link.requestReport([&](const LinkReport& report) {
        ++reports;
        lines = int(report.lines.size());
    });

    QCOMPARE(reports, 0);
    QTRY_COMPARE(reports, 1);
    QCOMPARE(lines, 0);
}

void TestRobotLinkReports::thereIsNoReportWithoutAConnection()
{
    TestLink link(&m_log);
    int reports = 0;
    link.requestReport([&](const LinkReport&) { ++reports; });
    link.open();
    link.requestReport([&](const LinkReport&) { ++reports; });

    QCoreApplication::processEvents();

    QCOMPARE(reports, 0);
}

void TestRobotLinkReports::thereIsNoReportAfterTheConnectionHasEnded()
{
    TestLink link(&m_log);
    link.open();
    link.establish();
    int reports = 0;
    link.requestReport([&](const LinkReport&) { ++reports; });

    link.lose("Gone", "far");
    link.establish();
    QCoreApplication::processEvents();

    QCOMPARE(reports, 0);
}

QTEST_GUILESS_MAIN(TestRobotLinkReports)
#include "tst_robot_link_reports.moc"
