// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef SESSION_SAMPLE_STREAM_H
#define SESSION_SAMPLE_STREAM_H

#include <connections/link/sample_losses.h>
#include <robotconnection/memory_interface.h>
#include <session/session_export.h>

#include <QObject>
#include <QPointer>
#include <QTimer>

namespace Velk {

class ConnectionManager;
class DisplayedMemoryKeyListModel;

/// Every batch of values that a robot delivers, over all its connections.
///
/// The displayed key set keeps the newest value of each key; receivers of this stream get all values. The stream
/// receives from the memory service of each connection. A service that appears later than its connection is found when
/// the displayed key set uses it.
///
/// Between two batches something may be missing: the robot was disconnected, or its watcher was stopped. The stream
/// reports such a gap when the connection ends or begins, when the watcher of the displayed key set delivers nothing
/// for three of its periods, and when markGap() is called. RobotSession calls it when it stops the watcher.
///
/// Lives on the thread of the connection manager and of the displayed key set. Both may be deleted before the stream,
/// which is silent then. A slot may delete the stream.
class SESSION_EXPORT SampleStream : public QObject
{
    Q_OBJECT

public:
    /// Neither is owned. Without a displayed key set, a memory service that appears late is not found, and silence of
    /// the watcher is no gap: its period is not known.
    explicit SampleStream(ConnectionManager* connectionManager, DisplayedMemoryKeyListModel* displayedKeys = nullptr,
                          QObject* parent = nullptr);
    ~SampleStream() override;

    /// What was not delivered since the robot was opened. All 0 unless the connection manager is a RobotLink.
    SampleLosses losses() const;

    /// The next batch comes after a gap. For an application that stops the watcher itself.
    void markGap();

Q_SIGNALS:
    /// The first batch, or the first one after a gap, is about to be reported.
    void began();
    /// A batch came: samples by key name and by time stamp, of the displayed keys and of every other key that is
    /// watched, possibly none. The displayed key set has taken it in already, or does so next.
    void batchReceived(const Velk::GatheredData& batch);
    /// A gap began. Not emitted again until a batch came.
    void gapBegan();
    /// losses() has grown.
    void lossesRecorded();

private:
    void attach();
    void detach();
    void onConnectionChanged();
    void onDataGathered(const GatheredData& data);

    QPointer<ConnectionManager> m_connectionManager;
    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    QPointer<MemoryInterface> m_attachedTo; // the service whose batches are received
    QTimer m_silenceTimer;
    bool m_hasBatchSinceGap = false;
};

} // namespace Velk

#endif
