#include "documentstate.h"

#include <algorithm>
#include <array>

namespace sale {

namespace {

// Both in the order of their enumerations.
constexpr std::array stateNames{"queued", "running", "issued", "notIssued", "unknown"};
constexpr std::array reasonNames{"", "refused", "expired", "deleted", "settled", "resolved"};

template <size_t Size>
std::optional<size_t> placeOf(const std::array<const char*, Size>& table, const QString& name)
{
    const auto* const found = std::find_if(
        table.begin(), table.end(), [&](const char* one) { return name == QLatin1String(one); });
    return found == table.end() ? std::nullopt : std::optional(static_cast<size_t>(found - table.begin()));
}

} // namespace

QString stateName(DocumentState state)
{
    return QString::fromLatin1(stateNames.at(static_cast<size_t>(state)));
}

std::optional<DocumentState> stateOf(const QString& name)
{
    const std::optional<size_t> place = placeOf(stateNames, name);
    return place ? std::optional(static_cast<DocumentState>(*place)) : std::nullopt;
}

QString reasonName(StateReason reason)
{
    return QString::fromLatin1(reasonNames.at(static_cast<size_t>(reason)));
}

StateReason reasonOf(const QString& name)
{
    return static_cast<StateReason>(placeOf(reasonNames, name).value_or(0));
}

} // namespace sale
