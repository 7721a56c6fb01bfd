#pragma once

namespace tape {

/// Where the knife goes through the paper.
struct Cut
{
    bool operator==(const Cut&) const = default;
};

} // namespace tape
