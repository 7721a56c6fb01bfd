#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace emulator {

/// Requisites as a fiscal drive keeps them: tag and length in 2 bytes each, the lowest first, then the value.
/// In JSON they are an object by tag, a structure an object within it, and an array of what stands there more
/// than once.
namespace tlv {

/// The format has a form for that value of that tag.
bool holds(int tag, const QJsonValue& value);
/// Leaves out what the format has no form for.
QByteArray encode(const QJsonObject& requisites);
/// Nothing for bytes that are not whole, or have values that their tags cannot have.
std::optional<QJsonObject> decode(const QByteArray& bytes);

} // namespace tlv

} // namespace emulator
