#pragma once

#include "answererror.h"
#include "errorkind.h"
#include "finding.h"
#include "verdict.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <stdexcept>

namespace sale {
struct Failure;
}

namespace frctl {

/// Exit statuses of the program.
enum ExitStatus {
    ExitSuccess = 0,
    ExitFailure = 1,
    ExitUsage = 2,
    /// What became of a document whose close failed.
    ExitIssued = 3,
    ExitNotIssued = 4,
    ExitUnknown = 5,
    ExitInterrupted = 130
};

// The errors of the program stand in one header: each is a name and what goes with it, nothing more.

/// Wrong arguments, or a file that cannot be used: nothing was sent.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& text)
        : std::runtime_error(text.toStdString())
    {
    }
};

/// A receipt, a file or an argument that must not be sent: nothing was.
class CheckError : public std::runtime_error
{
public:
    /// One error at least.
    CheckError(const QString& exceptionName, const QList<receipt::Finding>& errors)
        : std::runtime_error(errors.constFirst().text().toStdString())
        , m_exceptionName(exceptionName)
        , m_errors(errors)
    {
    }

    QString exceptionName() const { return m_exceptionName; }
    const QList<receipt::Finding>& errors() const { return m_errors; }

private:
    QString m_exceptionName;
    QList<receipt::Finding> m_errors;
};

/// The host's own side failed: no plugin, no port.
class HostError : public std::runtime_error
{
public:
    explicit HostError(const QString& text, sale::ErrorKind kind = sale::ErrorKind::Internal)
        : std::runtime_error(text.toStdString())
        , m_kind(kind)
    {
    }

    sale::ErrorKind kind() const { return m_kind; }

private:
    sale::ErrorKind m_kind;
};

/// The driver or the register said no without a failure of the line, or cannot do what was asked.
class Refusal : public std::runtime_error
{
public:
    explicit Refusal(const QString& text, const QStringList& refused = {})
        : std::runtime_error(text.toStdString())
        , m_refused(refused)
    {
    }
    Refusal(sale::ErrorKind kind, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_kind(kind)
    {
    }

    sale::ErrorKind kind() const { return m_kind; }

    /// Names of the settings that were refused, if it was about settings.
    const QStringList& refused() const { return m_refused; }

private:
    sale::ErrorKind m_kind = sale::ErrorKind::Other;
    QStringList m_refused;
};

/// The register or the line failed: the register's own text, the class of the exception and what became of
/// the document.
class RegisterError : public std::runtime_error
{
public:
    /// Also for what an earlier run left behind, or what failed beside the register.
    RegisterError(const QString& text, const QString& exceptionName, sale::ErrorKind kind,
        const sale::Verdict& verdict, bool isNotOpened = false);

    QString exceptionName() const { return m_exceptionName; }
    sale::ErrorKind kind() const { return m_kind; }
    const sale::Verdict& verdict() const { return m_verdict; }
    /// A document was asked for and did not come to its opening.
    bool isNotOpened() const { return m_isNotOpened; }

private:
    QString m_exceptionName;
    sale::ErrorKind m_kind;
    sale::Verdict m_verdict;
    bool m_isNotOpened;
};

/// What a service tells of a document that did not go well, with the status that it makes.
class ServiceFailure : public std::runtime_error
{
public:
    /// The outcome is for people, where the words of the verdict are not it.
    ServiceFailure(ExitStatus status, const sale::AnswerError& error, const sale::Verdict& verdict,
        const QString& outcome = {})
        : std::runtime_error(error.text.toStdString())
        , m_status(status)
        , m_error(error)
        , m_verdict(verdict)
        , m_outcome(outcome)
    {
    }

    ExitStatus status() const { return m_status; }
    const sale::AnswerError& error() const { return m_error; }
    const sale::Verdict& verdict() const { return m_verdict; }
    const QString& outcome() const { return m_outcome; }

private:
    ExitStatus m_status;
    sale::AnswerError m_error;
    sale::Verdict m_verdict;
    QString m_outcome;
};

/// Ctrl-C, or a request to end: thrown out of the device while a driver waits for the register. It derives
/// from nothing, since a driver that goes on after a failed exchange must not go on after this one.
class Interrupted
{
public:
    explicit Interrupted(const sale::Verdict& verdict = {}, bool isNotOpened = false)
        : m_verdict(verdict)
        , m_isNotOpened(isNotOpened)
    {
    }

    const sale::Verdict& verdict() const { return m_verdict; }
    /// As in RegisterError.
    bool isNotOpened() const { return m_isNotOpened; }

private:
    sale::Verdict m_verdict;
    bool m_isNotOpened;
};

/// What the JSON calls a failure of the host's own side.
QString hostErrorName();
/// Exit status for a document that failed with that verdict.
ExitStatus exitStatusOf(const sale::Verdict& verdict);
/// Throws what a failed document leaves the program with: RegisterError or Interrupted with the verdict;
/// whatever is neither of the register nor of the journal, as it came.
[[noreturn]] void throwFailure(const sale::Failure& failure, const sale::Verdict& verdict);

} // namespace frctl
