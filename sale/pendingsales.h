#pragma once

#include "registerline.h"
#include "settledsale.h"

#include <QList>

#include <QStringList>

#include <chrono>

class AbstractFrDriver;

namespace sale {

class DocumentStore;
struct StoredDocument;

/// Asks the register at hand about a document that was begun and not settled, or is unknown, and writes down
/// what has become of it. On another fiscal drive than its own that is a WrongRegister, and nothing is
/// written down: its own may still tell. One is not taken to be issued when others of ours were begun after
/// it, and may be what the register has: then a person alone can tell. Asks what settle asks, and which drive
/// it is where that told nothing; nothing for a document that leaves no trace. Throws WrongRegister,
/// JournalError and the driver's exceptions.
Verdict settleDocument(AbstractFrDriver& driver, DocumentStore& store, const StoredDocument& document,
    const RegisterLine& line = {});

/// Settles the documents that were begun on this fiscal drive, by whatever program, and not brought to their
/// end, also those that were given up. To be done after each connect and before init, which cleans up the
/// open document, and before any other document moves the numbers. Those that leave no trace in the drive,
/// begun on the register of that name, are unknown then. Asks nothing when nothing is to be settled, on the
/// drive that the line tells if it tells one; else which drive is at hand (HEX: 13 exchanges, XML: two
/// readings of 2), and for each document what settle asks. Writes each verdict down. Throws JournalError and
/// the driver's exceptions: then nothing may be sold.
QList<SettledSale> settlePendingSales(AbstractFrDriver& driver, DocumentStore& store,
    const RegisterLine& line = {}, const QString& registerName = {});

/// So long a register that nobody reaches is waited for: it may be switched off and on meanwhile.
inline constexpr std::chrono::minutes longestUnreached{5};

/// The documents that were begun so long ago, by the journal's clock, at the register of that name, which
/// whoever asks has not reached since, are unknown from now on: a person may say what has become of them, or
/// the register when it is reached after all. Another program may be at a younger one. Gives their ids.
/// Throws JournalError.
QStringList giveUpPendingSales(DocumentStore& store, const QString& registerName,
    std::chrono::milliseconds unreached = longestUnreached);

} // namespace sale
