// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "ratio_table.h"
#include "yardsticks.h"

#include <QTemporaryDir>
#include <QTemporaryFile>

using namespace Velk;

namespace {

struct Pattern
{
    const char* name;
    Values values;
    bool ownTimes;
};

constexpr int batchCount = 16;
constexpr int rewindAfter = 64; // batches, so that no file fills the disk

QVector<GatheredData> makeBatches(const QStringList& names, const Pattern& pattern)
{
    QVector<GatheredData> batches;
    for (int i = 0; i < batchCount; ++i)
        batches << makeBatch(names, 1.0 + i, pattern.values, 1, 1, pattern.ownTimes);
    return batches;
}

void ours(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    const QVector<GatheredData> batches = makeBatches(names, pattern);
    BenchModel bench(names);
    bench.model.startRecording();
    QTemporaryFile* const file = bench.model.findChild<QTemporaryFile*>();
    int i = 0;
    for (auto _ : state) {
        bench.deliver(batches[i % batchCount]);
        if (++i % rewindAfter == 0)
            file->seek(0);
    }
}

// Only the row of this library includes the intake of the batch. This is its share, to be subtracted.
void oursWithoutRecording(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    const QVector<GatheredData> batches = makeBatches(names, pattern);
    BenchModel bench(names);
    int i = 0;
    for (auto _ : state)
        bench.deliver(batches[i++ % batchCount]);
}

template <typename Writer>
void writer(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    const QVector<GatheredData> batches = makeBatches(names, pattern);
    const QTemporaryDir directory;
    auto target = std::make_unique<Writer>(directory.filePath(QStringLiteral("record")), names);
    int i = 0;
    for (auto _ : state) {
        target->write(batches[i % batchCount]);
        if (++i % rewindAfter == 0)
            target = std::make_unique<Writer>(directory.filePath(QStringLiteral("record")), names);
    }
}

// The same bytes, already formatted, with one write for each line.
void floorOfTheFile(benchmark::State& state, const Pattern& pattern, int size)
{
    const QStringList names = keyNames(size);
    const QVector<GatheredData> batches = makeBatches(names, pattern);
    QVector<QList<QByteArray>> lines;
    for (const GatheredData& batch : batches) {
        BenchModel bench(names);
        bench.model.startRecording();
        QTemporaryFile* const file = bench.model.findChild<QTemporaryFile*>();
        const qint64 headerEnd = file->pos();
        bench.deliver(batch);
        file->seek(headerEnd);
        QList<QByteArray> linesOfBatch;
        while (!file->atEnd())
            linesOfBatch << file->readLine();
        lines << linesOfBatch;
    }
    QTemporaryFile file;
    file.open();
    int i = 0;
    for (auto _ : state) {
        for (const QByteArray& line : lines[i % batchCount])
            file.write(line);
        if (++i % rewindAfter == 0)
            file.seek(0);
    }
}

const Pattern patterns[] = {{"recording, doubles, one time stamp", Values::Doubles, false},
                            {"recording, mix, one time stamp", Values::Mix, false},
                            {"recording, integers, one time stamp", Values::Integers, false},
                            {"recording, doubles, own time stamps", Values::Doubles, true}};

const bool registered = [] {
    for (const Pattern& pattern : patterns) {
        for (const int size : {10, 100, 1000, 10000}) {
            if (pattern.ownTimes && size > 1000)
                continue; // 10 000 rows of 10 000 cells a batch: the yardsticks alone would take minutes
            benchmark::RegisterBenchmark(rowName(pattern.name, "memorykeymodel", size).c_str(), ours, pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "(intake only)", size).c_str(), oursWithoutRecording,
                                         pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "QTextStream", size).c_str(), writer<TextStreamWriter>,
                                         pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "std::ofstream", size).c_str(), writer<OfstreamWriter>,
                                         pattern, size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "fprintf", size).c_str(), writer<PrintfWriter>, pattern,
                                         size);
            benchmark::RegisterBenchmark(rowName(pattern.name, "(floor)", size).c_str(), floorOfTheFile, pattern, size);
        }
    }
    return true;
}();

} // namespace
