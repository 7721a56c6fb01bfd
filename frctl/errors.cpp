#include "errors.h"

#include "exceptions.h"
#include "failure.h"
#include "journalerror.h"

namespace frctl {

RegisterError::RegisterError(const BasicException& cause, const sale::Verdict& verdict)
    : RegisterError(cause.tr().ru(), sale::exceptionClassName(cause), verdict)
{
}

RegisterError::RegisterError(const QString& text, const QString& exceptionName, const sale::Verdict& verdict)
    : std::runtime_error(text.toStdString())
    , m_exceptionName(exceptionName)
    , m_verdict(verdict)
{
}

QString hostErrorName()
{
    return QStringLiteral("HostError");
}

ExitStatus exitStatusOf(sale::Outcome outcome)
{
    switch (outcome) {
    case sale::Outcome::Issued:
        return ExitIssued;
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
    try {
        std::rethrow_exception(failure.exception);
    } catch (const Interrupted&) {
        throw Interrupted(verdict);
    } catch (const sale::JournalError&) {
        throw RegisterError(failure.text, hostErrorName(), verdict);
    } catch (const BasicException& cause) {
        throw RegisterError(cause, verdict);
    }
}

} // namespace frctl
