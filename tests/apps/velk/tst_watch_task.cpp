// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fake_robot_link.h"

#include <apps/velk/src/console.h>
#include <apps/velk/src/watch_task.h>

#include <QTemporaryFile>
#include <QTest>

#include <memory>

#include <pty.h>
#include <unistd.h>

using namespace Velk;

class TestWatchTask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTerminalThatClosesEndsItOnceAlsoAfterLosses();
};

void TestWatchTask::aTerminalThatClosesEndsItOnceAlsoAfterLosses()
{
    qputenv("TERM", "xterm");
    int controller = -1;
    int terminal = -1;
    QCOMPARE(::openpty(&controller, &terminal, nullptr, nullptr, nullptr), 0);
    QTemporaryFile messages;
    QVERIFY(messages.open());
    Console console(terminal, messages.handle());
    auto* const link = new FakeRobotLink; // the task's
    WatchTask task(std::unique_ptr<RobotLink>(link), console, 60000, {{"A"}, false, 0, 0}, WatchTask::Automatic);
    QList<int> statuses;
    connect(&task, &Task::finished, &task, [&statuses](int status) { statuses << status; });
    task.start();
    link->establish();
    for (int fetch = 0; fetch < link->memory->fetchCount(); ++fetch)
        link->memory->finishLists({"A"}, {}, {}, fetch);
    link->answerRealTimeSupported(true);
    QTRY_VERIFY_WITH_TIMEOUT(!link->log.filter("watchKey A").isEmpty(), 60000);
    link->ledger().record(link->ledger().account("A"), LossCause::Dropped, 2, 0.0, 1.0);

    ::close(controller);
    link->memory->deliver({{"A", {{1, 1}}}});

    QCOMPARE(statuses, QList<int>({BrokenPipe}));
    QFile printed(messages.fileName());
    QVERIFY(printed.open(QIODevice::ReadOnly));
    const QByteArray text = printed.readAll();
    QVERIFY2(text.count("Not everything was delivered: 2 samples and occurrences dropped") == 1, text);
    ::close(terminal);
}

QTEST_GUILESS_MAIN(TestWatchTask)
#include "tst_watch_task.moc"
