// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Lists the keys of a robot in this process with the catalogue, records one of them, and saves the recording.

#include <connections/embedded/embedded_link.h>
#include <connections/embedded/robot_memory.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>
#include <recordfile/record_file_saver.h>
#include <session/robot_session.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace Velk;

constexpr double start = 1700000000.0; // seconds since the Unix epoch: November 2023

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const auto memory = std::make_shared<RobotMemory>();
    memory->declareEvent(QStringLiteral("Bumper"));
    memory->setData(QStringLiteral("Arm/Position"), 0.25, start);
    RobotSession session(std::make_unique<EmbeddedLink>(memory));
    DisplayedMemoryKeyListModel& displayed = *session.displayedKeys();
    session.setWantedPeriod(200);

    QObject::connect(&session, &RobotSession::catalogueReady, [&](MemoryKeyListModel* catalogue) {
        QStringList lines;
        for (const MemoryKey& key : catalogue->keys())
            lines << key.name() + QLatin1Char(' ') + key.natureToString();
        std::sort(lines.begin(), lines.end());
        std::printf("%s\n", qPrintable(lines.join(QLatin1Char('\n'))));
        session.watch(catalogue->keys(DataNature));
    });
    QObject::connect(&session, &RobotSession::readyChanged, [&](bool isReady) {
        if (isReady)
            displayed.startRecording();
    });
    int samples = 0;
    QObject::connect(&displayed, &DisplayedMemoryKeyListModel::keysUpdated, [&](const QSet<DisplayedMemoryKey>& keys) {
        if (keys.isEmpty())
            return;
        if (++samples == 5)
            displayed.stopRecording(); // the rows of a batch follow its signal: four are written
        memory->setData(QStringLiteral("Arm/Position"), samples, start + samples / 4.0); // the robot goes on
    });
    QObject::connect(&displayed, &DisplayedMemoryKeyListModel::recording, [](bool isRecording) {
        if (!isRecording)
            QCoreApplication::quit();
    });
    session.link()->open();
    QCoreApplication::exec();

    QTemporaryDir directory;
    RecordFileSaver saver(displayed.takeRecordFile());
    const RecordSaveResult result = saver.save(directory.filePath(QStringLiteral("run.csv")));
    if (!result.isSaved()) {
        std::fprintf(stderr, "%s\n", qPrintable(result.message));
        return 1;
    }
    QFile file(directory.filePath(QStringLiteral("run.csv")));
    return file.open(QIODevice::ReadOnly) && std::printf("%s", file.readAll().constData()) > 0 ? 0 : 1;
}
