// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ROBOTCONNECTION_MEMORY_INTERFACE_H
#define ROBOTCONNECTION_MEMORY_INTERFACE_H

#include <robotconnection/robotconnection_export.h>

#include <QFuture>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace Velk {

/// The samples of one key: time stamp to value, ascending.
using Samples = QMap<double, QVariant>;
/// One delivery: the samples of each key, by key name.
using GatheredData = QMap<QString, Samples>;

/// The memory service of a connected robot: the names of its keys, and the values of the watched keys.
///
/// A connection library derives from this class and hands it out as boost::shared_ptr through
/// ConnectionManager::memoryInterface(). Every operation is called on the thread that owns the models, returns
/// at once and throws nothing. Periods are milliseconds. Time stamps are doubles, in a unit and from an origin that
/// the connection library chooses.
class ROBOTCONNECTION_EXPORT MemoryInterface : public QObject
{
    Q_OBJECT

public:
    explicit MemoryInterface(QObject* parent = nullptr);
    ~MemoryInterface() override;

    /// Starts fetching the names of the robot's data keys, of its event keys, of its micro-event keys.
    ///
    /// The three may run at the same time, on any thread, and finish in any order. Each future is a started
    /// operation that reports exactly one result, the list of names (possibly empty), and then finishes; a service
    /// that fails reports an empty list. A future without a result, such as a cancelled one, breaks the contract.
    virtual QFuture<QStringList> getDataList() = 0;
    virtual QFuture<QStringList> getEventList() = 0;
    virtual QFuture<QStringList> getMicroEventList() = 0;

    /// Subscribes the key: its values are sampled every `period` ms and delivered by dataGathered() while the watcher
    /// runs. A key that is watched already gets the new period.
    virtual void watchKey(const QString& name, int period) = 0;
    /// Ends the subscription of the key. Does nothing when it is not watched.
    virtual void unwatchKey(const QString& name) = 0;
    /// Ends every subscription.
    virtual void unwatchAll() = 0;

    /// Starts sampling every `samplingPeriod` ms, and delivering every `gatherPeriod` ms (at least 200 from the
    /// models). With a `samplingPeriod` of 0 each key is sampled at the period of its own watchKey().
    virtual void startWatcher(int gatherPeriod, int samplingPeriod) = 0;
    /// Stops sampling and delivering.
    virtual void stopWatcher() = 0;
    /// Changes the delivery period of the running watcher, in milliseconds (at least 200 from the models).
    virtual void setGatherPeriod(int period) = 0;
    /// Changes the sampling period of the running watcher, in milliseconds.
    virtual void setSamplingPeriod(int period) = 0;

    /// Asks whether the robot supports real-time sampling. The answer, now or later, invokes the method of `receiver`
    /// with the plain name `member` (without argument list, as for QMetaObject::invokeMethod) and one bool, true when
    /// supported. An answer from another thread is queued to the thread of the receiver.
    virtual void isRealTimeSupported(QObject* receiver, const char* member) = 0;

Q_SIGNALS:
    /// The values of the watched keys, by key name and by time stamp. Emitted every gather period while the watcher
    /// runs, on the thread of the models. An implementation that emits it on another thread registers the type of the
    /// argument with Qt's meta-type system, so that it can be queued. The argument is a GatheredData. The type is
    /// written in full, because string-based connections compare the text.
    void dataGathered(const QMap<QString, QMap<double, QVariant>>& data);
};

} // namespace Velk

#endif
