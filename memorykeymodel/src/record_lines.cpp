#include "record_lines.h"

#include "number_text.h"
#include "value_text.h"

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

// As QMap sorts time stamps, and with a place for what is no number.
bool isEarlier(double a, double b)
{
    return a < b || (std::isnan(b) && !std::isnan(a));
}

} // namespace

std::string recordHeader(const QSet<DisplayedMemoryKey>& columns)
{
    std::string header = "Time";
    for (const DisplayedMemoryKey& column : columns) {
        header += ';';
        appendQuoted(&header, column.key().name());
    }
    header += '\n';
    return header;
}

RecordCells recordCells(const std::vector<BatchMatcher::Match>& matches, int columnCount)
{
    std::vector<const QMap<double, QVariant>*> samplesByColumn(std::size_t(columnCount), nullptr);
    for (const BatchMatcher::Match& match : matches)
        samplesByColumn[std::size_t(match.place)] = match.samples;

    RecordCells cells;
    cells.reserve(matches.size());
    for (int column = 0; column < columnCount; ++column) {
        if (const QMap<double, QVariant>* const samples = samplesByColumn[std::size_t(column)]) {
            for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample)
                cells.push_back({sample.key(), column, &*sample});
        }
    }
    // Most robots sample all keys at one time: the cells are sorted as they are.
    const auto comesFirst = [](const RecordCell& a, const RecordCell& b) {
        return isEarlier(a.time, b.time) || (!isEarlier(b.time, a.time) && a.column < b.column);
    };
    if (!std::is_sorted(cells.cbegin(), cells.cend(), comesFirst))
        std::sort(cells.begin(), cells.end(), comesFirst);
    return cells;
}

RecordCells::const_iterator endOfRow(RecordCells::const_iterator row, RecordCells::const_iterator end)
{
    return std::find_if(row, end, [row](const RecordCell& cell) { return isEarlier(row->time, cell.time); });
}

void makeRecordLine(std::string* line, double time, RecordCells::const_iterator row, RecordCells::const_iterator rowEnd,
                    int columnCount)
{
    line->clear();
    appendSixDigits(line, time);
    int column = -1;
    for (; row != rowEnd; ++row) {
        line->append(std::size_t(row->column - column), ';');
        column = row->column;
        appendValue(line, *row->value);
    }
    line->append(std::size_t(columnCount - 1 - column), ';');
    line->push_back('\n');
}

} // namespace Velk
