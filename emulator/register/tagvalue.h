#pragma once

#include <QByteArray>
#include <QJsonValue>

#include <optional>

namespace emulator {

enum class TagKind;

/// A single value of a tag as bytes and in JSON; structures are not among them.
namespace tagvalue {

/// No bytes for what the kind cannot hold: another type of JSON, a number out of its range. Characters that
/// CP866 does not have become question marks, and a text is cut where the format has no room for it.
std::optional<QByteArray> bytes(TagKind kind, const QJsonValue& value);
/// No value for bytes that the kind does not have.
std::optional<QJsonValue> read(TagKind kind, const QByteArray& bytes);

} // namespace tagvalue

} // namespace emulator
