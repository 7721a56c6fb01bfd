#pragma once

namespace emulator {

/// How the fiscal data format writes a value. In JSON: texts, sums ("12.34"), quantities ("1.000"), times
/// (ISO 8601 without a zone), signs (ten digits) and bytes (hexadecimal) are strings, the others numbers.
enum class TagKind {
    Text, // CP866
    Inn, // the same, filled up with blanks to twelve
    Byte,
    Word, // 2 bytes, the lowest first, as all numbers
    Integer, // 4 bytes
    Sum, // kopecks in as few bytes as they need
    Decimal, // number of decimals, then as a sum
    Time, // seconds since 1970 as if local time were UTC
    Sign, // 6 bytes, the highest first
    Bytes,
    Structure
};

struct TagRow
{
    int tag;
    TagKind kind;
    /// Russian.
    const char* name;
    /// There may be several; in JSON an array, even of one.
    bool repeats = false;
};

/// Tags that the register's documents have. One that it does not know is bytes without a name.
namespace tagtable {

TagRow row(int tag);

} // namespace tagtable

} // namespace emulator
