#include "table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace {

constexpr double hexAim = 1.15;
constexpr double xmlAim = 2;
constexpr double flatAim = 1.3;
constexpr double processorAim = 0.01;
constexpr double noAim = std::numeric_limits<double>::infinity();

} // namespace

void Medians::ReportRuns(const std::vector<Run>& runs)
{
    std::vector<Run> shown;
    for (const Run& run : runs) {
        m_failed = m_failed || run.error_occurred;
        if (run.error_occurred || run.aggregate_name == "median" || run.aggregate_name == "cv")
            shown.push_back(run);
        if (run.error_occurred || run.aggregate_name != "median")
            continue;
        for (const auto& [name, counter] : run.counters)
            m_medians[run.run_name.function_name][name] = counter.value;
    }
    ConsoleReporter::ReportRuns(shown);
}

double Medians::median(const std::string& name, const std::string& part) const
{
    const auto found = m_medians.find(name);
    return found == m_medians.end() ? std::nan("") : found->second.at(part);
}

double Medians::unitTime(const std::string& name, int size, int base) const
{
    const double start = base == 0 ? 0 : median(name, std::to_string(base));
    return (median(name, std::to_string(size)) - start) / (size - base);
}

Medians::Row Medians::flatness(const std::string& what, const std::string& name,
    const std::vector<int>& sizes, int base, double aim) const
{
    std::vector<double> times;
    for (const int size : sizes)
        times.push_back(unitTime(name, size, base));
    const auto [fastest, slowest] = std::minmax_element(times.begin(), times.end());
    return {what, "fastest size", *slowest, *fastest, aim};
}

std::vector<Medians::Row> Medians::rows() const
{
    const auto compared = [this](const std::string& what, const std::string& name, const std::string& with,
                              const std::string& side, double aim) {
        return Row{what, with, median(name, "driver"), median(name, side), aim};
    };
    std::vector<Row> rows{
        compared("HEX round trip", "roundtrip/HEX", "bare loop", "bare", hexAim),
        compared("HEX round trip", "roundtrip/HEX", "libmodbus RTU", "modbus", 1),
        compared("XML status round trip", "roundtrip/XML", "bare loop", "bare", xmlAim),
    };
    for (const std::string language : {"HEX", "XML"})
        rows.push_back(flatness(language + " receipt, each further position", "receipt/" + language,
            {10, 100, 1000}, 1, flatAim));
    const std::vector<int> kilobytes{10, 100, 1000, 10'000};
    rows.push_back(flatness("XML answer, each KB", "answer/XML", kilobytes, 0, flatAim));
    rows.push_back(flatness("the same in fresh memory", "answer/XML/fresh", kilobytes, 0, noAim));
    for (const std::string language : {"HEX", "XML"}) {
        const std::string what = language + " sale, processor time";
        const std::string name = "sale/" + language;
        rows.push_back(compared(what, name, "time on the line", "line", processorAim));
        rows.push_back(compared(what, name, "bare loop", "bare", noAim));
    }
    return rows;
}

void Medians::print(const Row& row)
{
    const double ratio = row.ours / row.theirs;
    std::printf("| %s | %.2f | %s | %.2f | %.3g |", row.what.c_str(), row.ours * 1e6,
        row.comparedWith.c_str(), row.theirs * 1e6, ratio);
    if (row.aim == noAim)
        std::printf(" | |\n");
    else
        std::printf(" %.3g | %s |\n", row.aim, row.isMissed() ? "missed" : "met");
}

bool Medians::printTable() const
{
    int missed = 0;
    std::printf("\n| measurement | ours, us | compared with | theirs, us | ratio | aim | |\n"
                "|---|--:|---|--:|--:|--:|---|\n");
    for (const Row& row : rows()) {
        // What a filter left out is neither met nor missed.
        if (!std::isfinite(row.ours / row.theirs))
            continue;
        print(row);
        missed += row.isMissed() ? 1 : 0;
    }
    std::printf("\naims missed: %d%s\n", missed, m_failed ? "; a measurement failed" : "");
    return missed == 0 && !m_failed;
}
