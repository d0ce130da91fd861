// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/period_text.h>

#include "support/fake_robot_link.h"

#include <session/robot_session.h>

#include <QTest>

using namespace Velk;

class TestPeriodText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextStatesWhatIsInForce_data()
    {
        QTest::addColumn<int>("wanted");
        QTest::addColumn<int>("granted");
        QTest::addColumn<int>("min");
        QTest::addColumn<QString>("text");
        QTest::newRow("granted") << 500 << 500 << 200
                                 << QStringLiteral("500 ms in force, this robot gives 200 ms and more");
        QTest::newRow("faster than the robot")
            << 10 << 200 << 200 << QStringLiteral("10 ms asked, this robot gives 200 ms and more: 200 ms in force");
        QTest::newRow("chosen on a faster robot")
            << 10 << 10 << 200 << QStringLiteral("10 ms in force, below the 200 ms that this robot gives");
        QTest::newRow("slower than any robot")
            << 20000000 << 9999990 << 10
            << QStringLiteral("20000000 ms asked, this robot gives 9999990 ms at most: 9999990 ms in force");
    }

    void theTextStatesWhatIsInForce()
    {
        QFETCH(int, wanted);
        QFETCH(int, granted);
        QFETCH(int, min);

        QTEST(PeriodText::of(wanted, granted, min, 9999990), "text");
    }

    void theFiguresAreThoseOfTheSession()
    {
        RobotSession session(std::make_unique<FakeRobotLink>());
        session.setWantedPeriod(10);

        QCOMPARE(PeriodText::of(session),
                 QStringLiteral("10 ms asked, this robot gives 200 ms and more: 200 ms in force"));
    }
};

QTEST_MAIN(TestPeriodText)
#include "tst_period_text.moc"
