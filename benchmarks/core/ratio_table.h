// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef BENCHMARKS_CORE_RATIO_TABLE_H
#define BENCHMARKS_CORE_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Names a benchmark for the table: "work | whose | size".
std::string rowName(const std::string& work, const std::string& whose, int size);

/// Prints every result when it is measured. At the end prints a table: for each work and size, the time of the others
/// divided by the time of this library.
class RatioTable : public benchmark::ConsoleReporter
{
public:
    RatioTable();
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    struct Times
    {
        double ours = 0;
        std::map<std::string, double> others;
    };

    std::vector<std::string> m_order;
    std::map<std::string, Times> m_times; ///< work and size to nanoseconds of one iteration
};

#endif
