#pragma once

#include "tape/code.h"
#include "tape/cut.h"
#include "tape/picture.h"
#include "tape/textline.h"

#include <variant>

namespace tape {

/// What stands on a page from its left to its right edge.
using Line = std::variant<TextLine, Picture, Code, Cut>;

} // namespace tape
