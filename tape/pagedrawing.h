#pragma once

#include "tape/drawing.h"
#include "tape/page.h"

namespace tape {

/// Where everything on the page stands on paper of 80 mm. What does not fit on a line goes on below it; a
/// code that cannot be made, or does not fit, is a frame with its title and the data in it.
Drawing drawingOf(const Page& page);

} // namespace tape
