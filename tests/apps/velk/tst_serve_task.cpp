// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "fake_writer.h"
#include "support/fake_robot_link.h"

#include <apps/velk/src/console.h>
#include <apps/velk/src/serve_task.h>

#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <csignal>
#include <utility>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;
// A time-out that passes in a test, after what has to be done before it: also on a busy machine.
constexpr int timeoutAfterWorkMs = 5000;

// A task that serves a robot with the data key A and the event E.
class Serving
{
public:
    explicit Serving(int timeoutMs = patienceMs, int forMs = 0)
    {
        if (!m_messages.open())
            qFatal("The test cannot make a temporary file.");
        m_console = std::make_unique<Console>(m_messages.handle(), m_messages.handle());
        task = std::make_unique<ServeTask>(std::unique_ptr<RobotLink>(link), *m_console, timeoutMs,
                                           std::unique_ptr<RobotWriter>(writer), 100, forMs);
        QObject::connect(task.get(), &Task::finished, task.get(), [this](int taskStatus) { statuses << taskStatus; });
        task->start();
    }

    void connectRobot() { link->establish(); }
    void finishLists() { link->memory->finishLists({"A"}, {"E"}); }
    // Until batches are written.
    bool serve()
    {
        connectRobot();
        finishLists();
        writer->connectServer();
        if (!QTest::qWaitFor([this] { return link->memory->fetchCount() == 2; }, patienceMs))
            return false;
        finishLists();
        return QTest::qWaitFor([this] { return messages().contains("Serving 2 keys"); }, patienceMs);
    }
    void deliver() { link->memory->deliver({{"A", {{1, 1}}}, {"E", {{1, 1}, {2, 2}}}}); }

    QString messages() const
    {
        QFile file(m_messages.fileName());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    FakeRobotLink* link = new FakeRobotLink; // the task's
    FakeWriter* writer = new FakeWriter;     // the task's
    std::unique_ptr<ServeTask> task;
    QList<int> statuses;

private:
    QTemporaryFile m_messages;
    std::unique_ptr<Console> m_console;
};

} // namespace

class TestServeTask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itEndsWhenTheServerHasAnswered();
    void itEndsAtOnceWhenNothingIsOpen();
    void itEndsWhenTheListOfKeysIsAnswered();
    void aListOfKeysWithoutAnAnswerIsPrinted();
    void aListOfKeysWithoutAnAnswerIsPrintedWhenTheServerIsLost();
    void aListOfKeysThatTheServerRefusedIsPrinted();
    void everySampleOfADataKeyIsWrittenWithItsTime();
    void nothingIsWrittenAfterItsEnd();
    void writesWithoutAnAnswerAreCountedAfterTheTimeOut();
    void aSecondSignalEndsTheWait();
    void aServerThatIsLostEndsTheWait();
    void everyLossIsPrintedByItsCause_data();
    void everyLossIsPrintedByItsCause();
    void aSignalBeforeItsTimeIsOverKeepsItsStatus();
    void whatTheRobotLostIsPrinted();
    void theTimeOutReportsTheSideThatIsMissing_data();
    void theTimeOutReportsTheSideThatIsMissing();
};

void TestServeTask::itEndsWhenTheServerHasAnswered()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.deliver();
    QCOMPARE(serving.writer->log, QStringList({"put A", "raise E", "raise E"}));

    serving.task->interrupt(SIGTERM);
    QCOMPARE(serving.statuses, QList<int>());
    serving.writer->answer();

    QCOMPARE(serving.statuses, QList<int>({Success}));
    QVERIFY2(!serving.messages().contains("written"), qPrintable(serving.messages()));
}

void TestServeTask::itEndsAtOnceWhenNothingIsOpen()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.deliver();
    serving.writer->answer();

    serving.task->interrupt(SIGTERM);

    QCOMPARE(serving.statuses, QList<int>({Success}));
}

void TestServeTask::itEndsWhenTheListOfKeysIsAnswered()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.writer->areDeclarationsAnswered = false;

    serving.task->interrupt(SIGTERM);
    QCOMPARE(serving.statuses, QList<int>());
    serving.writer->answer();

    QCOMPARE(serving.statuses, QList<int>({Success}));
    QVERIFY2(!serving.messages().contains("written"), qPrintable(serving.messages()));
}

