// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef BENCHMARKS_CORE_BENCH_ROBOT_H
#define BENCHMARKS_CORE_BENCH_ROBOT_H

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <QFutureInterface>

#include <boost/make_shared.hpp>

namespace Velk {

/// A robot without a cost of its own: it ignores all calls and delivers the batches of the benchmark.
class BenchMemory : public MemoryInterface
{
public:
    QFuture<QStringList> getDataList() override { return finished(dataNames); }
    QFuture<QStringList> getEventList() override { return finished(eventNames); }
    QFuture<QStringList> getMicroEventList() override { return finished({}); }
    void watchKey(const QString&, int) override {}
    void unwatchKey(const QString&) override {}
    void unwatchAll() override {}
    void startWatcher(int, int) override {}
    void stopWatcher() override {}
    void setGatherPeriod(int) override {}
    void setSamplingPeriod(int) override {}
    void isRealTimeSupported(QObject*, const char*) override {}

    QStringList dataNames;
    QStringList eventNames;

private:
    static QFuture<QStringList> finished(const QStringList& names)
    {
        QFutureInterface<QStringList> list;
        list.reportStarted();
        list.reportResult(names);
        list.reportFinished();
        return list.future();
    }
};

class BenchConnection : public ConnectionManager
{
public:
    boost::shared_ptr<MemoryInterface> memoryInterface() override { return memory; }
    bool isConnected() const override { return true; }

    boost::shared_ptr<BenchMemory> memory = boost::make_shared<BenchMemory>();
};

/// Names like those of a robot.
inline QStringList keyNames(int count)
{
    static const char* const parts[] = {"Arm/Elbow", "Arm/Shoulder", "Base/Wheel/Left", "Battery", "Imu"};
    QStringList names;
    names.reserve(count);
    for (int i = 0; i < count; ++i)
        names << QStringLiteral("%1/Position%2").arg(QLatin1String(parts[i % 5])).arg(i);
    return names;
}

inline QSet<MemoryKey> keysOf(const QStringList& names)
{
    QSet<MemoryKey> keys;
    for (const QString& name : names)
        keys.insert(MemoryKey(name, name + QStringLiteral(" desc"), DataNature));
    return keys;
}

enum class Values
{
    Doubles, ///< with 17 significant digits
    Integers,
    Mix ///< doubles, integers, truth values, texts
};

inline QVariant valueOf(Values values, int i)
{
    const double d = 1.0 / (i + 3) + i;
    switch (values) {
    case Values::Doubles:
        return d;
    case Values::Integers:
        return i * 37;
    case Values::Mix:
        break;
    }
    switch (i % 4) {
    case 0:
        return d;
    case 1:
        return i;
    case 2:
        return i % 8 == 2;
    default:
        return QStringLiteral("state %1").arg(i);
    }
}

/// A batch of the robot: every `stride`th key with `samplesPerKey` samples, with one time stamp for all keys,
/// or one for each key.
inline GatheredData makeBatch(const QStringList& names, double time, Values values = Values::Doubles, int stride = 1,
                              int samplesPerKey = 1, bool ownTimes = false)
{
    GatheredData batch;
    for (int i = 0; i < names.size(); i += stride) {
        Samples samples;
        for (int sample = 0; sample < samplesPerKey; ++sample)
            samples.insert(time + sample * 0.01 + (ownTimes ? i * 1e-6 : 0.0), valueOf(values, i + sample));
        batch.insert(names[i], samples);
    }
    return batch;
}

/// A displayed key set with keys, a running watcher and a connected view.
struct BenchModel
{
    explicit BenchModel(const QStringList& names)
        : model(&connection)
    {
        model.addKeys(keysOf(names));
        QObject::connect(&model, &DisplayedMemoryKeyListModel::keysUpdated, &connection,
                         [this](const QSet<DisplayedMemoryKey>& keys) { announced += keys.size(); });
    }

    void deliver(const GatheredData& batch) { emit connection.memory->dataGathered(batch); }

    BenchConnection connection;
    DisplayedMemoryKeyListModel model;
    qint64 announced = 0;
};

} // namespace Velk

#endif
