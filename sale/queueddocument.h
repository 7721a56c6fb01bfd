#pragma once

#include "documentanswer.h"

#include <optional>

namespace sale {

class CashDesk;

/// What came of a document that waited in the journal.
struct QueuedDocument
{
    /// As the journal has it now; the error says what failed.
    DocumentAnswer answer;
    /// It waits still: what keeps the register from it, or the journal.
    std::optional<ErrorKind> held = {};
    /// What the journal said at the end; nothing where it could not be asked.
    std::optional<DocumentState> stored = {};
};

/// Makes the document that waits in the journal under that id for the desk's register, by its kind and its
/// body: a receipt's JSON, or what PlainDocument says. Once at most, whatever happens: it is begun only while
/// it waits, and one that waits no longer, or for another register, is answered as it stands. What is wrong
/// with the document itself, also with its marking codes, its cash or its shift (but see
/// DeskOptions::closesShift), refuses it; what is wrong with the register, its line or the journal leaves it
/// where it is. Throws nothing.
/// A register that was opened a while ago may have been switched off and on since, and refuses everything
/// until it is started anew: one that wasOpen keeps what it refuses before it begins waiting (held), for
/// another try behind CashDesk::open.
QueuedDocument makeQueued(CashDesk& desk, const QString& id, bool wasOpen = false);

} // namespace sale
