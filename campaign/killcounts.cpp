#include "killcounts.h"

#include "wiretrace.h"

#include <cstdio>
#include <numeric>
#include <optional>

namespace {

constexpr const char* wayNames[] = {"SIGKILL", "SIGTERM", "SIGINT", "SIGHUP", "closed pipe"};

int sum(const std::array<int, KillCounts::phases>& kills)
{
    return std::accumulate(kills.cbegin(), kills.cend(), 0);
}

void printLine(const char* name, const std::array<int, KillCounts::phases>& kills)
{
    std::printf("%-12s", name);
    for (const int count : kills)
        std::printf(" %12d", count);
    std::printf(" %8d\n", sum(kills));
}

} // namespace

KillCounts::Phase KillCounts::phaseOf(const WireTrace& trace)
{
    if (trace.lines() == 0)
        return BeforeFirstByte;
    if (trace.hasClosing())
        return trace.isClosingAnswered() ? AfterClose : InClose;
    const std::optional<WireTrace::Progress> progress = trace.underWay();
    return progress && progress->phase > 0 ? InDocument : BeforeDocument;
}

void KillCounts::note(Way way, Phase phase)
{
    ++m_kills.at(way).at(phase);
}

int KillCounts::kills() const
{
    return std::accumulate(m_kills.cbegin(), m_kills.cend(), 0,
        [](int all, const std::array<int, phases>& kills) { return all + sum(kills); });
}

void KillCounts::add(const KillCounts& other)
{
    for (size_t way = 0; way < m_kills.size(); ++way)
        for (size_t phase = 0; phase < phases; ++phase)
            m_kills.at(way).at(phase) += other.m_kills.at(way).at(phase);
}

void KillCounts::print(const QString& title) const
{
    std::printf("%s\n%-12s %12s %12s %12s %12s %12s %8s\n", qPrintable(title), "", "before its", "before the",
        "in the open", "in the", "after", "");
    std::printf("%-12s %12s %12s %12s %12s %12s %8s\n", "", "first byte", "document", "document", "close",
        "it", "all");
    std::array<int, phases> all{};
    for (size_t way = 0; way < m_kills.size(); ++way) {
        printLine(wayNames[way], m_kills.at(way));
        for (size_t phase = 0; phase < phases; ++phase)
            all.at(phase) += m_kills.at(way).at(phase);
    }
    printLine("all", all);
}
