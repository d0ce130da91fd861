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

/// The samples of one key: time stamp to value.
using Samples = QMap<double, QVariant>;
/// One delivery: the samples of each key, by key name.
using GatheredData = QMap<QString, Samples>;

/// The memory service of a connected robot: the names of its keys, and the values of those that are watched.
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

    /// Subscribes the key: from now on its values are sampled every `period` ms and delivered by dataGathered()
    /// while the watcher runs. A key that is watched already gets the new period.
    virtual void watchKey(const QString& name, int period) = 0;
    /// Ends the subscription of the key; nothing when it is not watched.
    virtual void unwatchKey(const QString& name) = 0;
    /// Ends every subscription.
    virtual void unwatchAll() = 0;

    /// Starts sampling, and delivering every `gatherPeriod` ms (the models never ask for less than 200).
    /// A `samplingPeriod` of 0 stands for sampling each key at the period of its own watchKey().
    virtual void startWatcher(int gatherPeriod, int samplingPeriod) = 0;
    /// Stops sampling and delivering.
    virtual void stopWatcher() = 0;
    /// Changes the delivery period of the running watcher (the models never ask for less than 200).
    virtual void setGatherPeriod(int period) = 0;
    /// Changes the sampling period of the running watcher.
    virtual void setSamplingPeriod(int period) = 0;

    /// Finds out whether the robot supports real-time sampling. The answer, now or later, is the invocation of the
    /// method of `receiver` whose plain name is `member` (no argument list, as QMetaObject::invokeMethod takes it)
    /// with one bool, true when supported. An answer from another thread is queued to the receiver's.
    virtual void isRealTimeSupported(QObject* receiver, const char* member) = 0;

Q_SIGNALS:
    /// The values that were gathered for the watched keys, by key name and by time stamp. Emitted every gather period
    /// while the watcher runs, on the models' thread; an implementation that emits it elsewhere registers the
    /// argument's type with Qt's meta-type system, so that it can be queued. The argument is a GatheredData; it is
    /// spelt out because string-based connections compare the text.
    void dataGathered(const QMap<QString, QMap<double, QVariant>>& data);
};

} // namespace Velk

#endif
