// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Counts the allocations of the library for one unit of each work. The numbers are exact and repeatable.
#include "bench_robot.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

// The allocator of the C library, under the names that remain available when malloc() is replaced.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

long allocations = 0;
long bytes = 0;

void count(std::size_t size)
{
    ++allocations;
    bytes += long(size);
}

} // namespace

extern "C" {
void* malloc(std::size_t size) noexcept
{
    count(size);
    return __libc_malloc(size);
}
void* calloc(std::size_t number, std::size_t size) noexcept
{
    count(number * size);
    return __libc_calloc(number, size);
}
void* realloc(void* block, std::size_t size) noexcept
{
    count(size);
    return __libc_realloc(block, size);
}
}

using namespace Velk;

namespace {

template <typename Work>
void report(const char* unit, double units, Work work)
{
    const long allocationsBefore = allocations;
    const long bytesBefore = bytes;
    work();
    std::printf("%-52s %12.3f %12.1f\n", unit, double(allocations - allocationsBefore) / units,
                double(bytes - bytesBefore) / units);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    constexpr int keyCount = 1000;
    const QStringList names = keyNames(keyCount);
    std::printf("%-52s %12s %12s\n", "", "allocations", "bytes");

    for (const int samplesPerKey : {1, 10}) {
        const GatheredData first = makeBatch(names, 1.0, Values::Doubles, 1, samplesPerKey);
        const GatheredData second = makeBatch(names, 2.0, Values::Doubles, 1, samplesPerKey);
        BenchModel bench(names);
        bench.deliver(first);
        const QByteArray unit = QByteArray("per key and batch, samples a key: ") + QByteArray::number(samplesPerKey);
        report(unit.constData(), keyCount, [&] { bench.deliver(second); });
    }
    {
        const GatheredData first = makeBatch(names, 1.0, Values::Doubles, 10);
        const GatheredData second = makeBatch(names, 2.0, Values::Doubles, 10);
        BenchModel bench(names);
        bench.deliver(first);
        bench.deliver(second);
        report("per key and batch, one key in ten", keyCount / 10, [&] { bench.deliver(first); });
    }
    for (const Values values : {Values::Doubles, Values::Mix, Values::Integers}) {
        const GatheredData first = makeBatch(names, 1.0, values);
        const GatheredData second = makeBatch(names, 2.0, values);
        BenchModel bench(names);
        bench.model.startRecording();
        bench.deliver(first);
        bench.deliver(second);
        const char* const unit = values == Values::Doubles ? "per recorded cell, doubles"
                                 : values == Values::Mix   ? "per recorded cell, mix"
                                                           : "per recorded cell, integers";
        report(unit, keyCount, [&] { bench.deliver(first); });
    }
    {
        BenchConnection connection;
        DisplayedMemoryKeyListModel model(&connection);
        const QSet<MemoryKey> keys = keysOf(names);
        report("per displayed key, added", keyCount, [&] { model.addKeys(keys); });
    }
    {
        constexpr int nameCount = 100000;
        BenchConnection connection;
        connection.memory->dataNames = keyNames(nameCount);
        report("per catalogue name, until ready()", nameCount, [&] {
            const MemoryKeyListModel catalogue(&connection, {});
            while (!catalogue.isReady())
                QCoreApplication::processEvents();
        });
    }
    return 0;
}
