#pragma once

namespace tape {

/// Where the characters of a barcode stand, if they do.
enum class CodeCaption { None, Above, Below, Both };

} // namespace tape
