#include "Report.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

// Sorts the values.
double median(std::vector<double> &values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::string described(std::vector<double> &values)
{
    char text[64];
    const double middle = median(values);
    std::snprintf(text, sizeof text, "%9.1f (%.1f–%.1f)", middle, values.front(), values.back());
    return text;
}

// Padded by characters and not by bytes, as the dash is of three.
std::string padded(const std::string &text, std::size_t width)
{
    const auto characters = std::size_t(std::count_if(text.begin(), text.end(), [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    }));
    return text + std::string(characters < width ? width - characters : 0, ' ');
}

} // namespace

Report::Report(std::vector<Row> rows)
    : rows(std::move(rows))
{
}

bool Report::ReportContext(const Context &)
{
    return true;
}

void Report::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        // One that was given up has none.
        if (run.run_type == Run::RT_Iteration && run.iterations > 0) {
            microseconds[run.run_name.function_name].push_back(run.real_accumulated_time
                                                               / double(run.iterations) * 1e6);
        }
    }
}

void Report::Finalize()
{
    std::printf("%s%s%sratio\n", padded("operation, in µs", 44).c_str(),
                padded("floor (range)", 30).c_str(), padded("Velmora (range)", 30).c_str());
    for (const Row &row : rows) {
        const auto program = microseconds.find(row.name);
        if (program == microseconds.end())
            continue;
        const auto floor = microseconds.find(row.floor);
        const bool hasFloor = floor != microseconds.end();
        std::printf("%s%s%s", padded(row.name, 44).c_str(),
                    padded(hasFloor ? described(floor->second) : "", 30).c_str(),
                    padded(described(program->second), 30).c_str());
        if (hasFloor)
            std::printf("%5.2f", median(program->second) / median(floor->second));
        std::printf("\n");
    }
}
