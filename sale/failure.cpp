#include "failure.h"

#include "documentexpired.h"
#include "errortable.h"
#include "exceptions.h"
#include "idconflict.h"
#include "invaliddocumentid.h"
#include "journalerror.h"
#include "markrefusal.h"
#include "receipterror.h"
#include "registertaken.h"
#include "reviewneeded.h"
#include "shiftisclosed.h"
#include "shiftunchanged.h"
#include "wrongregister.h"

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

/// Of the exception that is being handled, which is none of the contract's.
Failure foreignFailure(const std::exception& failure, const char* name, ErrorKind kind = ErrorKind::Internal)
{
    return {
        QString::fromUtf8(failure.what()), QString::fromLatin1(name), std::current_exception(), false, kind};
}

} // namespace

Failure currentFailure()
{
    try {
        throw;
    } catch (const BasicException& failure) {
        return {failure.tr().ru(), exceptionClassName(failure), std::current_exception(), true,
            errorKindOf(failure)};
    } catch (const RegisterTaken& failure) {
        return foreignFailure(failure, "RegisterTaken", ErrorKind::Busy);
    } catch (const JournalError& failure) {
        return foreignFailure(failure, "JournalError");
    } catch (const ReviewNeeded& failure) {
        return foreignFailure(failure, "ReviewNeeded", ErrorKind::Other);
    } catch (const DocumentExpired& failure) {
        return foreignFailure(failure, "DocumentExpired", ErrorKind::Other);
    } catch (const ShiftIsClosed& failure) {
        return foreignFailure(failure, "ShiftIsClosed", ErrorKind::ShiftClosed);
    } catch (const ShiftUnchanged& failure) {
        return foreignFailure(failure, "ShiftUnchanged", ErrorKind::Other);
    } catch (const WrongRegister& failure) {
        return foreignFailure(failure, "WrongRegister", ErrorKind::WrongRegister);
    } catch (const MarkRefusal& refusal) {
        Failure failure = foreignFailure(refusal, "MarkRefusal", ErrorKind::Mark);
        failure.path = refusal.errors().constFirst().path;
        failure.bits = refusal.bits().constFirst();
        return failure;
    } catch (const receipt::ReceiptError& failure) {
        return foreignFailure(failure, "ReceiptError", ErrorKind::Data);
    } catch (const IdConflict& failure) {
        return foreignFailure(failure, "IdConflict", ErrorKind::Data);
    } catch (const InvalidDocumentId& failure) {
        return foreignFailure(failure, "InvalidDocumentId", ErrorKind::Data);
    } catch (const std::exception& failure) {
        return foreignFailure(failure, "std::exception");
    } catch (...) {
        // untranslated: stands in the journal
        return {QStringLiteral("unknown exception"), QStringLiteral("std::exception"),
            std::current_exception(), false, ErrorKind::Other};
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
