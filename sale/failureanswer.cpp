#include "failureanswer.h"

#include "documentexpired.h"
#include "failure.h"
#include "findingsjson.h"
#include "markrefusal.h"
#include "receipterror.h"
#include "reviewneeded.h"
#include "shiftunchanged.h"

namespace sale {

namespace {

QJsonArray errorsJson(QList<receipt::Finding> findings)
{
    findings.removeIf(
        [](const receipt::Finding& finding) { return finding.severity == receipt::Finding::Warning; });
    return findingsJson(findings);
}

void addRefusal(AnswerError& error, const MarkRefusal& refusal)
{
    error.details = {{QStringLiteral("findings"), findingsJson(refusal.errors())},
        {QStringLiteral("path"), refusal.errors().constFirst().path},
        {QStringLiteral("bits"), QJsonArray::fromStringList(refusal.bits().constFirst())}};
}

} // namespace

AnswerError answerErrorOf(const Failure& failure)
{
    AnswerError error{failure.kind, failure.text, failure.exceptionName};
    if (!failure.exception)
        return error;
    try {
        std::rethrow_exception(failure.exception);
    } catch (const MarkRefusal& refusal) {
        addRefusal(error, refusal);
    } catch (const receipt::ReceiptError& receiptError) {
        error.details.insert(QStringLiteral("findings"), errorsJson(receiptError.findings()));
    } catch (const ReviewNeeded&) {
        error.action = QStringLiteral("На кассе есть документы, которых нет в журнале: найдите на ленте свои "
                                      "продажи, затем подтвердите их просмотр; документ ждёт");
        error.details.insert(QStringLiteral("needsReview"), true);
    } catch (const ShiftUnchanged&) {
        error.action = QStringLiteral("Делать нечего: смена уже в этом состоянии");
    } catch (const DocumentExpired&) {
        error.action = QStringLiteral(
            "Время документа вышло, он не пробит: если он ещё нужен, повторите его с тем же номером");
    } catch (...) {
        // All is said.
    }
    return error;
}

} // namespace sale
