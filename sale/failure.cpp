#include "failure.h"

#include "exceptions.h"
#include "journalerror.h"
#include "markrefusal.h"
#include "reviewneeded.h"

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
};

// Children before their parents.
constexpr ClassRow classes[] = {
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

} // namespace

Failure currentFailure()
{
    const std::exception_ptr exception = std::current_exception();
    try {
        throw;
    } catch (const BasicException& failure) {
        return {failure.tr().ru(), exceptionClassName(failure), exception, true};
    } catch (const JournalError& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("JournalError"), exception};
    } catch (const ReviewNeeded& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("ReviewNeeded"), exception};
    } catch (const MarkRefusal& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("MarkRefusal"), exception, false,
            QStringLiteral("mark"), failure.errors().constFirst().path, failure.bits().constFirst()};
    } catch (const std::exception& failure) {
        return {QString::fromUtf8(failure.what()), QStringLiteral("std::exception"), exception};
    } catch (...) {
        return {QStringLiteral("unknown exception"), QStringLiteral("std::exception"), exception};
    }
}

QString exceptionClassName(const BasicException& exception)
{
    for (const ClassRow& row : classes) {
        if (row.matches(exception))
            return QString::fromLatin1(row.name);
    }
    return QStringLiteral("BasicException");
}

} // namespace sale
