#include "failure.h"

#include "errortable.h"
#include "exceptions.h"
#include "journalerror.h"
#include "markrefusal.h"
#include "reviewneeded.h"

#include <algorithm>
#include <iterator>

namespace sale {

namespace {

template <typename T>
bool is(const BasicException& exception)
{
    return dynamic_cast<const T*>(&exception) != nullptr;
}

struct ClassRow
{
    bool (*matches)(const BasicException&);
    const char* name;
    ErrorKind kind;
};

// Children before their parents.
constexpr ClassRow classes[] = {
    {is<ComDriverTimeoutException>, "ComDriverTimeoutException", ErrorKind::Line},
    {is<ComDriverException>, "ComDriverException", ErrorKind::Line},
    {is<FrNoConnectionException>, "FrNoConnectionException", ErrorKind::Line},
    {is<FrWaitForPaperException>, "FrWaitForPaperException", ErrorKind::Paper},
    {is<FrPaperException>, "FrPaperException", ErrorKind::Paper},
    {is<FrShiftTooLongException>, "FrShiftTooLongException", ErrorKind::ShiftExpired},
    {is<FrFatalException>, "FrFatalException", ErrorKind::Fatal},
    {is<FrCommandException>, "FrCommandException", ErrorKind::Other},
    {is<FrDriverException>, "FrDriverException", ErrorKind::Other},
    {is<DriverException>, "DriverException", ErrorKind::Other},
};

const ClassRow& classOf(const BasicException& exception)
{
    static constexpr ClassRow root{nullptr, "BasicException", ErrorKind::Other};
    const auto* const found = std::find_if(
        std::begin(classes), std::end(classes), [&](const ClassRow& row) { return row.matches(exception); });
    return found == std::end(classes) ? root : *found;
}

} // namespace

Failure currentFailure()
{
    const std::exception_ptr exception = std::current_exception();
    try {
        throw;
    } catch (const BasicException& failure) {
        return {failure.tr().ru(), exceptionClassName(failure), exception, true, errorKindOf(failure)};
    } catch (const JournalError& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("JournalError"), exception};
    } catch (const ReviewNeeded& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("ReviewNeeded"), exception};
    } catch (const MarkRefusal& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("MarkRefusal"), exception, false,
            ErrorKind::Mark, failure.errors().constFirst().path, failure.bits().constFirst()};
    } catch (const std::exception& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("std::exception"), exception};
    } catch (...) {
        return {QStringLiteral("unknown exception"), QStringLiteral("std::exception"), exception, false,
            ErrorKind::Other};
    }
}

QString exceptionClassName(const BasicException& exception)
{
    return QString::fromLatin1(classOf(exception).name);
}

ErrorKind errorKindOf(const BasicException& exception)
{
    const QString text = exception.tr().ru();
    if (const std::optional<ErrorKind> kind = errorKindOfText(text))
        return *kind;
    const ErrorKind kind = classOf(exception).kind;
    return kind == ErrorKind::Other ? errorKindOfCategory(text).value_or(kind) : kind;
}

} // namespace sale
