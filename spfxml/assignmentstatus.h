#pragma once

#include <checktype.h>

namespace spf::utils {

/// What a document makes of marked goods (tag 2110): 1 piece sold, 3 piece returned, 255 unchanged.
int getAssignmentStatus(hw::fr::CheckType type);

} // namespace spf::utils
