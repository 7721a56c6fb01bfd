#pragma once

#include "register/fiscalrecord.h"
#include "register/identity.h"
#include "register/registermemory.h"

#include <QByteArray>
#include <QMap>

namespace emulator {

struct StoredDocument;

/// What a register keeps as the parts that a state has on disk: JSON by the name of the part.
namespace registerstate {

using States = QMap<QString, QByteArray>;

States written(const Identity& identity, const RegisterMemory& memory);
/// Throws MemoryError when a part is missing or not good.
Identity readIdentity(const States& states);
RegisterMemory readMemory(const States& states);

QByteArray writtenRecord(const FiscalRecord& record);
QByteArray writtenPage(const tape::Page& page);
FiscalRecord readRecord(const QByteArray& json, const QString& name);
QJsonObject readEntry(const QByteArray& json, const QString& name);
tape::Page readPage(const QByteArray& json, const QString& name);

} // namespace registerstate

} // namespace emulator
