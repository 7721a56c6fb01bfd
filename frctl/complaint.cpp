#include "complaint.h"

#include "connectionerror.h"
#include "failure.h"
#include "findingsjson.h"
#include "frctltr.h"
#include "idconflict.h"
#include "journalerror.h"
#include "markrefusal.h"
#include "postgres/wrongplace.h"
#include "receipterror.h"
#include "registertaken.h"
#include "reviewneeded.h"

namespace frctl {

namespace {

using sale::ErrorKind;

QString whatOf(const std::exception& error)
{
    return QString::fromUtf8(error.what());
}

Complaint usageComplaint(const QString& text)
{
    return {ExitUsage, {ErrorKind::Data, text, QStringLiteral("UsageError")}};
}

Complaint complaintOf(
    const QList<receipt::Finding>& findings, ExitStatus status, const QString& exceptionName)
{
    Complaint complaint{status, {ErrorKind::Data, findings.constFirst().text(), exceptionName}};
    complaint.error.details.insert(QStringLiteral("findings"), sale::findingsJson(findings));
    complaint.findings = findings;
    return complaint;
}

Complaint complaintOf(const receipt::ReceiptError& error)
{
    QList<receipt::Finding> errors = error.findings();
    errors.removeIf(
        [](const receipt::Finding& finding) { return finding.severity == receipt::Finding::Warning; });
    return complaintOf(errors, ExitUsage, QStringLiteral("ReceiptError"));
}

/// Of a document that was asked for.
QString outcomeOf(bool isNotOpened)
{
    return isNotOpened ? tr("the document was not opened") : QString();
}

/// The bits are those of the first code.
Complaint complaintOf(const sale::MarkRefusal& error)
{
    Complaint complaint = complaintOf(error.errors(), ExitFailure, QStringLiteral("MarkRefusal"));
    complaint.outcome = outcomeOf(true);
    complaint.error.kind = ErrorKind::Mark;
    complaint.error.details.insert(QStringLiteral("path"), error.errors().constFirst().path);
    complaint.error.details.insert(
        QStringLiteral("bits"), QJsonArray::fromStringList(error.bits().constFirst()));
    return complaint;
}

Complaint complaintOf(const sale::ReviewNeeded& error)
{
    Complaint complaint{ExitFailure,
        // untranslated: a command
        {ErrorKind::Other, whatOf(error) + QStringLiteral(": frctl journal accept"),
            QStringLiteral("ReviewNeeded")},
        {}, outcomeOf(true)};
    complaint.error.action = QStringLiteral(
        "На кассе есть документы, которых нет в журнале: найдите на ленте свои продажи, затем выполните "
        "frctl journal accept и повторите документ");
    complaint.error.details.insert(QStringLiteral("needsReview"), true);
    return complaint;
}

Complaint complaintOf(const Refusal& error)
{
    Complaint complaint{ExitFailure, {error.kind(), whatOf(error), QStringLiteral("Refusal")}};
    if (!error.refused().isEmpty())
        complaint.error.details.insert(
            QStringLiteral("refused"), QJsonArray::fromStringList(error.refused()));
    return complaint;
}

ErrorKind kindOf(devices::ConnectionError::Reason reason)
{
    switch (reason) {
    case devices::ConnectionError::NoPort:
        return ErrorKind::Line;
    case devices::ConnectionError::Busy:
        return ErrorKind::Busy;
    default:
        return ErrorKind::Internal;
    }
}

/// What the register, its line or this program's own side said.
Complaint complaintOfWork(const std::exception_ptr& exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const RegisterError& error) {
        return {exitStatusOf(error.verdict()), {error.kind(), whatOf(error), error.exceptionName()},
            error.verdict(), outcomeOf(error.isNotOpened())};
    } catch (const ServiceFailure& error) {
        return {error.status(), error.error(), error.verdict(), error.outcome()};
    } catch (const Interrupted& error) {
        return {ExitInterrupted, {ErrorKind::Other, tr("interrupted"), QStringLiteral("Interrupted")},
            error.verdict(), outcomeOf(error.isNotOpened())};
    } catch (const devices::ConnectionError& error) {
        return {ExitFailure, {kindOf(error.reason()), whatOf(error), hostErrorName()}};
    } catch (const HostError& error) {
        return {ExitFailure, {error.kind(), whatOf(error), hostErrorName()}};
    } catch (const sale::RegisterTaken& error) {
        return {ExitFailure, {ErrorKind::Busy, whatOf(error), hostErrorName()}};
    } catch (const sale::WrongPlace& error) {
        return {ExitUsage, {ErrorKind::Internal, whatOf(error), hostErrorName()}};
    } catch (const sale::JournalError& error) {
        return {ExitFailure, {ErrorKind::Internal, whatOf(error), hostErrorName()}};
    } catch (...) {
        const sale::Failure failure = sale::currentFailure();
        return {ExitFailure, {failure.kind, failure.text, failure.exceptionName}};
    }
}

} // namespace

Complaint complaintOf(const std::exception_ptr& exception)
{
    try {
        std::rethrow_exception(exception);
    } catch (const UsageError& error) {
        Complaint complaint = usageComplaint(whatOf(error));
        complaint.isUsage = true;
        return complaint;
    } catch (const receipt::ReceiptError& error) {
        return complaintOf(error);
    } catch (const CheckError& error) {
        return complaintOf(error.errors(), ExitUsage, error.exceptionName());
    } catch (const sale::MarkRefusal& error) {
        return complaintOf(error);
    } catch (const sale::ReviewNeeded& error) {
        return complaintOf(error);
    } catch (const sale::IdConflict& error) {
        return usageComplaint(QStringLiteral("--id: ") + whatOf(error));
    } catch (const Refusal& error) {
        return complaintOf(error);
    } catch (...) {
        return complaintOfWork(std::current_exception());
    }
}

} // namespace frctl
