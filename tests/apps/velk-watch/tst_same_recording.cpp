// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/main_window.h>

#include "support/patient_try.h"
#include <apps/velk-watch/src/recording_control.h>
#include <apps/velk-watch/src/watch_settings.h>
#include <apps/velk/src/exit_status.h>
#include <apps/velk/src/velk.h>

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/memory_interface.h>
#include <session/robot_session.h>

#include <QFile>
#include <QHashSeed>
#include <QTemporaryDir>
#include <QTimer>

#include <boost/make_shared.hpp>

#include <vector>

using namespace Velk;

namespace {

using Batch = QMap<QString, QMap<double, QVariant>>;

const QStringList names{QStringLiteral("Arm/Elbow/Position"), QStringLiteral("Battery/State"),
                        QStringLiteral("Bumper \"front\"")};

// The first batch comes before the recording: it becomes the row of newest values.
QList<Batch> playback()
{
    QList<Batch> batches{{{names.at(0), {{100.0, 1}}}, {names.at(1), {{100.0, QStringLiteral("full; \"ok\"")}}}}};
    for (int number = 1; number <= 40; ++number) {
        const double time = 100.0 + number * 0.25;
        Batch batch{{names.at(0), {{time, number * 0.125}, {time + 0.1, -number}}}};
        if (number % 3 == 0)
            batch.insert(names.at(1), {{time, QStringLiteral("step %1").arg(number)}});
        if (number % 7 == 0)
            batch.insert(names.at(2), {{time + 0.05, true}});
        if (number % 5 == 0)
            batch.insert(QStringLiteral("Not/Watched"), {{time, 0}});
        batches.append(batch);
    }
    return batches;
}

class PlaybackMemory : public MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return QtFuture::makeReadyFuture(names.mid(0, 2)); }
    QFuture<QStringList> getEventList() override { return QtFuture::makeReadyFuture(names.mid(2)); }
    QFuture<QStringList> getMicroEventList() override { return QtFuture::makeReadyFuture(QStringList()); }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override
    {
        QTimer::singleShot(0, this, [this] { emit dataGathered(playback().constFirst()); });
    }
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject* receiver, const char* member) override
    {
        QMetaObject::invokeMethod(receiver, member, Qt::QueuedConnection, Q_ARG(bool, true));
    }
};

// A robot that delivers all its values as soon as a recording runs, and then ends the connection.
class PlaybackLink : public RobotLink
{
public:
    ~PlaybackLink() override { shutDown(); }
    QString url() const override { return QStringLiteral("playback:"); }

protected:
    void startConnecting() override
    {
        QTimer::singleShot(0, this, [this] {
            establish(m_memory);
            connect(findChild<DisplayedMemoryKeyListModel*>(), &DisplayedMemoryKeyListModel::recording, this,
                    [this](bool isRecording) {
                        if (isRecording)
                            QTimer::singleShot(0, this, [this] { play(1); });
                    });
        });
    }
    void stopConnecting() override {}

private:
    void play(int index)
    {
        const QList<Batch> batches = playback();
        if (index == batches.size()) {
            lose(QStringLiteral("Lost"), QStringLiteral("The playback is over."));
            return;
        }
        emit m_memory->dataGathered(batches.at(index));
        QTimer::singleShot(0, this, [this, index] { play(index + 1); });
    }

    boost::shared_ptr<PlaybackMemory> m_memory = boost::make_shared<PlaybackMemory>();
};

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("no such file");
}

} // namespace

class TestSameRecording : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The order of the columns is that of a hash table: both recordings need the same seed.
    void initTestCase() { QHashSeed::setDeterministicGlobalSeed(); }

    void theWindowAndVelkRecordTheSame()
    {
        QTemporaryDir folder;
        const QString byVelk = folder.filePath(QStringLiteral("velk.csv"));
        const QString byWindow = folder.filePath(QStringLiteral("window.csv"));

        QList<QByteArray> arguments{"velk", "record", "--robot", "playback:", "--output", byVelk.toLocal8Bit()};
        for (const QString& name : names)
            arguments.append(name.toUtf8());
        std::vector<char*> argv;
        for (QByteArray& argument : arguments)
            argv.push_back(argument.data());
        const int status = runVelk(int(argv.size()), argv.data(), [](const QString&, QString*) {
            return std::unique_ptr<RobotLink>(std::make_unique<PlaybackLink>());
        });
        QCOMPARE(status, int(ConnectionLost));

        WatchSettings settings(folder.filePath(QStringLiteral("settings.ini")));
        MainWindow window(&settings);
        window.setWatchedNames(names);
        window.openRobot(std::make_unique<PlaybackLink>());
        QTRY_VERIFY(window.session()->isWatcherRunning());
        window.toggleRecording();
        QTRY_COMPARE(window.recording()->state(), RecordingControl::Unsaved);
        QVERIFY(window.recording()->save(byWindow, RecordFileSaver::KeepExisting).isSaved());

        QCOMPARE(contentOf(byWindow), contentOf(byVelk));
        QCOMPARE(contentOf(byWindow).count('\n'), 1 + 1 + 2 * 40 + 40 / 7); // header, newest values, the playback
    }
};

QTEST_MAIN(TestSameRecording)
#include "tst_same_recording.moc"
