// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "bench_robot.h"
#include "ratio_table.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>
#include <QStringListModel>

#include <memory>

using namespace Velk;

namespace {

/// Nine data keys for each event key.
void giveNames(BenchMemory& memory, int size)
{
    const QStringList names = keyNames(size);
    memory.dataNames = names.mid(0, size - size / 10);
    memory.eventNames = names.mid(size - size / 10);
}

struct ReadyCatalogue
{
    explicit ReadyCatalogue(int size)
    {
        giveNames(*connection.memory, size);
        catalogue = std::make_unique<MemoryKeyListModel>(&connection, QSet<MemoryKey>());
        QCoreApplication::processEvents();
    }
    BenchConnection connection;
    std::unique_ptr<MemoryKeyListModel> catalogue;
};

void untilReady(benchmark::State& state, int size)
{
    BenchConnection connection;
    giveNames(*connection.memory, size);
    for (auto _ : state) {
        MemoryKeyListModel catalogue(&connection, {});
        while (!catalogue.isReady())
            QCoreApplication::processEvents();
    }
}

// The names of both lists, without duplicates, in a model that a view can show.
void stringListModel(benchmark::State& state, int size)
{
    BenchConnection connection;
    giveNames(*connection.memory, size);
    for (auto _ : state) {
        QStringList names = connection.memory->dataNames + connection.memory->eventNames;
        names.removeDuplicates();
        QStringListModel model;
        model.setStringList(names);
        benchmark::DoNotOptimize(model.rowCount());
    }
}

void stringSet(benchmark::State& state, int size)
{
    BenchConnection connection;
    giveNames(*connection.memory, size);
    for (auto _ : state) {
        QSet<QString> names;
        for (const QString& name : connection.memory->dataNames)
            names.insert(name);
        for (const QString& name : connection.memory->eventNames)
            names.insert(name);
        benchmark::DoNotOptimize(names.size());
    }
}

void allKeys(benchmark::State& state, int size)
{
    const ReadyCatalogue ready(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(ready.catalogue->keys());
}

void addUserKey(benchmark::State& state, int size)
{
    const ReadyCatalogue ready(size);
    for (auto _ : state)
        ready.catalogue->addUserKey(QStringLiteral("Typed/Key"));
}

void selectHundredKeys(benchmark::State& state, int size)
{
    const ReadyCatalogue ready(size);
    const QSet<MemoryKey> selection = keysOf(keyNames(100));
    for (auto _ : state)
        ready.catalogue->selectKeys(selection);
}

const bool registered = [] {
    for (const int size : {1000, 10000, 100000, 1000000}) {
        const auto add = [size](const char* work, const char* whose, void (*run)(benchmark::State&, int)) {
            benchmark::RegisterBenchmark(rowName(work, whose, size).c_str(), run, size)->Unit(benchmark::kMicrosecond);
        };
        add("catalogue, until ready()", "memorykeymodel", untilReady);
        add("catalogue, until ready()", "QStringListModel", stringListModel);
        add("catalogue, until ready()", "QSet<QString>", stringSet);
        add("catalogue, keys()", "memorykeymodel", allKeys);
        add("catalogue, addUserKey()", "memorykeymodel", addUserKey);
        add("catalogue, selectKeys() of 100", "memorykeymodel", selectHundredKeys);
    }
    return true;
}();

} // namespace
