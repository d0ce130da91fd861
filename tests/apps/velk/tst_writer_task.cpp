// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "fake_writer.h"

#include <apps/velk/src/console.h>
#include <apps/velk/src/exit_status.h>
#include <apps/velk/src/writer_task.h>

#include <QFile>
#include <QTemporaryFile>
#include <QTest>

#include <memory>
#include <optional>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;

// A task that raises the event E.
class Raising
{
public:
    explicit Raising(int timeoutMs = patienceMs)
    {
        if (!m_messages.open())
            qFatal("The test cannot make a temporary file.");
        m_console = std::make_unique<Console>(m_messages.handle(), m_messages.handle());
        m_task = std::make_unique<WriterTask>(std::unique_ptr<RobotWriter>(writer), *m_console, timeoutMs,
                                              [](RobotWriter& target, const RobotWriter::Done& done) {
                                                  target.raise(QStringLiteral("E"), 1, std::nullopt, done);
                                              });
        QObject::connect(m_task.get(), &Task::finished, m_task.get(), [this](int status) { statuses << status; });
        m_task->start();
    }

    QString messages() const
    {
        QFile file(m_messages.fileName());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    FakeWriter* writer = new FakeWriter; // the task's
    QList<int> statuses;

private:
    QTemporaryFile m_messages;
    std::unique_ptr<Console> m_console;
    std::unique_ptr<WriterTask> m_task;
};

} // namespace

class TestWriterTask : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void itEndsWithTheAnswer_data();
    void itEndsWithTheAnswer();
    void aLostConnectionBeforeTheAnswerEndsItAndIsReported();
    void whatMayBeWrittenIsNotWrittenAgain();
    void theTimeOutEndsIt_data();
    void theTimeOutEndsIt();
};

void TestWriterTask::itEndsWithTheAnswer_data()
{
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::newRow("written") << "" << int(Success) << "";
    QTest::newRow("refused") << "The server refuses it." << int(NotWritten) << "velk: The server refuses it.\n";
}

void TestWriterTask::itEndsWithTheAnswer()
{
    QFETCH(QString, error);
    QFETCH(int, status);
    QFETCH(QString, message);
    Raising raising;
    raising.writer->connectServer();
    QCOMPARE(raising.writer->log, QStringList("raise E"));

    raising.writer->dones.at(0)(error);

    QCOMPARE(raising.statuses, QList<int>({status}));
    QCOMPARE(raising.messages(), message);
}

void TestWriterTask::aLostConnectionBeforeTheAnswerEndsItAndIsReported()
{
    Raising raising;
    raising.writer->connectServer();

    raising.writer->loseServer("It went away.");

    QTRY_COMPARE_WITH_TIMEOUT(raising.statuses, QList<int>({NotWritten}), patienceMs);
    QVERIFY2(raising.messages().contains("It went away."), qPrintable(raising.messages()));
    QVERIFY2(raising.messages().contains("Perhaps not written: the connection was lost"),
             qPrintable(raising.messages()));
}

void TestWriterTask::whatMayBeWrittenIsNotWrittenAgain()
{
    Raising raising;
    raising.writer->connectServer();
    raising.writer->loseServer("It went away.");

    raising.writer->connectServer();

    QCOMPARE(raising.writer->log, QStringList("raise E"));
    QTRY_COMPARE_WITH_TIMEOUT(raising.statuses, QList<int>({NotWritten}), patienceMs);
}

void TestWriterTask::theTimeOutEndsIt_data()
{
    QTest::addColumn<bool>("isConnected");
    QTest::addColumn<QString>("message");
    QTest::newRow("no connection") << false << "velk: Not written: no answer from server: within 0.1 s.";
    QTest::newRow("no answer") << true << "velk: Perhaps not written: no answer from server: within 0.1 s.";
}

void TestWriterTask::theTimeOutEndsIt()
{
    QFETCH(bool, isConnected);
    QFETCH(QString, message);
    Raising raising(100);

    if (isConnected)
        raising.writer->connectServer();

    QTRY_COMPARE_WITH_TIMEOUT(raising.statuses, QList<int>({NotConnected}), patienceMs);
    QVERIFY2(raising.messages().startsWith(message), qPrintable(raising.messages()));
}

QTEST_GUILESS_MAIN(TestWriterTask)
#include "tst_writer_task.moc"
