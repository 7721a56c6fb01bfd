#pragma once

#include "memory/documentrow.h"
#include "register/identity.h"
#include "register/registermemory.h"
#include "register/storeddocument.h"

#include <QByteArray>
#include <QMap>

namespace emulator {

/// What a register keeps as a state has it on disk: its parts as JSON by the name of the part, and a row for
/// each of its documents.
namespace registerstate {

using States = QMap<QString, QByteArray>;

/// The parts, and what they were written of.
struct Written
{
    RegisterMemory memory;
    States states;
};

/// A part of a long list that is as it was before is not written anew.
Written written(const Identity& identity, const RegisterMemory& memory, const Written& before);
/// Throws MemoryError when a part is missing or not good.
Identity readIdentity(const States& states);
RegisterMemory readMemory(const States& states);

DocumentRow written(const StoredDocument& document);
/// Throws MemoryError when a column is not good.
StoredDocument readDocument(const DocumentRow& row);

} // namespace registerstate

} // namespace emulator
