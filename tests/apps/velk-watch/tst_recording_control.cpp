// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/recording_control.h>

#include "support/fake_robot_link.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/robot_session.h>

#include <QFile>
#include <QLocale>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Velk;

namespace {

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("no such file");
}

struct Fixture
{
    Fixture()
    {
        link->open();
        link->establish();
        session->displayedKeys()->addKeys({MemoryKey(QStringLiteral("A"), QString(), DataNature)});
        control.setSession(session.get());
    }
    void deliver(double time, const QVariant& value)
    {
        link->memory->deliver({{QStringLiteral("A"), {{time, value}}}});
    }
    QString destination() const { return folder.filePath(QStringLiteral("saved.csv")); }

    QTemporaryDir folder;
    FakeRobotLink* link = new FakeRobotLink; // the session's
    std::unique_ptr<RobotSession> session = std::make_unique<RobotSession>(std::unique_ptr<RobotLink>(link));
    RecordingControl control;
    QSignalSpy message{&control, &RecordingControl::message};
};

} // namespace

class TestRecordingControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void aRecordingIsStartedStoppedAndSaved()
    {
        Fixture f;
        f.deliver(9, 0.5);
        f.control.start();
        QCOMPARE(f.control.state(), RecordingControl::Recording);
        f.deliver(10, 1.5);
        f.deliver(11, 2.5);
        QCOMPARE(f.control.rows(), 3);

        f.control.stop();
        QCOMPARE(f.control.state(), RecordingControl::Unsaved);
        QCOMPARE(f.control.rows(), 3);
        const QString temporaryPath = f.control.temporaryPath();
        QVERIFY(QFile::exists(temporaryPath));
        QVERIFY(f.control.save(f.destination(), RecordFileSaver::KeepExisting).isSaved());

        QCOMPARE(f.control.state(), RecordingControl::Idle);
        QCOMPARE(contentOf(f.destination()), QByteArrayLiteral("Time;\"A\"\n0;0.5\n1;1.5\n2;2.5\n"));
        QVERIFY(!QFile::exists(temporaryPath));
        QCOMPARE(f.message.count(), 0);
    }

    void theRowsAreCountedAsTheFileHasThem()
    {
        Fixture f;
        f.session->displayedKeys()->addKeys({MemoryKey(QStringLiteral("B"), QString(), DataNature)});
        f.control.start();

        f.link->memory->deliver({{QStringLiteral("A"), {{1, 1}, {2, 2}}},
                                 {QStringLiteral("B"), {{2, 2}, {3, 3}}},
                                 {QStringLiteral("not displayed"), {{4, 4}}}});
        f.link->memory->deliver({});
        const qint64 counted = f.control.rows();
        f.control.stop();

        QCOMPARE(counted, 3);
        QCOMPARE(f.control.rows(), counted);
    }

    void aLostConnectionKeepsTheRecordingAndSaysSo()
    {
        Fixture f;
        f.control.start();
        f.deliver(10, 1.5);

        f.link->lose();

        QCOMPARE(f.control.state(), RecordingControl::Unsaved);
        QCOMPARE(f.message.count(), 1);
        QCOMPARE(f.message.at(0).at(0).toString(), QStringLiteral("Recording ended"));
        QVERIFY(f.control.save(f.destination(), RecordFileSaver::KeepExisting).isSaved());
        QCOMPARE(contentOf(f.destination()), QByteArrayLiteral("Time;\"A\"\n0;1.5\n"));
    }

    void anUnsavedRecordingOutlivesItsSession()
    {
        Fixture f;
        f.control.start();
        f.deliver(10, 1.5);

        f.control.setSession(nullptr);
        f.session.reset();

        QCOMPARE(f.control.state(), RecordingControl::Unsaved);
        QVERIFY(f.control.save(f.destination(), RecordFileSaver::KeepExisting).isSaved());
        QCOMPARE(contentOf(f.destination()), QByteArrayLiteral("Time;\"A\"\n0;1.5\n"));
    }

    void anUnsavedRecordingIsNotOverwritten()
    {
        Fixture f;
        f.control.start();
        f.control.stop();

        f.control.start();

        QCOMPARE(f.control.state(), RecordingControl::Unsaved);
        QVERIFY(!f.session->displayedKeys()->isRecording());
    }

    void discardingRemovesItFromDisk()
    {
        Fixture f;
        f.control.start();
        f.control.stop();
        const QString temporaryPath = f.control.temporaryPath();

        f.control.discard();

        QCOMPARE(f.control.state(), RecordingControl::Idle);
        QVERIFY(!QFile::exists(temporaryPath));
    }

    void aFailedSaveKeepsTheRecording()
    {
        Fixture f;
        f.control.start();
        f.deliver(10, 1.5);
        f.control.stop();

        const RecordSaveResult result =
            f.control.save(f.folder.filePath(QStringLiteral("missing/saved.csv")), RecordFileSaver::KeepExisting);

        QVERIFY(!result.isSaved());
        QVERIFY(!result.message.isEmpty());
        QCOMPARE(f.control.state(), RecordingControl::Unsaved);
        QVERIFY(f.control.save(f.destination(), RecordFileSaver::KeepExisting).isSaved());
    }

    void everyRecordingHasAFileOfItsOwn()
    {
        Fixture f;
        f.control.start();
        f.deliver(10, 100000);
        f.deliver(11, 100000);
        f.control.stop();
        f.control.discard();

        f.control.start();
        f.control.stop();
        QVERIFY(f.control.save(f.destination(), RecordFileSaver::KeepExisting).isSaved());

        QCOMPARE(contentOf(f.destination()), QByteArrayLiteral("Time;\"A\"\n0;100000\n"));
    }

    void theTextStatesTimeAndRows()
    {
        Fixture f;
        QCOMPARE(f.control.text(), QStringLiteral("Not recording"));

        f.control.start();
        f.deliver(10, 1);
        QVERIFY2(f.control.text().startsWith(QStringLiteral("Recording for ")), qPrintable(f.control.text()));
        QVERIFY2(f.control.text().endsWith(QStringLiteral(", 1 row(s)")), qPrintable(f.control.text()));

        f.control.stop();
        QVERIFY2(f.control.text().startsWith(QStringLiteral("Not saved: ")), qPrintable(f.control.text()));
    }

    void theDigitsOfRowsAreGroupedAsTheLocaleDoes()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        const auto restored = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
        Fixture f;
        QMap<double, QVariant> samples;
        for (int number = 0; number < 1234; ++number)
            samples.insert(number, number);
        f.control.start();
        f.link->memory->deliver({{QStringLiteral("A"), samples}});
        QVERIFY2(f.control.text().endsWith(QStringLiteral(", 1,234 row(s)")), qPrintable(f.control.text()));

        f.link->lose();

        const QString message = f.message.value(0).value(1).toString();
        QVERIFY2(message.contains(QStringLiteral(" 1,234 row(s) were recorded.")), qPrintable(message));
    }

    void withoutASessionNothingHappens()
    {
        RecordingControl control;

        control.start();
        control.stop();
        control.discard();

        QCOMPARE(control.state(), RecordingControl::Idle);
    }

    void aRecordingThatCannotStartIsReportedByTheSession()
    {
        Fixture f;
        QSignalSpy failed(f.session.get(), &RobotSession::failed);
        qputenv("TMPDIR", "/proc");

        f.control.start();

        qunsetenv("TMPDIR");
        QCOMPARE(failed.count(), 1);
        QCOMPARE(f.control.state(), RecordingControl::Idle);
    }
};

QTEST_MAIN(TestRecordingControl)
#include "tst_recording_control.moc"
