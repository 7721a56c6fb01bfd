#pragma once

#include <QByteArray>

#include <optional>

namespace emulator {

/// The bytes that two hexadecimal digits each stand for, without anything between; no value for other text.
std::optional<QByteArray> bytesOfHexDigits(const QByteArray& digits);

} // namespace emulator
