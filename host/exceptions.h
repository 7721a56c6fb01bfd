#pragma once

#include "frhost_export.h"
#include "tr.h"

#include <QByteArray>
#include <QString>

#include <stdexcept>

/// Root of all failures that the driver reports to its host. The Russian message is meant for the cashier.
///
/// The family stands in one header: each class is a name and a place in the tree, nothing more. They are
/// thrown by value and caught by reference, children before their parents.
class FRHOST_EXPORT BasicException : public std::runtime_error
{
public:
    explicit BasicException(const QString& message);
    BasicException(const BasicException&) = default;
    BasicException& operator=(const BasicException&) = default;
    ~BasicException() override;

    const tr::Tr& tr() const { return m_message; }

private:
    tr::Tr m_message;
};

/// Root of the drivers' failures; what() is the message in UTF-8.
class FRHOST_EXPORT DriverException : public BasicException
{
public:
    using BasicException::BasicException;
    DriverException(const DriverException&) = default;
    DriverException& operator=(const DriverException&) = default;
    ~DriverException() override;

    const char* what() const noexcept override;
};

// A base class cannot stand in brackets.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define FRHOST_EXCEPTION(Name, Base)                                                                         \
    class FRHOST_EXPORT Name : public Base                                                                   \
    {                                                                                                        \
    public:                                                                                                  \
        using Base::Base;                                                                                    \
        Name(const Name&) = default;                                                                         \
        Name& operator=(const Name&) = default;                                                              \
        ~Name() override;                                                                                    \
    }
// NOLINTEND(bugprone-macro-parentheses)

/// The serial transport failed: port closed, refused a setting, gave no bytes though it announced some.
FRHOST_EXCEPTION(ComDriverException, DriverException);
/// The device sent nothing within the time-out.
FRHOST_EXCEPTION(ComDriverTimeoutException, ComDriverException);
/// Root of what the register itself reports.
FRHOST_EXCEPTION(FrDriverException, DriverException);
/// A command failed; the general case.
FRHOST_EXCEPTION(FrCommandException, FrDriverException);
/// No connection; the host calls AbstractFrDriver::connect again.
FRHOST_EXCEPTION(FrNoConnectionException, FrCommandException);
/// Trouble with the paper.
FRHOST_EXCEPTION(FrPaperException, FrCommandException);
/// The paper is out and the device waits for a new roll.
FRHOST_EXCEPTION(FrWaitForPaperException, FrPaperException);
/// The shift has lasted over 24 hours and must be closed.
FRHOST_EXCEPTION(FrShiftTooLongException, FrCommandException);
/// The device is in a fatal state; only service can help.
FRHOST_EXCEPTION(FrFatalException, FrCommandException);

#undef FRHOST_EXCEPTION
