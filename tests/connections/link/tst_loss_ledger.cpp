// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/loss_ledger.h>

#include <QTest>

using namespace Velk;

namespace {

/// "2 dropped 10-20": a span with its cause.
QString text(LossCause cause, const LossSpan& span)
{
    const char* const names[] = {"skipped", "missed", "dropped", "trimmed"};
    return QStringLiteral("%1 %2 %3-%4")
        .arg(span.count)
        .arg(QLatin1String(names[static_cast<int>(cause)]))
        .arg(span.from)
        .arg(span.to);
}

} // namespace

class TestLossLedger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewLedgerHasNoLosses();
    void aLossCountsForItsKeyAndInTheTotal();
    void aLossHasTheTimeOfTheFirstAndOfTheLastOne();
    void aTickCountsForEachKeyAndOnceInTheTotal();
    void nothingLostIsNoLoss();
    void manyLossesAreAnnouncedOnce();
    void aClearedLedgerHasNoLosses();
};

void TestLossLedger::aNewLedgerHasNoLosses()
{
    const LossLedger ledger;

    QVERIFY(ledger.total().isEmpty());
    QVERIFY(ledger.ofKey("Arm").isEmpty());
}

void TestLossLedger::aLossCountsForItsKeyAndInTheTotal()
{
    LossLedger ledger;

    ledger.record(ledger.account("Arm"), LossCause::Dropped, 2, 10, 10);
    ledger.record(ledger.account("Leg"), LossCause::Trimmed, 3, 20, 20);
    ledger.record(ledger.account("Leg"), LossCause::Dropped, 4, 20, 20);

    QCOMPARE(ledger.ofKey("Arm").losses().dropped, 2);
    QCOMPARE(ledger.ofKey("Leg").losses().trimmed, 3);
    QCOMPARE(ledger.ofKey("Leg").losses().total(), 7);
    QCOMPARE(ledger.total().losses().dropped, 6);
    QCOMPARE(ledger.total().losses().total(), 9);
}

void TestLossLedger::aLossHasTheTimeOfTheFirstAndOfTheLastOne()
{
    LossLedger ledger;

    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 10, 12);
    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 8, 9);
    ledger.record(ledger.account("Leg"), LossCause::Dropped, 1, 30, 31);

    QCOMPARE(text(LossCause::Dropped, ledger.ofKey("Arm").span(LossCause::Dropped)), QStringLiteral("2 dropped 8-12"));
    QCOMPARE(text(LossCause::Dropped, ledger.total().span(LossCause::Dropped)), QStringLiteral("3 dropped 8-31"));
}

void TestLossLedger::aTickCountsForEachKeyAndOnceInTheTotal()
{
    LossLedger ledger;

    ledger.recordTicks({ledger.account("Arm"), ledger.account("Leg")}, LossCause::MissedTick, 5, 10, 11);
    ledger.recordTicks({ledger.account("Leg")}, LossCause::SkippedTick, 1, 12, 12);

    QCOMPARE(ledger.ofKey("Arm").losses().missedTicks, 5);
    QCOMPARE(ledger.ofKey("Leg").losses().total(), 6);
    QCOMPARE(ledger.total().losses().missedTicks, 5);
    QCOMPARE(ledger.total().losses().skippedTicks, 1);
}

void TestLossLedger::nothingLostIsNoLoss()
{
    LossLedger ledger;
    int announcements = 0;
    ledger.setRecorded([&announcements] { ++announcements; });

    ledger.record(ledger.account("Arm"), LossCause::Dropped, 0, 10, 10);
    ledger.recordTicks({ledger.account("Arm")}, LossCause::MissedTick, 0, 10, 10);

    QCOMPARE(announcements, 0);
    QVERIFY(ledger.total().isEmpty());
}

void TestLossLedger::manyLossesAreAnnouncedOnce()
{
    LossLedger ledger;
    int announcements = 0;
    ledger.setRecorded([&announcements] { ++announcements; });

    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 10, 10);
    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 11, 11);
    QCOMPARE(announcements, 1);
    ledger.rearm();
    QCOMPARE(announcements, 1);
    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 12, 12);

    QCOMPARE(announcements, 2);
}

void TestLossLedger::aClearedLedgerHasNoLosses()
{
    LossLedger ledger;
    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 10, 10);
    ledger.rearm();
    ledger.record(ledger.account("Arm"), LossCause::Dropped, 1, 11, 11);

    ledger.clear();

    QVERIFY(ledger.total().isEmpty());
    QVERIFY(ledger.ofKey("Arm").isEmpty());
}

QTEST_APPLESS_MAIN(TestLossLedger)
#include "tst_loss_ledger.moc"
