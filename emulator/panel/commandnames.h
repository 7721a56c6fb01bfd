#pragma once

#include "line/language.h"

#include <QStringList>

namespace emulator::panel::commandnames {

/// The codes that a command, told by its code or its name, has in that protocol; none when the protocol has
/// no such command.
QStringList codesOf(const QString& command, Language language);
/// All that the protocol has.
QStringList codes(Language language);
/// Names of both protocols.
const QStringList& all();
/// The same and the codes.
const QStringList& withCodes();
/// With that code a host may have a document stored in the fiscal drive.
bool mayStore(const QString& code, Language language);

} // namespace emulator::panel::commandnames
