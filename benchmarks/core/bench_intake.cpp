// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "ratio_table.h"
#include "yardsticks.h"

using namespace Velk;

namespace {

struct Pattern
{
    const char* name;
    int stride;
    int samplesPerKey;
};

/// Two batches in turn, so that every batch changes every value.
class Batches
{
public:
    Batches(const QStringList& names, const Pattern& pattern)
        : m_batches{makeBatch(names, 1.0, Values::Doubles, pattern.stride, pattern.samplesPerKey),
                    makeBatch(names.mid(0), 2.0, Values::Integers, pattern.stride, pattern.samplesPerKey)}
    {}
    const GatheredData& next() { return m_batches[m_turn ^= 1]; }

private:
    GatheredData m_batches[2];
    int m_turn = 0;
};

void ours(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    Batches batches(names, pattern);
    BenchModel bench(names);
    for (auto _ : state)
        bench.deliver(batches.next());
    benchmark::DoNotOptimize(bench.announced);
}

void hashWithSignal(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    Batches batches(names, pattern);
    HashStore store(names);
    qint64 announced = 0;
    QObject::connect(&store, &HashStore::valueChanged, &store, [&](const QString&, const QVariant&) { ++announced; });
    for (auto _ : state)
        store.take(batches.next());
    benchmark::DoNotOptimize(announced);
}

void standardItemModel(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    Batches batches(names, pattern);
    StandardModel store(names);
    qint64 announced = 0;
    QObject::connect(&store.model, &QStandardItemModel::dataChanged, &store.model, [&] { ++announced; });
    for (auto _ : state)
        store.take(batches.next());
    benchmark::DoNotOptimize(announced);
}

const Pattern patterns[] = {
    {"intake, every key once", 1, 1}, {"intake, one key in ten", 10, 1}, {"intake, ten samples a key", 1, 10}};

const bool registered = [] {
    for (const Pattern& pattern : patterns) {
        for (const int size : {10, 100, 1000, 10000}) {
            benchmark::RegisterBenchmark(rowName(pattern.name, "memorykeymodel", size).c_str(), ours, pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "QHash with a signal", size).c_str(), hashWithSignal,
                                         pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "QStandardItemModel", size).c_str(), standardItemModel,
                                         pattern, size);
        }
    }
    return true;
}();

} // namespace
