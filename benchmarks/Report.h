#pragma once

#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

/// Prints each operation of the program beside the floor's, where there is one, as medians of
/// all repetitions with the ratio of the two.
class Report : public benchmark::BenchmarkReporter
{
public:
    /// One line of the table, by the names of the two benchmarks; without a floor, empty.
    struct Row
    {
        std::string name;
        std::string floor;
    };

    explicit Report(std::vector<Row> rows);

    bool ReportContext(const Context &context) override;
    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

private:
    std::vector<Row> rows;
    std::map<std::string, std::vector<double>> microseconds;
};
