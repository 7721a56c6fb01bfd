#pragma once

#include <QJsonObject>

namespace emulator {

/// An entry of the journal, whose fields have words, as the requisites of the document in the fiscal drive,
/// by tag (see tlv.h), and back. A field without a tag of its own, or with a value that its tag cannot have,
/// is a requisite of the user (1084), so that nothing of an entry is lost. A text that CP866 does not have is
/// both: with question marks in its tag, and escaped in the requisite of the user.
namespace entrytags {

QJsonObject toTags(const QJsonObject& entry);
QJsonObject fromTags(const QJsonObject& requisites);

} // namespace entrytags

} // namespace emulator
