#pragma once

#include "drivemark.h"

#include <optional>

class AbstractFrDriver;

namespace sale {

class DocumentStore;

/// The register of that name behind the last document of ours; nothing when the journal does not tell.
std::optional<DriveMark> lastKnownMark(const DocumentStore& store, const QString& registerName);

/// For a register that nobody else works, before a document of ours: throws ReviewNeeded when it has made
/// documents that the journal does not know. The mark is that before the document. Where it does not tell the
/// drive's last number, the one that is given back has it: the journal's, if nothing has moved since, else
/// the register is asked. Throws JournalError and the driver's exceptions.
DriveMark requireKnown(AbstractFrDriver& driver, const DocumentStore& store, DriveMark now);

/// Writes down that a person has looked at the documents up to that mark. Throws JournalError.
void acceptUnknown(DocumentStore& store, const QString& registerName, const DriveMark& now, const QString& by,
    const QString& note);

} // namespace sale
