// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/recent_robots.h>

#include <QTest>

using namespace Velk;

class TestRecentRobots : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNewestComesFirst()
    {
        RecentRobots robots;
        robots.add(QStringLiteral("sim:"));
        robots.add(QStringLiteral("host:"));

        QCOMPARE(robots.urls(), QStringList({QStringLiteral("host:"), QStringLiteral("sim:")}));
    }

    void aRobotThatIsOpenedAgainMovesToTheFront()
    {
        RecentRobots robots({QStringLiteral("a:"), QStringLiteral("b:"), QStringLiteral("c:")});

        robots.add(QStringLiteral("c:"));

        QCOMPARE(robots.urls(), QStringList({QStringLiteral("c:"), QStringLiteral("a:"), QStringLiteral("b:")}));
    }

    void theOldestDropsOut()
    {
        RecentRobots robots;
        for (int number = 0; number < RecentRobots::maxCount + 1; ++number)
            robots.add(QStringLiteral("sim:?seed=%1").arg(number));

        QCOMPARE(robots.urls().size(), qsizetype(RecentRobots::maxCount));
        QCOMPARE(robots.urls().last(), QStringLiteral("sim:?seed=1"));
    }

    void aStoredListIsCleanedUp()
    {
        const RecentRobots robots({QStringLiteral("a:"), QString(), QStringLiteral("b:"), QStringLiteral("a:")});

        QCOMPARE(robots.urls(), QStringList({QStringLiteral("a:"), QStringLiteral("b:")}));
    }
};

QTEST_APPLESS_MAIN(TestRecentRobots)
#include "tst_recent_robots.moc"
