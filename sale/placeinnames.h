#pragma once

#include <QString>

#include <algorithm>
#include <array>
#include <optional>

namespace sale {

/// Where the name stands in a table that is in the order of its enumeration.
template <size_t Size>
std::optional<size_t> placeIn(const std::array<const char*, Size>& names, const QString& name)
{
    const auto* const found = std::find_if(
        names.begin(), names.end(), [&](const char* one) { return name == QLatin1String(one); });
    return found == names.end() ? std::nullopt : std::optional(static_cast<size_t>(found - names.begin()));
}

} // namespace sale
