#include "api/documentresponse.h"

#include "api/api.h"
#include "api/documentview.h"
#include "documentanswer.h"

namespace frserver {

namespace {

using http::Problem;
using http::Response;
using sale::DocumentState;

QString whyNotIssued(const sale::StoredDocument& document, const QJsonObject& view)
{
    switch (document.reason) {
    case sale::StateReason::Expired:
        return QStringLiteral("Its time was over before it could be begun; nothing was printed. ");
    case sale::StateReason::Deleted:
        return QStringLiteral("It was withdrawn before it was begun. ");
    default:
        break;
    }
    const QString why
        = view.value(QStringLiteral("error")).toObject().value(QStringLiteral("text")).toString();
    return why.isEmpty() ? QString() : why + QStringLiteral(". ");
}

Problem notIssued(const sale::StoredDocument& document, const QJsonObject& view)
{
    return Problem(409, QStringLiteral("document-not-issued"), QStringLiteral("The document is not issued"),
        whyNotIssued(document, view)
            + QStringLiteral("The same id may be posted again, also with a corrected body."));
}

Problem unknown(const sale::StoredDocument& document)
{
    return Problem(409, QStringLiteral("document-unknown"),
        QStringLiteral("Nobody knows whether the document is issued"),
        QStringLiteral(
            "A person must look at the tape of the register: do not sell it again under another id. "
            "What was seen is told with POST /v1/documents/%1/resolve.")
            .arg(document.request.id));
}

Response located(const QJsonObject& view, int status)
{
    // The letters of an id need no encoding; those of ids that earlier releases took are read anyway.
    const QString id = view.value(QStringLiteral("id")).toString();
    return Response::json(view, status)
        .with("Location", "/v1/documents/" + id.toUtf8().toPercentEncoding(":"));
}

} // namespace

Problem archivedDocument(int status, const QString& id, const QDateTime& accepted)
{
    const QString nothingStored = status == 422 ? QStringLiteral("Nothing was stored. ") : QString();
    return Problem(status, QStringLiteral("archived"), QStringLiteral("The document was archived"),
        nothingStored
            + QStringLiteral(
                "It was accepted on %1 and is not here any more: what has become of it stands in the archive.")
                  .arg(accepted.toUTC().date().toString(Qt::ISODate)))
        .with(QStringLiteral("id"), id)
        .with(QStringLiteral("accepted"), sale::momentJson(accepted));
}

Response documentResponse(const Api& api, const sale::StoredDocument& document, bool isReplayed)
{
    const QJsonObject view = documentView(api, document, isReplayed);
    switch (document.state) {
    case DocumentState::Issued:
        return located(view, isReplayed ? 200 : 201);
    case DocumentState::NotIssued:
        return notIssued(document, view).with(view).response();
    case DocumentState::Unknown:
        return unknown(document).with(view).response();
    default:
        return located(view, 202);
    }
}

} // namespace frserver
