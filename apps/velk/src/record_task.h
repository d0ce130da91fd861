#ifndef APPS_VELK_SRC_RECORD_TASK_H
#define APPS_VELK_SRC_RECORD_TASK_H

#include "displayed_keys_task.h"
#include "exit_status.h"

#include <recordfile/record_file_saver.h>

#include <QElapsedTimer>
#include <QMap>
#include <QSet>
#include <QTimer>
#include <QVariant>

namespace Velk {

/// Records every sample of the keys to a file, until the time is over, a signal asks to end, or a failure ends it.
/// Whatever the end, the complete rows are saved.
class RecordTask : public DisplayedKeysTask
{
    Q_OBJECT

public:
    RecordTask(RobotLink& link, Console& console, int timeoutMs, const DisplayedKeysOptions& options,
               const QString& destination, RecordFileSaver::ExistingFile existing);

    void interrupt(int signalNumber) override;

protected:
    void begin(const QVector<MemoryKey>& keys) override;
    void onModelError(const QString& title, const QString& message) override;

private:
    void onRecordingStopped();
    void countRows(const QMap<QString, QMap<double, QVariant>>& batch);
    void showProgress();
    void stop(int status);
    void save();

    const QString m_destination;
    const RecordFileSaver::ExistingFile m_existing;
    QSet<QString> m_names;
    QElapsedTimer m_elapsed;
    QTimer m_end;
    QTimer m_progress;
    qint64 m_rows = 0; // on their way to the file; those that have arrived are counted when it is saved
    double m_seconds = 0.0;
    bool m_isStopping = false;
    bool m_isSaved = false;
    int m_status = Success;
    QString m_lastError;
};

} // namespace Velk

#endif
