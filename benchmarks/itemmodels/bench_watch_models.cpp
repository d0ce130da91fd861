// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "benchmarks/core/bench_robot.h"
#include "report.h"

#include <itemmodels/sample_history.h>
#include <itemmodels/watch_model.h>
#include <itemmodels/watch_sort_model.h>

#include <QCoreApplication>

#include <ctime>
#include <functional>

namespace Velk {

namespace {

constexpr int batches = 50;

// The share of one core, in per cent, that this many batches a second take.
double shareOf(BenchModel& robot, const QStringList& names, int batchesPerSecond,
               const std::function<void()>& afterEach)
{
    std::vector<GatheredData> prepared;
    for (int i = 0; i < batches; ++i)
        prepared.push_back(makeBatch(names, 1000.0 + i, Values::Mix));
    const std::clock_t begin = std::clock();
    for (const GatheredData& batch : prepared) {
        robot.deliver(batch);
        afterEach();
    }
    const double seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    return 100.0 * seconds / batches * batchesPerSecond;
}

} // namespace

void benchWatchModels(int keys, int batchesPerSecond)
{
    std::printf("%d displayed keys, all updating %d times a second\n", keys, batchesPerSecond);
    const QStringList names = keyNames(keys);
    BenchModel robot(names);
    const auto nothing = [] {};

    printRow("the displayed key set alone", shareOf(robot, names, batchesPerSecond, nothing), "% of a core");
    {
        WatchModel watch(&robot.model);
        const auto show = [&watch] {
            watch.flush();
            readFirstRows(watch);
        };
        printRow("with the watch model and a view of 50 rows", shareOf(robot, names, batchesPerSecond, show),
                 "% of a core");
        const SampleHistory history(&robot.model);
        printRow("with the sample history as well", shareOf(robot, names, batchesPerSecond, show), "% of a core");
    }
    {
        WatchModel watch(&robot.model);
        WatchSortModel sorted(&watch);
        sorted.sort(WatchModel::ValueColumn);
        const auto show = [&] {
            watch.flush();
            readFirstRows(sorted);
        };
        printRow("sorted by value, the order kept", shareOf(robot, names, batchesPerSecond, show), "% of a core");
        sorted.setDynamicSortFilter(true);
        sorted.sort(WatchModel::ValueColumn, Qt::DescendingOrder);
        printRow("sorted by value all the time", shareOf(robot, names, batchesPerSecond, show), "% of a core");
    }
}

} // namespace Velk
