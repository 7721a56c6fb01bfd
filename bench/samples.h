#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <string>
#include <vector>

/// Seconds that were measured of several things in turn, each with a name.
class Samples
{
public:
    void add(const std::string& name, double seconds) { m_values[name].push_back(seconds); }

    /// Makes the median of each a counter of the benchmark.
    void publish(benchmark::State& state)
    {
        for (auto& [name, values] : m_values) {
            const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
            std::nth_element(values.begin(), middle, values.end());
            state.counters[name] = *middle;
        }
    }

private:
    std::map<std::string, std::vector<double>> m_values;
};

/// Processor time of this thread.
inline double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}
