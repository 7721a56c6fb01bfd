#pragma once

namespace frserver {

/// How the process that draws a receipt tells of its end, beside what it wrote: the picture, or why the
/// register refuses the receipt. Too long is as frspf-draw has it, which takes its place for a PNG.
enum PreviewStatus { PreviewDrawn, PreviewFailed, PreviewWrong, PreviewTooLong, PreviewRefused };

} // namespace frserver
