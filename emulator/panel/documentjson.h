#pragma once

#include <QJsonObject>

namespace emulator::panel {

struct ArchivedDocument;
class Desk;

/// Documents of the fiscal drive as answers have them.
namespace documentjson {

QJsonObject head(const ArchivedDocument& document, const Desk& desk);
/// With its tags, its page and what led to it.
QJsonObject whole(const ArchivedDocument& document, const Desk& desk);

} // namespace documentjson

} // namespace emulator::panel
