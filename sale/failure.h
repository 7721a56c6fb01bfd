#pragma once

#include "errorkind.h"

#include <QString>
#include <QStringList>

#include <exception>

class BasicException;

namespace sale {

/// Why the work on a document ended early.
struct Failure
{
    /// The register's own Russian text for the cashier; of another exception what it says.
    QString text;
    /// Name of the exception's class as the contract has it ("FrPaperException"), or as this library has it:
    /// "JournalError" when the journal failed, "RegisterTaken", "ReviewNeeded", "WrongRegister",
    /// "DocumentExpired", "ShiftIsClosed", "ShiftUnchanged", "MarkRefusal" for bad marking codes,
    /// "ReceiptError", "IdConflict" and "InvalidDocumentId" for mistakes of the caller. "std::exception" for
    /// whatever else came out of the host's own device.
    QString exceptionName;
    /// The exception itself, to be thrown again.
    std::exception_ptr exception;
    /// False for an exception that is none of the contract's: thrown by the host's own device to interrupt
    /// the driver, or by this library.
    bool isOfDriver = false;
    /// Mark also when the register did not find a marking code good, with the code's place in the receipt and
    /// what the register said of it; text is English then. The exception, a MarkRefusal, has all such codes.
    ErrorKind kind = ErrorKind::Internal;
    QString path = {};
    QStringList bits = {};
};

/// To be called where an exception is being handled.
Failure currentFailure();

/// Name of the exception's class as host programs know it.
QString exceptionClassName(const BasicException& exception);
/// What went wrong: by the text where a table has it, else by the exception's class.
ErrorKind errorKindOf(const BasicException& exception);

} // namespace sale
