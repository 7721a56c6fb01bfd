#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Shows the medians as they come and keeps them for the table of ratios.
class Medians : public benchmark::ConsoleReporter
{
public:
    Medians()
        : ConsoleReporter(OO_Tabular)
    {
    }
    void ReportRuns(const std::vector<Run>& runs) override;

    /// Prints the ratios and what is aimed at. True when all aims are met and no measurement failed.
    bool printTable() const;

private:
    struct Row
    {
        std::string what;
        std::string comparedWith;
        double ours;
        double theirs;
        /// Infinite when the row only explains another.
        double aim;
        bool isMissed() const { return ours > aim * theirs; }
    };

    /// Seconds; not a number when it was not measured.
    double median(const std::string& name, const std::string& part) const;
    /// Time for each unit of the size beyond the base, which holds what does not depend on the size.
    double unitTime(const std::string& name, int size, int base) const;
    /// Slowest and fastest time for a unit.
    Row flatness(const std::string& what, const std::string& name, const std::vector<int>& sizes, int base,
        double aim) const;
    std::vector<Row> rows() const;
    static void print(const Row& row);

    std::map<std::string, std::map<std::string, double>> m_medians;
    bool m_failed = false;
};
