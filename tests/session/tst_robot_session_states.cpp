// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include "session_on_fake_robot.h"

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

// A session, and what an application asked of it.
class DrivenSession : public SessionOnFakeRobot
{
public:
    void run(const QString& event)
    {
        if (event == "connect") {
            connectRobot();
        } else if (event == "lose") {
            link->lose();
        } else if (event == "close") {
            link->close();
        } else if (event == "first list") {
            finishFetch(0);
        } else if (event == "second list") {
            finishFetch(1);
        } else if (event == "late lists") {
            finishLateFetches();
        } else if (event == "real time") {
            if (link->isConnected() && !link->realTimeSupport())
                answerRealTimeSupported(true);
        } else if (event == "watch A") {
            watched.insert("A");
            session.watch(keySet({"A"}));
        } else if (event == "unwatch A") {
            watched.remove("A");
            session.unwatch(keySet({"A"}));
        } else if (event == "watch X by name") {
            watched.insert("X");
            session.watchByName("X");
        } else if (event == "add B to the set") {
            watched.insert("B");
            session.displayedKeys()->addKeys(keySet({"B"}));
        } else if (event == "remove A from the set") {
            removeFromSet();
        } else if (event == "period") {
            session.setWantedPeriod(50);
        } else if (event == "pause") {
            session.setWatcherWanted(false);
        } else if (event == "resume") {
            session.setWatcherWanted(true);
        } else if (event == "batch") {
            m_time += 1.0;
            if (link->isConnected())
                link->memory->deliver({{"A", {{m_time, 1}}}, {"B", {{m_time, 1}}}});
        } else {
            qFatal("no event %s", qPrintable(event));
        }
    }

    QSet<QString> watched;

private:
    // Removes what is displayed: a key that is not displayed cannot be removed.
    void removeFromSet()
    {
        if (displayed().contains("A"))
            watched.remove("A");
        session.displayedKeys()->removeKeys(keySet({"A"}));
    }

    double m_time = 0.0;
};

const QStringList events{
    "connect", "lose",      "close",           "first list",       "second list",           "late lists", "real time",
    "watch A", "unwatch A", "watch X by name", "add B to the set", "remove A from the set", "period",     "pause",
    "resume",  "batch"};

const QStringList beginnings{"",
                             "connect",
                             "connect, first list",
                             "connect, first list, second list",
                             "connect, lose",
                             "watch A, connect, first list, second list, lose, connect"};

QStringList split(const QString& text)
{
    return text.isEmpty() ? QStringList() : text.split(", ");
}

} // namespace

class TestRobotSessionStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Whatever happened, on the next connection everything is as it was asked for.
    void nothingIsLost_data();
    void nothingIsLost();
};

void TestRobotSessionStates::nothingIsLost_data()
{
    QTest::addColumn<QString>("course");
    for (const QString& beginning : beginnings) {
        for (const QString& first : events) {
            for (const QString& second : events) {
                const QString course = (split(beginning) + QStringList{first, second}).join(", ");
                QTest::newRow(qPrintable(course)) << course;
            }
        }
    }
}

void TestRobotSessionStates::nothingIsLost()
{
    QFETCH(QString, course);
    DrivenSession driven;
    RobotSession& session = driven.session;
    QStringList failures;
    connect(&session, &RobotSession::failed, this, [&](const QString& title) { failures << title; });

    for (const QString& event : split(course))
        driven.run(event);
    driven.run("connect");
    driven.finishAllFetches();
    driven.run("real time");
    driven.run("watch A");

    QStringList expected(driven.watched.cbegin(), driven.watched.cend());
    expected.sort();
    QVERIFY(session.isReady());
    QCOMPARE(driven.displayed(), expected);
    QCOMPARE(names(session.watchedKeys()), expected);
    QCOMPARE(session.grantedPeriod(), course.contains("period") ? 50 : 1000);
    QCOMPARE(session.isWatcherRunning(), session.isWatcherWanted());
    // The stream, and the displayed key set while the watcher runs.
    QCOMPARE(driven.link->memory->dataGatheredReceivers(), session.isWatcherRunning() ? 2 : 1);
    failures.removeAll("Lost");
    failures.removeAll("Not connected to a robot"); // of keys that were added to the set itself
    QCOMPARE(failures, QStringList());
}

QTEST_GUILESS_MAIN(TestRobotSessionStates)
#include "tst_robot_session_states.moc"
