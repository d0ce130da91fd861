// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Watches every key of a simulated robot, as `velk watch '*'` does, and prints how much of a processor that takes.
//
//   bench_simulated [keys [period in ms [seconds]]]
#include <connections/links/robot_links.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <session/robot_session.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cstdio>
#include <ctime>
#include <memory>

using namespace Velk;

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int keyCount = arguments.value(1, QStringLiteral("10000")).toInt();
    const int periodMs = arguments.value(2, QStringLiteral("10")).toInt();
    const int seconds = arguments.value(3, QStringLiteral("10")).toInt();

    QString error;
    std::unique_ptr<RobotLink> robot = RobotLinks::createLink(QStringLiteral("sim:?keys=%1").arg(keyCount), &error);
    if (!robot) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    RobotSession session(std::move(robot));
    qint64 batches = 0;
    qint64 updates = 0;
    QElapsedTimer elapsed;
    std::clock_t processorTime = 0;

    QObject::connect(session.displayedKeys(), &DisplayedMemoryKeyListModel::keysUpdated,
                     [&](const QSet<DisplayedMemoryKey>& keys) {
                         ++batches;
                         updates += keys.size();
                     });
    QObject::connect(&session, &RobotSession::readyChanged, [&] {
        session.watch(session.catalogue()->keys());
        batches = updates = 0;
        elapsed.start();
        processorTime = std::clock();
        QTimer::singleShot(seconds * 1000, &application, &QCoreApplication::quit);
    });
    session.setWantedPeriod(periodMs);
    session.link()->open();
    QCoreApplication::exec();

    const double wall = double(elapsed.nsecsElapsed()) / 1e9;
    const double processor = double(std::clock() - processorTime) / CLOCKS_PER_SEC;
    std::printf(
        "%lld keys watched every %d ms: %.1f batches/s of %.0f keys, %.0f %% of one processor, robot included\n",
        qlonglong(session.watchedKeys().size()), session.grantedPeriod(), double(batches) / wall,
        batches > 0 ? double(updates) / double(batches) : 0.0, 100.0 * processor / wall);
    return 0;
}
