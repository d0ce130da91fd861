// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef SESSION_RECORDED_ROWS_H
#define SESSION_RECORDED_ROWS_H

#include <robotconnection/memory_interface.h>
#include <session/session_export.h>

#include <QObject>
#include <QPointer>

namespace Velk {

class DisplayedMemoryKeyListModel;
class SampleStream;

/// Counts the rows of a recording while it runs: one for each time stamp of a batch at which a displayed key has a
/// sample.
///
/// The rows are counted when they are delivered. Whether all of them reached the file is known when it is saved.
class SESSION_EXPORT RecordedRows : public QObject
{
    Q_OBJECT
    Q_PROPERTY(qint64 count READ count NOTIFY countChanged)

public:
    /// Counts the recordings of `displayedKeys` by the batches of `samples`, which are of the same robot. Neither is
    /// owned; either may be deleted before the counter.
    RecordedRows(DisplayedMemoryKeyListModel* displayedKeys, SampleStream* samples, QObject* parent = nullptr);
    ~RecordedRows() override;

    /// The rows of the recording that runs, or ran last; 0 before the first one.
    qint64 count() const { return m_count; }

Q_SIGNALS:
    /// count() changed.
    void countChanged();

private:
    void onRecording(bool isRecording);
    void onBatch(const GatheredData& batch);
    void xSetCount(qint64 count);

    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    qint64 m_count = 0;
};

} // namespace Velk

#endif
