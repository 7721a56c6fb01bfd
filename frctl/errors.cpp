#include "errors.h"

#include "exceptions.h"
#include "failure.h"
#include "journalerror.h"

namespace frctl {

RegisterError::RegisterError(const QString& text, const QString& exceptionName, sale::ErrorKind kind,
    const sale::Verdict& verdict, bool isNotOpened)
    : std::runtime_error(text.toStdString())
    , m_exceptionName(exceptionName)
    , m_kind(kind)
    , m_verdict(verdict)
    , m_isNotOpened(isNotOpened)
{
}

QString hostErrorName()
{
    return QStringLiteral("HostError");
}

ExitStatus exitStatusOf(const sale::Verdict& verdict)
{
    switch (verdict.outcome) {
    case sale::Outcome::Issued:
        return verdict.times > 1 ? ExitFailure : ExitIssued;
    case sale::Outcome::NotIssued:
        return ExitNotIssued;
    case sale::Outcome::Unknown:
        return ExitUnknown;
    default:
        return ExitFailure;
    }
}

void throwFailure(const sale::Failure& failure, const sale::Verdict& verdict)
{
    const bool isNotOpened = verdict.outcome == sale::Outcome::None;
    try {
        std::rethrow_exception(failure.exception);
    } catch (const Interrupted&) {
        throw Interrupted(verdict, isNotOpened);
    } catch (const sale::JournalError&) {
        // Nor is it known then whether an earlier run opened it.
        throw RegisterError(failure.text, hostErrorName(), failure.kind, verdict);
    } catch (const BasicException&) {
        throw RegisterError(failure.text, failure.exceptionName, failure.kind, verdict, isNotOpened);
    }
}

} // namespace frctl