void TestServeTask::aListOfKeysWithoutAnAnswerIsPrinted()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.writer->areDeclarationsAnswered = false;

    serving.task->interrupt(SIGINT);
    serving.task->interrupt(SIGINT);

    QCOMPARE(serving.statuses, QList<int>({NotWritten}));
    QVERIFY2(serving.messages().contains("written: the list of keys was not answered at the end, perhaps not written"),
             qPrintable(serving.messages()));
}

void TestServeTask::aListOfKeysWithoutAnAnswerIsPrintedWhenTheServerIsLost()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.writer->areDeclarationsAnswered = false;

    serving.task->interrupt(SIGTERM);
    serving.writer->loseServer("It went away.");

    QTRY_COMPARE_WITH_TIMEOUT(serving.statuses, QList<int>({NotWritten}), patienceMs);
    QVERIFY2(serving.messages().contains("written: the list of keys was not answered at the end"),
             qPrintable(serving.messages()));
}

void TestServeTask::aListOfKeysThatTheServerRefusedIsPrinted()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.writer->areDeclarationsRefused = true;

    serving.task->interrupt(SIGTERM);

    QCOMPARE(serving.statuses, QList<int>({NotWritten}));
    QVERIFY2(
        serving.messages().contains("written: the list of keys, a removal or the metadata was refused by the server\n"),
        qPrintable(serving.messages()));
}

void TestServeTask::everySampleOfADataKeyIsWrittenWithItsTime()
{
    Serving serving;
    QVERIFY(serving.serve());

    serving.link->memory->deliver({{"A", {{1.5, 10}, {2.5, 20}}}});

    QCOMPARE(serving.writer->log, QStringList({"put A", "put A"}));
    QCOMPARE(serving.writer->samples, Samples({{1.5, 10}, {2.5, 20}}));
}

void TestServeTask::nothingIsWrittenAfterItsEnd()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.deliver();
    serving.task->interrupt(SIGTERM);
    serving.writer->log.clear();

    serving.deliver();
    serving.link->lose();
    serving.connectRobot();
    serving.deliver();

    QCOMPARE(serving.writer->log, QStringList());
}

void TestServeTask::writesWithoutAnAnswerAreCountedAfterTheTimeOut()
{
    Serving serving(timeoutAfterWorkMs);
    QVERIFY(serving.serve());
    serving.deliver();

    serving.task->interrupt(SIGTERM);

    QTRY_COMPARE_WITH_TIMEOUT(serving.statuses, QList<int>({NotWritten}), patienceMs);
    QVERIFY2(serving.messages().contains("Not everything was written: 3 not answered at the end"),
             qPrintable(serving.messages()));
}

void TestServeTask::aSecondSignalEndsTheWait()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.deliver();

    serving.task->interrupt(SIGINT);
    serving.task->interrupt(SIGINT);

    QCOMPARE(serving.statuses, QList<int>({NotWritten}));
    QVERIFY2(serving.messages().contains("3 not answered at the end"), qPrintable(serving.messages()));
}

void TestServeTask::aServerThatIsLostEndsTheWait()
{
    Serving serving;
    QVERIFY(serving.serve());
    serving.deliver();

    serving.task->interrupt(SIGINT);
    serving.writer->loseServer("It went away.");

    QTRY_COMPARE_WITH_TIMEOUT(serving.statuses, QList<int>({NotWritten}), patienceMs);
    QVERIFY2(serving.messages().contains("It went away.\n"), qPrintable(serving.messages()));
    QVERIFY2(serving.messages().contains("written: 2 perhaps not written, the connection was lost before the answer; "
                                         "the newest values of 1 keys, the server was away at the end\n"),
             qPrintable(serving.messages()));
}

