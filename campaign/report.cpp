#include "report.h"

#include <QSet>

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace {

void printRow(const char* name, const Report::Row& row)
{
    std::printf("| %-36s | %8d | %8d | %8d | %8d | %10d | %8d |\n", name, row.injected, row.salesOk,
        row.salesFailed, row.verdicts.value(sale::Outcome::Issued),
        row.verdicts.value(sale::Outcome::NotIssued), row.verdicts.value(sale::Outcome::Unknown));
}

void printSteps(const char* text, const QList<int>& steps)
{
    if (steps.isEmpty())
        return;
    std::printf("%s: %d (steps", text, static_cast<int>(steps.size()));
    for (const int step : steps)
        std::printf(" %d", step);
    std::printf(")\n");
}

} // namespace

void Report::addInjected(const QList<FaultKind>& kinds)
{
    m_total.injected += static_cast<int>(kinds.size());
    for (const FaultKind kind : kinds)
        ++m_rows[kind].injected;
}

void Report::addSuccess(const SaleResult& result)
{
    ++m_total.salesOk;
    m_untouched += result.faults.isEmpty() && result.deeds.isEmpty() ? 1 : 0;
    for (const FaultKind kind : result.faults + result.deeds)
        ++m_rows[kind].salesOk;
}

void Report::addFailure(const SaleResult& result)
{
    QSet<FaultKind> rows(result.deeds.cbegin(), result.deeds.cend());
    rows.insert(result.faults.isEmpty() ? FaultKind::None : result.faults.constLast());
    QList<Row*> counted{&m_total};
    for (const FaultKind kind : rows)
        counted.append(&m_rows[kind]);
    for (Row* const row : counted) {
        ++row->salesFailed;
        if (result.hasCloseFailed)
            ++row->verdicts[result.outcome];
    }
}

int Report::failedCloses() const
{
    return std::accumulate(m_total.verdicts.cbegin(), m_total.verdicts.cend(), 0);
}

int Report::unknownCloses() const
{
    return m_total.verdicts.value(sale::Outcome::Unknown);
}

int Report::unknownPermille() const
{
    constexpr int few = 500;
    return failedCloses() < few ? 0 : unknownCloses() * 1000 / failedCloses();
}

void Report::addCall(const QString& name, qint64 waited)
{
    qint64& longest = m_longest[name];
    longest = std::max(longest, waited);
}

void Report::print(const QString& title) const
{
    std::printf("%s\n", title.toUtf8().constData());
    std::printf("| %-36s | injected | sales ok |   failed |   issued | not issued |  unknown |\n", "fault");
    std::printf("|--------------------------------------|---------:|---------:|---------:|---------:|"
                "-----------:|---------:|\n");
    for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row)
        printRow(
            row.key() == FaultKind::None ? "trouble left from the sale before" : faultInfo(row.key()).text,
            row.value());
    printRow("all", m_total);
    std::printf("sales without any fault: %d\n", m_untouched);
    std::printf("failed closes: %d, unknown: %d (%.1f %%); sold again under the same id: %d\n",
        failedCloses(), unknownCloses(), failedCloses() == 0 ? 0.0 : 100.0 * unknownCloses() / failedCloses(),
        m_soldAgain);
    if (m_reviews > 0)
        std::printf("documents that the journal did not know, looked at: %d times\n", m_reviews);
    if (m_takenForOurs > 0)
        std::printf("a neighbour's sale of the same, taken for ours: %d\n", m_takenForOurs);
    printSteps("reported as done, changed on the line and stored as it came", m_altered);
    printSteps("reported as done, changed on the line into another command", m_lost);
    printCalls();
}

void Report::printCalls() const
{
    std::printf("longest call, seconds of virtual time:");
    for (auto call = m_longest.cbegin(); call != m_longest.cend(); ++call)
        std::printf(" %s %.1f", call.key().toUtf8().constData(), static_cast<double>(call.value()) / 1000);
    std::printf("\n");
}
