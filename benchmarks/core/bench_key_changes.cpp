// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "bench_robot.h"
#include "ratio_table.h"

using namespace Velk;

namespace {

void addAndRemoveOneKey(benchmark::State& state, int size)
{
    BenchModel bench(keyNames(size));
    const QSet<MemoryKey> key = keysOf({QStringLiteral("One/More/Key")});
    for (auto _ : state) {
        bench.model.addKeys(key);
        bench.model.removeKeys(key);
    }
}

void selectOneKey(benchmark::State& state, int size)
{
    const QStringList names = keyNames(size);
    BenchModel bench(names);
    const QSet<MemoryKey> key = keysOf({names.last()});
    for (auto _ : state)
        bench.model.setSelectedKeys(key);
}

// One look-up by name: a comparison with the name of each displayed key.
void scan(benchmark::State& state, int size)
{
    BenchModel bench(keyNames(size));
    const QSet<DisplayedMemoryKey> keys = bench.model.displayedKeys();
    const QString name = QStringLiteral("One/More/Key");
    for (auto _ : state) {
        for (const DisplayedMemoryKey& displayed : keys) {
            if (displayed.key().name() == name)
                state.SkipWithError("found");
        }
    }
}

const bool registered = [] {
    for (const int size : {10, 100, 1000, 10000}) {
        const auto add = [size](const char* work, const char* whose, void (*run)(benchmark::State&, int)) {
            benchmark::RegisterBenchmark(rowName(work, whose, size).c_str(), run, size);
        };
        add("one key added and removed", "memorykeymodel", addAndRemoveOneKey);
        add("one key added and removed", "(one walk)", scan);
        add("one key selected", "memorykeymodel", selectOneKey);
        add("one key selected", "(one walk)", scan);
    }
    return true;
}();

} // namespace