void TestServeTask::everyLossIsPrintedByItsCause_data()
{
    QTest::addColumn<int>("refused");
    QTest::addColumn<int>("dropped");
    QTest::addColumn<int>("unknown");
    QTest::addColumn<QString>("message");
    QTest::newRow("refused") << 1 << 0 << 0 << "written: 1 values and occurrences refused by the server\n";
    QTest::newRow("dropped") << 0 << 2 << 0 << "written: 2 dropped, the server was away or too slow\n";
    QTest::newRow("unknown") << 0 << 0 << 3 << "written: 3 perhaps not written, the connection was lost before";
    QTest::newRow("all") << 1 << 2 << 3 << "refused by the server; 2 dropped, the server was away or too slow; 3 per";
}

void TestServeTask::everyLossIsPrintedByItsCause()
{
    QFETCH(int, refused);
    QFETCH(int, dropped);
    QFETCH(int, unknown);
    QFETCH(QString, message);
    Serving serving;
    QVERIFY(serving.serve());
    serving.writer->lost.refused = refused;
    serving.writer->lost.dropped = dropped;
    serving.writer->lost.unknown = unknown;

    serving.task->interrupt(SIGINT);

    QCOMPARE(serving.statuses, QList<int>({NotWritten}));
    QVERIFY2(serving.messages().contains(message), qPrintable(serving.messages()));
}

void TestServeTask::aSignalBeforeItsTimeIsOverKeepsItsStatus()
{
    Serving serving(patienceMs, patienceMs);
    QVERIFY(serving.serve());
    serving.writer->lost.refused = 1;

    serving.task->interrupt(SIGTERM);

    QCOMPARE(serving.statuses, QList<int>({128 + SIGTERM}));
    QVERIFY2(serving.messages().contains("Not everything was written"), qPrintable(serving.messages()));
}

void TestServeTask::whatTheRobotLostIsPrinted()
{
    Serving serving;
    QVERIFY(serving.serve());
    LossLedger& ledger = serving.link->ledger();
    ledger.record(ledger.account("A"), LossCause::Dropped, 2, 0.0, 1.0);

    serving.task->interrupt(SIGINT);

    QCOMPARE(serving.statuses, QList<int>({Success}));
    QVERIFY2(serving.messages().contains("Not everything was delivered: 2 samples and occurrences dropped"),
             qPrintable(serving.messages()));
}

void TestServeTask::theTimeOutReportsTheSideThatIsMissing_data()
{
    QTest::addColumn<bool>("isRobotConnected");
    QTest::addColumn<bool>("isRobotReady");
    QTest::addColumn<bool>("isServerConnected");
    QTest::addColumn<QStringList>("reports");
    const QString noRobot("Not connected: No connection to fake:");
    const QString noLists("Robot does not answer: fake:");
    const QString noServer("Not connected: No connection to server:");
    QTest::newRow("server") << true << true << false << QStringList(noServer);
    QTest::newRow("robot") << false << false << true << QStringList(noRobot);
    QTest::newRow("lists of the robot") << true << false << true << QStringList(noLists);
    QTest::newRow("both") << false << false << false << QStringList({noRobot, noServer});
    QTest::newRow("lists and server") << true << false << false << QStringList({noLists, noServer});
}

void TestServeTask::theTimeOutReportsTheSideThatIsMissing()
{
    QFETCH(bool, isRobotConnected);
    QFETCH(bool, isRobotReady);
    QFETCH(bool, isServerConnected);
    QFETCH(QStringList, reports);
    Serving serving(isRobotReady ? timeoutAfterWorkMs : 1000);

    if (isServerConnected)
        serving.writer->connectServer();
    if (isRobotConnected)
        serving.connectRobot();
    if (isRobotReady)
        serving.finishLists();
    QTRY_COMPARE_WITH_TIMEOUT(serving.statuses, QList<int>({NotConnected}), patienceMs);

    QStringList found;
    const QStringList lines = serving.messages().split('\n').filter("velk: ");
    for (const QString& line : lines)
        found << line.mid(QString("velk: ").size()).section(QRegularExpression(" (is connected|within) "), 0, 0);
    QCOMPARE(found, reports);
}

QTEST_GUILESS_MAIN(TestServeTask)
#include "tst_serve_task.moc"
