// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "support/patient_try.h"
#include <apps/velk-watch/src/message_bar.h>
#include <apps/velk-watch/src/recording_control.h>
#include <apps/velk-watch/src/watch_settings.h>

#include <connections/redis/support/redis_server.h>
#include <itemmodels/watch_model.h>
#include <session/robot_session.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>

using namespace Velk;

namespace {

const QString elbow = QStringLiteral("Arm/Elbow/Position");
const QString bumper = QStringLiteral("Bumper/Front");

// Sends one command to the server, as a producer does, and returns the reply.
QString command(const RedisServer& server, const QStringList& words)
{
    QProcess client;
    client.start(QStringLiteral("redis-cli"),
                 QStringList{QStringLiteral("-p"), QString::number(server.port())} + words);
    return client.waitForFinished(30000) && client.exitCode() == 0 ? QString::fromUtf8(client.readAll()).trimmed()
                                                                   : client.errorString();
}

void writeRobot(const RedisServer& server, const QString& value)
{
    command(server, {QStringLiteral("SADD"), QStringLiteral("mem:{arm1}:data"), elbow});
    command(server, {QStringLiteral("SADD"), QStringLiteral("mem:{arm1}:event"), bumper});
    command(server, {QStringLiteral("SET"), QStringLiteral("mem:{arm1}:v:") + elbow, value});
}

QString valueOf(const MainWindow& window, const QString& name)
{
    const WatchModel* const model = window.watchModel();
    const int row = model->row(name);
    return row < 0 ? QString() : model->index(row, WatchModel::ValueColumn).data().toString();
}

} // namespace

class TestWindowOnRedis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void aRobotOnAServerIsWatchedRecordedLostAndFoundAgain()
    {
        RedisServer server;
        QVERIFY2(server.start(), qPrintable(server.errorString()));
        writeRobot(server, QStringLiteral("1.5"));
        QTemporaryDir folder;
        WatchSettings settings(folder.filePath(QStringLiteral("settings.ini")));
        settings.setSamplingPeriod(200);
        MainWindow window(&settings);
        window.show();

        auto* const url = window.findChild<QLineEdit*>(QStringLiteral("robotUrlField"));
        url->setText(server.url());
        QTest::keyClick(url, Qt::Key_Return);
        const auto* const count = window.findChild<QLabel*>(QStringLiteral("catalogueCount"));
        QTRY_COMPARE_WITH_TIMEOUT(count->text(), QStringLiteral("2 of 2 keys"), 30000);
        auto* const search = window.findChild<QLineEdit*>(QStringLiteral("search"));
        QTest::keyClicks(search, QStringLiteral("elbow"));
        QTest::keyClick(search, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(valueOf(window, elbow), QStringLiteral("1.5"), 30000);

        window.toggleRecording();
        QTRY_VERIFY_WITH_TIMEOUT(window.recording()->rows() >= 2, 30000);
        server.kill();
        const auto* const status = window.findChild<QLabel*>(QStringLiteral("connectionStatus"));
        QTRY_VERIFY_WITH_TIMEOUT(status->text().startsWith(QStringLiteral("Connection lost for ")), 30000);
        QVERIFY(window.messageBar()->count() > 0);
        QCOMPARE(window.recording()->state(), RecordingControl::Unsaved);
        const QString fileName = folder.filePath(QStringLiteral("saved.csv"));
        QVERIFY(window.recording()->save(fileName, RecordFileSaver::KeepExisting).isSaved());
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readLine(), QByteArrayLiteral("Time;\"Arm/Elbow/Position\"\n"));
        QVERIFY(file.readLine().endsWith(";1.5\n"));

        QVERIFY2(server.start(), qPrintable(server.errorString()));
        writeRobot(server, QStringLiteral("4.5"));
        QTRY_COMPARE_WITH_TIMEOUT(valueOf(window, elbow), QStringLiteral("4.5"), 60000);
        QTRY_VERIFY(status->text().startsWith(QStringLiteral("Connected for ")));
    }
};

QTEST_MAIN(TestWindowOnRedis)
#include "tst_window_on_redis.moc"
