#pragma once

#include <QJsonObject>
#include <QStringList>

namespace emulator {

/// The requisites of a document (see tlv.h) with what they are called in Russian.
namespace tagtext {

/// One line a requisite: tag, name and value, with words for codes; those of a structure are indented.
QStringList lines(const QJsonObject& requisites);
/// The same for machines: a list of objects with "tag", "name" and "value", which is such a list in a
/// structure, and "words" where there are any.
QJsonArray json(const QJsonObject& requisites);

} // namespace tagtext

} // namespace emulator
