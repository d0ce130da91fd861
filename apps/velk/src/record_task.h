// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_RECORD_TASK_H
#define APPS_VELK_SRC_RECORD_TASK_H

#include "displayed_keys_task.h"
#include "exit_status.h"

#include <recordfile/record_file_saver.h>

#include <QElapsedTimer>
#include <QTimer>

namespace Velk {

class RecordedRows;

/// Records every sample of the keys to a file, until the time is over, a signal asks to end, or a failure ends it.
/// Whatever the end, the complete rows are saved.
class RecordTask : public DisplayedKeysTask
{
    Q_OBJECT

public:
    RecordTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs, const DisplayedKeysOptions& options,
               const QString& destination, RecordFileSaver::ExistingFile existing);
    ~RecordTask() override;

protected:
    void begin(const QVector<MemoryKey>& keys) override;
    void stop(int status) override;

private:
    void onRecordingStopped();
    void showProgress();
    void save();

    const QString m_destination;
    const RecordFileSaver::ExistingFile m_existing;
    qsizetype m_keyCount = 0;
    QElapsedTimer m_elapsed;
    QTimer m_progress;
    std::unique_ptr<RecordedRows> m_rows; // on a terminal only
    double m_seconds = 0.0;
    bool m_isStopping = false;
    bool m_isSaved = false;
    int m_status = Success;
};

} // namespace Velk

#endif
