// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "recording_answers.h"
#include "window_fixture.h"

#include <apps/velk-watch/src/message_bar.h>
#include <apps/velk-watch/src/recording_control.h>

#include <QApplication>
#include <QDir>
#include <QStatusBar>
#include <QTest>

using namespace Velk;

class TestMainWindowRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QLocale::setDefault(QLocale::c());
        // A dialog of the desktop cannot be driven.
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }

    void aRecordingIsMadeAndSaved()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        const QString fileName = f.folder.filePath(QStringLiteral("saved.csv"));
        int answered = 0;

        QTest::keyClick(f.window.get(), Qt::Key_R, Qt::ControlModifier);
        QTRY_VERIFY(f.window->recording()->rows() >= 2);
        QVERIFY(f.status("recordingStatus").startsWith(QStringLiteral("Recording for ")));
        QTest::keyClick(f.window.get(), Qt::Key_R, Qt::ControlModifier);
        const qint64 rows = f.window->recording()->rows();
        saveNextTo(fileName, &answered);
        f.action("saveAction")->trigger();

        QCOMPARE(answered, 1);
        const QList<QByteArray> lines = contentOf(fileName).split('\n');
        QCOMPARE(lines.first(), QByteArrayLiteral("Time;\"Arm/Elbow/Position\""));
        QCOMPARE(qint64(lines.size()), rows + 2); // the header, and what follows the last line feed
        QVERIFY(lines.at(1).endsWith(";1.5"));
        QCOMPARE(f.status("recordingStatus"), QStringLiteral("Not recording"));
        QCOMPARE(f.window->statusBar()->currentMessage(),
                 QStringLiteral("Saved to ") + QDir::toNativeSeparators(fileName));
        QCOMPARE(f.window->messageBar()->count(), 0);
    }

    void aRecordingThatCannotBeSavedIsKept()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);

        f.window->recording()->stop();
        const RecordSaveResult result =
            f.window->recording()->save(QStringLiteral("/proc/saved.csv"), RecordFileSaver::KeepExisting);

        QVERIFY(!result.isSaved());
        QCOMPARE(f.window->recording()->state(), RecordingControl::Unsaved);
        QVERIFY(f.action("saveAction")->isEnabled());
        f.window->recording()->discard();
    }

    void closingDuringARecordingAsks_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("isClosed");
        QTest::newRow("cancel") << QStringLiteral("cancelButton") << false;
        QTest::newRow("discard") << QStringLiteral("discardButton") << true;
    }

    void closingDuringARecordingAsks()
    {
        QFETCH(QString, button);
        QFETCH(bool, isClosed);
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);
        int answered = 0;
        const QByteArray name = button.toLatin1();

        clickNext(name.constData(), &answered);
        f.window->close();

        QCOMPARE(answered, 1);
        QCOMPARE(!f.window->isVisible(), isClosed);
        QCOMPARE(f.window->recording()->state() == RecordingControl::Recording, !isClosed);
        f.window->recording()->stop();
        f.window->recording()->discard();
    }

    void closingWithAnUnsavedRecordingOffersToSaveIt()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        f.window->toggleRecording();
        QTRY_VERIFY(f.window->recording()->rows() >= 1);
        f.window->toggleRecording();
        const QString fileName = f.folder.filePath(QStringLiteral("saved.csv"));
        int questions = 0;
        int files = 0;

        clickNext("saveButton", &questions);
        saveNextTo(fileName, &files);
        f.window->close();

        QCOMPARE(questions, 1);
        QCOMPARE(files, 1);
        QVERIFY(!f.window->isVisible());
        QVERIFY(contentOf(fileName).startsWith("Time;"));
    }

    void closingWithoutARecordingAsksNothing()
    {
        WindowFixture f;

        f.window->close();

        QVERIFY(!f.window->isVisible());
    }

    void aRecordingThatCannotStartIsReportedWithoutADialog()
    {
        WindowFixture f;
        f.connectRobot();
        f.watch(elbow);
        qputenv("TMPDIR", "/proc");

        f.window->toggleRecording();

        qunsetenv("TMPDIR");
        QCOMPARE(f.window->messageBar()->title(), QStringLiteral("Memory recording"));
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY(!f.action("recordAction")->isChecked());
    }
};

QTEST_MAIN(TestMainWindowRecording)
#include "tst_main_window_recording.moc"
