#pragma once

namespace trace {

// Bytes with a meaning of their own on a HEX line.
constexpr char startOfText = 0x02;
constexpr char endOfText = 0x03;
constexpr char enquiry = 0x05;
constexpr char acknowledge = 0x06;
constexpr char escape = 0x1B;
constexpr char separator = 0x1C;

} // namespace trace
