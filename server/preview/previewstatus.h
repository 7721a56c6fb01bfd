#pragma once

#include "tape/drawingprogram.h"

namespace frserver {

/// How the process that draws a receipt tells of its end, beside what it wrote: the picture, or why the
/// register refuses the receipt. frspf-draw takes its place for a PNG and ends with a tape::DrawStatus, whose
/// values these continue.
enum PreviewStatus {
    PreviewDrawn = tape::Drawn,
    PreviewFailed = tape::OutputLost,
    PreviewTooLong = tape::TooLong,
    PreviewRefused
};

} // namespace frserver
