#pragma once

#include "line/language.h"

#include <QStringList>

/// Names of the fields of requests, as decoded frames have them.
namespace emulator::panel::requestfields {

/// Of requests with one of these codes; over XML, where any request may carry any tag, of all requests.
QStringList namesOf(const QStringList& codes, Language language);
/// Whether such a request can have that field. Over HEX also "field3", for one without a name; over XML the
/// path may be longer, and a tag that has no name has its number.
bool mayHave(const QString& name, const QStringList& codes, Language language);

} // namespace emulator::panel::requestfields
