#include "line/faultrules.h"

#include "line/faultplan.h"

#include <algorithm>

namespace emulator {

namespace {

// The end of a path is enough: "price" for "item[2].price".
bool isNamed(const QString& path, const QString& name)
{
    return path == name || path.endsWith(QLatin1Char('.') + name);
}

bool hasField(const FaultRequest& request, const std::pair<QString, QString>& wanted)
{
    return std::any_of(request.fields.cbegin(), request.fields.cend(), [&wanted](const auto& field) {
        return isNamed(field.first, wanted.first) && field.second == wanted.second;
    });
}

bool fits(const FaultRule& rule, const FaultRequest& request, Language language)
{
    const bool isItsCommand
        = rule.command.isEmpty() || rule.command == request.command || rule.command == request.name;
    return FaultPlan::fits(rule.fault, language) && isItsCommand && (!rule.isForStoring || request.isStoring)
        && (!rule.field || hasField(request, *rule.field));
}

// By the bits of the generator alone, which are the same with every library.
bool isLucky(FaultRules::Use& use)
{
    if (use.rule.probability >= 1)
        return true;
    constexpr int usedBits = 53;
    const auto drawn = static_cast<double>(use.chance() >> (64 - usedBits));
    return drawn < use.rule.probability * static_cast<double>(quint64(1) << usedBits);
}

bool isHit(FaultRules::Use& use, const FaultRequest& request, Language language)
{
    if (use.isOver())
        return false;
    ++use.exchanges;
    if (!fits(use.rule, request, language))
        return false;
    ++use.fitting;
    const bool isTurn
        = use.rule.nth ? use.fitting == *use.rule.nth : use.fitting % use.rule.each.value_or(1) == 0;
    return isTurn && isLucky(use);
}

} // namespace

bool FaultRules::Use::isOver() const
{
    return (rule.nth && fitting >= *rule.nth) || (rule.lifetime && exchanges >= *rule.lifetime);
}

void FaultRules::set(const QList<FaultRule>& rules)
{
    m_uses.clear();
    add(rules);
}

void FaultRules::add(const QList<FaultRule>& rules)
{
    for (const FaultRule& rule : rules)
        m_uses.append({rule, 0, 0, 0, std::mt19937_64(rule.seed)});
}

const FaultRule* FaultRules::hit(const FaultRequest& request, Language language)
{
    Use* found = nullptr;
    // All of them count the exchange, also those behind the one that hits it.
    for (Use& use : m_uses) {
        if (isHit(use, request, language) && found == nullptr)
            found = &use;
    }
    if (found == nullptr)
        return nullptr;
    ++found->hits;
    return &found->rule;
}

} // namespace emulator
