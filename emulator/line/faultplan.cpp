#include "line/faultplan.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

struct ModeName
{
    FaultMode mode;
    const char* name;
    int usual;
};

// The last column is the argument that a mode takes when none is given.
constexpr ModeName modeNames[] = {
    {FaultMode::Silence, "silence", 0},
    {FaultMode::Lost, "lost", 0},
    {FaultMode::Late, "late", 0},
    {FaultMode::Stale, "stale", 0},
    {FaultMode::Echo, "echo", 0},
    {FaultMode::BadCheck, "badcheck", 0},
    {FaultMode::Noise, "noise", 0},
    {FaultMode::Busy, "busy", 5},
    {FaultMode::Slow, "slow", 1},
    {FaultMode::Cut, "cut", 0},
    {FaultMode::Split, "split", 7},
    {FaultMode::Drop, "drop", 1},
    {FaultMode::Flip, "flip", 1},
    {FaultMode::Double, "double", 1},
    {FaultMode::PaperOut, "paper-out", 0},
    {FaultMode::PaperIn, "paper-in", 0},
    {FaultMode::PaperEnds, "paper-ends", 3},
    {FaultMode::PaperEndsQuietly, "paper-ends-quietly", 3},
    {FaultMode::Restart, "restart", 0},
};

const ModeName* findMode(const QString& name)
{
    const auto* const found = std::find_if(std::begin(modeNames), std::end(modeNames),
        [&name](const ModeName& mode) { return name == QLatin1String(mode.name); });
    return found == std::end(modeNames) ? nullptr : found;
}

} // namespace

std::optional<FaultPlan> FaultPlan::parse(const QString& text, QString* error)
{
    static const QRegularExpression form(QStringLiteral("^([a-z-]+)(?::(\\d{1,6}))?@(\\d{1,9})(\\+?)$"));
    FaultPlan plan;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = form.match(part.trimmed());
        const ModeName* const mode = match.hasMatch() ? findMode(match.captured(1)) : nullptr;
        if (mode == nullptr || match.captured(3).toInt() == 0) {
            *error = QStringLiteral("no such fault: \"%1\"").arg(part.trimmed());
            return std::nullopt;
        }
        const Fault fault{mode->mode, match.captured(2).isEmpty() ? mode->usual : match.captured(2).toInt()};
        if (match.captured(4).isEmpty())
            plan.add(match.captured(3).toInt(), fault);
        else
            plan.addFrom(match.captured(3).toInt(), fault);
    }
    return plan;
}

QString FaultPlan::modeName(FaultMode mode)
{
    const auto* const found = std::find_if(std::begin(modeNames), std::end(modeNames),
        [mode](const ModeName& candidate) { return candidate.mode == mode; });
    return found == std::end(modeNames) ? QStringLiteral("none") : QLatin1String(found->name);
}

const QList<FaultMode>& FaultPlan::allModes()
{
    static const QList<FaultMode> modes = [] {
        QList<FaultMode> all;
        for (const ModeName& mode : modeNames)
            all.append(mode.mode);
        return all;
    }();
    return modes;
}

Fault FaultPlan::at(int exchange) const
{
    if (m_faults.contains(exchange))
        return m_faults.value(exchange);
    const auto after = m_lasting.upperBound(exchange);
    return after == m_lasting.cbegin() ? Fault() : *std::prev(after);
}

} // namespace emulator
