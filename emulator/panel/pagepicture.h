#pragma once

#include "http/answer.h"
#include "tape/page.h"

namespace emulator::panel::pagepicture {

/// The page as "svg", "png" or "pdf". The last two are drawn by a program of their own, frspf-draw, so that
/// this one needs no Qt Gui, and come later.
http::Answer answer(const tape::Page& page, const QString& format);

} // namespace emulator::panel::pagepicture
