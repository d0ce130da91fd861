// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/connection_status.h>

#include <QTest>

using namespace Velk;

class TestConnectionStatus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void namesTheStateAndItsDuration_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("text");
        QTest::newRow("disconnected") << int(RobotLink::Disconnected) << QStringLiteral("Disconnected for 1 min 5 s");
        QTest::newRow("connecting") << int(RobotLink::Connecting) << QStringLiteral("Connecting for 1 min 5 s");
        QTest::newRow("connected") << int(RobotLink::Connected) << QStringLiteral("Connected for 1 min 5 s");
        QTest::newRow("lost") << int(RobotLink::Lost) << QStringLiteral("Connection lost for 1 min 5 s, trying again");
    }

    void namesTheStateAndItsDuration()
    {
        QFETCH(int, state);
        const QDateTime since = QDateTime::fromSecsSinceEpoch(1000);
        ConnectionStatus status;

        status.setState(RobotLink::State(state), since);

        QTEST(status.text(since.addSecs(65)), "text");
    }

    void withoutARobotThereIsNoDuration()
    {
        QCOMPARE(ConnectionStatus().text(QDateTime::fromSecsSinceEpoch(5)), QStringLiteral("Disconnected"));
    }

    void theSameStateAgainKeepsItsTime()
    {
        const QDateTime since = QDateTime::fromSecsSinceEpoch(1000);
        ConnectionStatus status;
        status.setState(RobotLink::Connected, since);

        status.setState(RobotLink::Connected, since.addSecs(10));

        QCOMPARE(status.text(since.addSecs(20)), QStringLiteral("Connected for 20 s"));
    }

    void durations_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << qint64(0) << QStringLiteral("0 s");
        QTest::newRow("a clock that was set back") << qint64(-5) << QStringLiteral("0 s");
        QTest::newRow("seconds") << qint64(59) << QStringLiteral("59 s");
        QTest::newRow("a minute") << qint64(60) << QStringLiteral("1 min 0 s");
        QTest::newRow("minutes") << qint64(3599) << QStringLiteral("59 min 59 s");
        QTest::newRow("an hour") << qint64(3600) << QStringLiteral("1 h 0 min");
        QTest::newRow("hours") << qint64(86399) << QStringLiteral("23 h 59 min");
        QTest::newRow("days") << qint64(2 * 86400 + 3 * 3600) << QStringLiteral("2 d 3 h");
    }

    void durations()
    {
        QFETCH(qint64, seconds);

        QTEST(ConnectionStatus::durationText(seconds), "text");
    }
};

QTEST_APPLESS_MAIN(TestConnectionStatus)
#include "tst_connection_status.moc"
