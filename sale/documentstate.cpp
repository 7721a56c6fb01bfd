#include "documentstate.h"

#include "placeinnames.h"

namespace sale {

namespace {

// Both in the order of their enumerations.
constexpr std::array stateNames{"queued", "running", "issued", "notIssued", "unknown"};
constexpr std::array reasonNames{"", "refused", "expired", "deleted", "settled", "resolved"};

} // namespace

QString stateName(DocumentState state)
{
    return QString::fromLatin1(stateNames.at(static_cast<size_t>(state)));
}

std::optional<DocumentState> stateOf(const QString& name)
{
    const std::optional<size_t> place = placeIn(stateNames, name);
    return place ? std::optional(static_cast<DocumentState>(*place)) : std::nullopt;
}

QString reasonName(StateReason reason)
{
    return QString::fromLatin1(reasonNames.at(static_cast<size_t>(reason)));
}

StateReason reasonOf(const QString& name)
{
    return static_cast<StateReason>(placeIn(reasonNames, name).value_or(0));
}

} // namespace sale
