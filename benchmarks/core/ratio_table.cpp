// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "ratio_table.h"

#include <cstdio>

namespace {

const char separator[] = " | ";
const char ours[] = "memorykeymodel";

} // namespace

std::string rowName(const std::string& work, const std::string& whose, int size)
{
    return work + separator + whose + separator + std::to_string(size);
}

RatioTable::RatioTable()
    : ConsoleReporter(OO_None)
{}

void RatioTable::ReportRuns(const std::vector<Run>& runs)
{
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        if (run.error_occurred || (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median"))
            continue;
        const std::string name = run.run_name.function_name;
        const std::size_t first = name.find(separator);
        const std::size_t second = name.find(separator, first + 1);
        if (first == std::string::npos || second == std::string::npos)
            continue;
        const std::string whose = name.substr(first + 3, second - first - 3);
        const std::string row = name.substr(0, first) + name.substr(second);
        const double nanoseconds = run.real_accumulated_time / double(run.iterations) * 1e9;
        if (m_times.find(row) == m_times.end())
            m_order.push_back(row);
        Times& times = m_times[row];
        if (whose == ours)
            times.ours = nanoseconds;
        else
            times.others[whose] = nanoseconds; // with repetitions: the median, which is reported last
    }
}

void RatioTable::Finalize()
{
    std::printf("\nHow many times as long the others take (above 1: this library is faster)\n\n");
    std::printf("%-58s %12s  %s\n", "work | size", "ours, ns", "others");
    for (const std::string& row : m_order) {
        const Times& times = m_times[row];
        std::printf("%-58s %12.0f ", row.c_str(), times.ours);
        for (const auto& other : times.others)
            std::printf(" %s %.2f;", other.first.c_str(), times.ours > 0 ? other.second / times.ours : 0.0);
        std::printf("\n");
    }
}
