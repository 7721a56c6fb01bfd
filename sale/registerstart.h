#pragma once

#include "registerline.h"
#include "settledsale.h"

#include <QList>
#include <QString>

class AbstractFrDriver;

namespace sale {

class DocumentStore;

/// Connects to a register whose port is open, and compares it with the one that the line expects, which asks
/// nothing more, but for a tax number over HEX. Throws WrongRegister and the driver's exceptions.
void connectRegister(AbstractFrDriver& driver, const RegisterLine& line);

/// The comparison alone, with numbers that the program has read itself. Throws WrongRegister.
void compareRegister(const ExpectedRegister& told, const RegisterLine& line);

/// Connects as well, and keeps others from the register that share the journal, if there is one (see
/// DocumentStore::meetRegister). Throws what connectRegister throws, and JournalError.
void meetRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName);

/// Reaches a register whose port is open: meets, settles what was begun on it and not brought to its end,
/// and initialises it, which cleans up the document that is open. Gives the documents that were settled. Asks
/// what meetRegister, settlePendingSales and init ask. Without a journal (null) nothing is settled: not for a
/// program that goes on to make documents. Throws WrongRegister, JournalError and the driver's exceptions;
/// then nothing may be sold.
QList<SettledSale> startRegister(
    AbstractFrDriver& driver, DocumentStore* journal, const RegisterLine& line, const QString& registerName);

} // namespace sale
