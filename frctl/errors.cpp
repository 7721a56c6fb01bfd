#include "errors.h"

#include "exceptions.h"

namespace frctl {

namespace {

struct OutcomeTexts
{
    const char* name;
    const char* text;
};

const OutcomeTexts& texts(DocumentOutcome outcome)
{
    static const OutcomeTexts table[] = {
        {"", ""},
        {"cancelled", "the document was cancelled"},
        {"notCancelled", "the document could not be cancelled; the register's next start cleans it up"},
        {"unknown",
            "the document was being closed: it may have been issued, look at the register before you repeat it"},
        {"issued", "the document was issued; do not repeat it"},
    };
    return table[static_cast<int>(outcome)];
}

template <typename T>
bool is(const BasicException& exception)
{
    return dynamic_cast<const T*>(&exception) != nullptr;
}

} // namespace

QString outcomeName(DocumentOutcome outcome)
{
    return QString::fromLatin1(texts(outcome).name);
}

QString outcomeText(DocumentOutcome outcome)
{
    return QString::fromLatin1(texts(outcome).text);
}

RegisterError::RegisterError(const BasicException& cause, DocumentOutcome outcome)
    : std::runtime_error(cause.tr().ru().toStdString())
    , m_exceptionName(exceptionClassName(cause))
    , m_outcome(outcome)
{
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
