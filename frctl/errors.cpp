#include "errors.h"

#include "exceptions.h"

namespace frctl {

namespace {

template <typename T>
bool is(const BasicException& exception)
{
    return dynamic_cast<const T*>(&exception) != nullptr;
}

} // namespace

RegisterError::RegisterError(const BasicException& cause, const DocumentVerdict& verdict)
    : RegisterError(cause.tr().ru(), exceptionClassName(cause), verdict)
{
}

RegisterError::RegisterError(
    const QString& text, const QString& exceptionName, const DocumentVerdict& verdict)
    : std::runtime_error(text.toStdString())
    , m_exceptionName(exceptionName)
    , m_verdict(verdict)
{
}

ExitStatus exitStatusOf(DocumentOutcome outcome)
{
    switch (outcome) {
    case DocumentOutcome::Issued:
        return ExitIssued;
    case DocumentOutcome::NotIssued:
        return ExitNotIssued;
    case DocumentOutcome::Unknown:
        return ExitUnknown;
    default:
        return ExitFailure;
    }
}

QString exceptionClassName(const BasicException& exception)
{
    struct Row
    {
        bool (*matches)(const BasicException&);
        const char* name;
    };
    // Children before their parents.
    static const Row rows[] = {
        {is<ComDriverTimeoutException>, "ComDriverTimeoutException"},
        {is<ComDriverException>, "ComDriverException"},
        {is<FrNoConnectionException>, "FrNoConnectionException"},
        {is<FrWaitForPaperException>, "FrWaitForPaperException"},
        {is<FrPaperException>, "FrPaperException"},
        {is<FrShiftTooLongException>, "FrShiftTooLongException"},
        {is<FrFatalException>, "FrFatalException"},
        {is<FrCommandException>, "FrCommandException"},
        {is<FrDriverException>, "FrDriverException"},
        {is<DriverException>, "DriverException"},
    };
    for (const Row& row : rows) {
        if (row.matches(exception))
            return QString::fromLatin1(row.name);
    }
    return QStringLiteral("BasicException");
}

} // namespace frctl
