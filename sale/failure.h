#pragma once

#include <QString>

#include <exception>

class BasicException;

namespace sale {

/// Why the work on a document ended early.
struct Failure
{
    /// The register's own Russian text for the cashier; of another exception what it says.
    QString text;
    /// Name of the exception's class as the contract has it ("FrPaperException"); "JournalError" when the
    /// journal of sales failed, and "std::exception" for whatever else came out of the host's own device.
    QString exceptionName;
    /// The exception itself, to be thrown again.
    std::exception_ptr exception;
    /// False for an exception that is none of the contract's, thrown by the host's own device to interrupt
    /// the driver or by the journal.
    bool isOfDriver = false;
};

/// To be called where an exception is being handled.
Failure currentFailure();

/// Name of the exception's class as host programs know it.
QString exceptionClassName(const BasicException& exception);

} // namespace sale
