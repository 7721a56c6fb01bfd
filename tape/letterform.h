#pragma once

namespace tape::letterform {

inline constexpr auto fontFamily = "DejaVu Sans Mono";
// Of the font's size, as its tables have them: a line is as high as its letters with ascent and descent.
inline constexpr double ascent = 0.928;
inline constexpr double advance = 0.602;
inline constexpr double lineHeight = 1.164;

} // namespace tape::letterform
