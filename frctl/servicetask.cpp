#include "servicetask.h"

#include "documentid.h"
#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "interruption.h"
#include "messages.h"
#include "optiontable.h"
#include "servicedocument.h"
#include "serviceposting.h"
#include "servicestatus.h"

#include <algorithm>

namespace frctl {

namespace {

using sale::DocumentState;

void refuseOptions(const Options& options)
{
    static const QStringList taken{QStringLiteral("port"), QStringLiteral("register"),
        QStringLiteral("config"), QStringLiteral("wait"), QStringLiteral("token-file"),
        QStringLiteral("cashier"), QStringLiteral("cashier-inn"), QStringLiteral("id"),
        QStringLiteral("log-level"), QStringLiteral("lang"), QStringLiteral("json")};
    for (const Setting& setting : options.settings) {
        const QString name = QLatin1String(setting.option->name);
        if (!taken.contains(name))
            throw UsageError(
                tr("%1 does not go through a service, whose configuration says how it works "
                   "its registers")
                    .arg(setting.origin.isEmpty() ? QStringLiteral("--") + name : setting.origin));
    }
}

void refuseCommand(const Options& options)
{
    if (isServedDocument(options.command) || options.command == QStringLiteral("status"))
        return;
    if (options.command == QStringLiteral("journal"))
        throw UsageError(tr("journal is about this machine's journal: leave the service's --port out; what a "
                            "service knows of its documents it tells on its page"));
    throw UsageError(
        tr("%1 does not go through a service: have it pause %2, and name the register's own line "
           "with --port")
            .arg(options.command, options.service->registerName));
}

/// It goes into a header as it is.
QByteArray tokenOf(const Options& options)
{
    const QByteArray token
        = options.tokenFile.isEmpty() ? qgetenv("FRSERVER_TOKEN") : readFile(options.tokenFile, 1).trimmed();
    const bool isPlain
        = std::all_of(token.cbegin(), token.cend(), [](char one) { return one > ' ' && one < 127; });
    if (!isPlain)
        throw UsageError(
            tr("%1 has no token, which is one word")
                .arg(options.tokenFile.isEmpty() ? QStringLiteral("FRSERVER_TOKEN") : options.tokenFile));
    return token;
}

/// True for a new one.
bool giveId(const Options& options, const ServiceDocument& document)
{
    QString& id = options.answer->id;
    if (id.isEmpty())
        id = document.id;
    if (!id.isEmpty() && !sale::isDocumentId(id))
        throw UsageError(tr("--id: \"%1\" has not 8 to 64 of A-Z a-z 0-9 . _ : -").arg(id));
    if (!id.isEmpty())
        return false;
    id = sale::newDocumentId();
    // Before anything can be lost.
    complain(tr("the document's id: %1; after a failure the same again, with --id").arg(id));
    return true;
}

sale::AnswerError errorOf(const QJsonObject& answer)
{
    return sale::AnswerError::fromJson(answer.value(QStringLiteral("error")).toObject());
}

/// Of one that nobody waits for any longer.
[[noreturn]] void throwWaiting(const QJsonObject& answer)
{
    const QString waiting = answer.value(QStringLiteral("waiting")).toString();
    const QString text = waiting.isEmpty()
        ? tr("the service is still at it; the same id again tells")
        : tr("the service waits (%1) and makes it then; the same id again tells").arg(waiting);
    throw ServiceFailure(ExitUnknown, {sale::errorKindNamed(waiting), text, hostErrorName()}, {});
}

/// A register that was asked afterwards has told that it does not have it; one that has refused it on its
/// way, or ahead of it, was not.
bool wasAsked(const QJsonObject& answer)
{
    const QJsonArray attempts = answer.value(QStringLiteral("attempts")).toArray();
    const QJsonObject error = attempts.last().toObject().value(QStringLiteral("error")).toObject();
    return error.value(QStringLiteral("asked")).toBool();
}

[[noreturn]] void throwNotIssued(const QJsonObject& answer)
{
    const sale::StateReason reason = sale::reasonOf(answer.value(QStringLiteral("reason")).toString());
    sale::AnswerError error = errorOf(answer);
    if (error.text.isEmpty())
        error = {sale::ErrorKind::Other,
            reason == sale::StateReason::Expired
                ? tr("its time was over before it could be begun")
                : tr("the service does not make it (%1)").arg(sale::reasonName(reason)),
            QStringLiteral("Refusal")};
    // As at the line, where a document that did not come to its close has no verdict.
    const bool hasVerdict = reason != sale::StateReason::Refused || wasAsked(answer);
    throw ServiceFailure(exitStatusOf(hasVerdict ? sale::Outcome::NotIssued : sale::Outcome::None), error,
        sale::Outcome::NotIssued);
}

sale::Verdict issuedVerdict(const QJsonObject& answer)
{
    sale::Verdict verdict(sale::Outcome::Issued,
        static_cast<quint32>(answer.value(QStringLiteral("documentNumber")).toInteger()));
    verdict.times = answer.value(QStringLiteral("times")).toInt(1);
    return verdict;
}

Output issued(const Options& options, const ServiceDocument& document, const QJsonObject& answer)
{
    const sale::Verdict verdict = issuedVerdict(answer);
    const bool isReplayed = answer.value(QStringLiteral("replayed")).toBool();
    const bool isDisturbed = verdict.times > 1 || answer.value(QStringLiteral("error")).isObject();
    if (isDisturbed && !isReplayed)
        throw ServiceFailure(exitStatusOf(verdict), errorOf(answer), verdict);
    return {{document.done(options, answer)}, {}, ExitSuccess, verdict};
}

Output outputOf(const Options& options, const ServiceDocument& document)
{
    const QJsonObject& answer = options.answer->told;
    switch (
        sale::stateOf(answer.value(QStringLiteral("state")).toString()).value_or(DocumentState::Unknown)) {
    case DocumentState::Issued:
        return issued(options, document, answer);
    case DocumentState::NotIssued:
        throwNotIssued(answer);
    case DocumentState::Unknown:
        throw ServiceFailure(ExitUnknown, errorOf(answer), sale::Outcome::Unknown);
    default:
        throwWaiting(answer);
    }
}

bool isUnchanged(const QJsonObject& answer)
{
    return answer.value(QStringLiteral("error")).toObject().value(QStringLiteral("exception")).toString()
        == QStringLiteral("ShiftUnchanged");
}

Output make(const Options& options, const QByteArray& token, const ServiceDocument& document)
{
    const bool isNewId = giveId(options, document);
    ServiceClient client(*options.service, token);
    AnswerDraft& draft = *options.answer;
    draft.told = ServicePosting(client, options, isNewId).post(document.body);
    if (document.unchanged == nullptr || !isUnchanged(draft.told))
        return outputOf(options, document);
    // As without a service: there is no document then.
    draft.told = {};
    draft.id.clear();
    return {{tr(document.unchanged)}, {}};
}

} // namespace

Task serviceTask(const Options& options)
{
    refuseCommand(options);
    refuseOptions(options);
    const QByteArray token = tokenOf(options);
    if (options.command == QStringLiteral("status"))
        return alone([options, token] {
            catchInterruptions();
            return serviceStatus(options, token);
        });
    const ServiceDocument document = serviceDocument(options);
    return alone([options, token, document] {
        catchInterruptions();
        return make(options, token, document);
    });
}

} // namespace frctl
