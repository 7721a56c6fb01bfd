#pragma once

#include <QString>

#include <stdexcept>

class BasicException;

namespace frctl {

/// Exit statuses of the program.
enum ExitStatus { ExitSuccess = 0, ExitFailure = 1, ExitUsage = 2, ExitInterrupted = 130 };

/// Wrong arguments, or a file that cannot be used: nothing was sent.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/// The host's own side failed: no plugin, no port.
class HostError : public std::runtime_error
{
public:
    explicit HostError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/// The driver or the register said no without a failure of the line, or cannot do what was asked.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/// What has become of a document whose work was broken off.
enum class DocumentOutcome { None, Cancelled, NotCancelled, Unknown, Issued };

QString outcomeName(DocumentOutcome outcome);
/// A sentence for the person at the terminal; empty for None.
QString outcomeText(DocumentOutcome outcome);

/// The register or the line failed: the register's own text, the class of the exception and what became of
/// the document.
class RegisterError : public std::runtime_error
{
public:
    explicit RegisterError(const BasicException& cause, DocumentOutcome outcome = DocumentOutcome::None);

    QString exceptionName() const { return m_exceptionName; }
    DocumentOutcome outcome() const { return m_outcome; }

private:
    QString m_exceptionName;
    DocumentOutcome m_outcome;
};

/// Ctrl-C, or a request to end: thrown out of the device while a driver waits for the register.
class Interrupted : public std::runtime_error
{
public:
    explicit Interrupted(DocumentOutcome outcome = DocumentOutcome::None)
        : std::runtime_error("interrupted")
        , m_outcome(outcome)
    {
    }

    DocumentOutcome outcome() const { return m_outcome; }

private:
    DocumentOutcome m_outcome;
};

/// Name of the exception's class as host programs know it.
QString exceptionClassName(const BasicException& exception);

} // namespace frctl
