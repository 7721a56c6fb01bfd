#include "api/api.h"
#include "api/apiroute.h"
#include "api/askedprotocol.h"
#include "api/painter.h"
#include "api/pictureformat.h"
#include "api/posteddocument.h"
#include "api/rights.h"
#include "currenttime.h"
#include "documentkind.h"
#include "http/problem.h"
#include "mockfactory.h"
#include "salereturn.h"

namespace frserver {

namespace {

using http::Answer;
using http::Request;

Answer paint(const Api& api, const PictureOrder& order)
{
    if (api.painter() == nullptr)
        throw http::Problem(503, QStringLiteral("This service draws nothing."))
            .withHeader("Retry-After", "60");
    return api.painter()->paint(order);
}

/// What it is drawn as that the register alone says.
PictureOrder orderFor(const Till* till, const QDateTime& time)
{
    if (till == nullptr)
        return {.time = time};
    const Till::Settings& settings = till->settings();
    return {.protocol = settings.protocol,
        .time = time.toTimeZone(settings.timeZone),
        .cashier = settings.cashier,
        .cashierInn = settings.cashierInn};
}

Answer preview(Api& api, const Request& request)
{
    const std::optional<QString> name = request.queryValue(QStringLiteral("register"));
    const Till* const till = name ? &tillNamed(api, request, *name) : nullptr;
    PictureOrder order = orderFor(till, MockFactory<CurrentTime>::create()->getCurrentDateTime());
    order.format = pictureFormat(request);
    if (till == nullptr)
        order.protocol = askedProtocol(request).value_or(order.protocol);
    order.receipt = receiptToDraw(
        request.body, {order.protocol, order.time, 0, true, rights::completion(api, request)});
    return paint(api, order);
}

/// As the register would print it, by what was posted: a journal keeps no paper.
Answer documentPicture(Api& api, const Request& request)
{
    const sale::StoredDocument document = documentOf(api, request);
    const sale::DocumentRequest& posted = document.request;
    if (!sale::isReceiptName(posted.kind) || posted.body.isEmpty())
        throw http::Problem(404, QStringLiteral("no-picture"), QStringLiteral("There is no picture of it"),
            QStringLiteral("Receipts alone have one, as long as the journal keeps what was posted."));
    const QDateTime time = document.begun.isValid() ? document.begun : document.accepted;
    PictureOrder order = orderFor(api.till(posted.registerName), time);
    order.format = pictureFormat(request);
    order.receipt = sale::completedBody(api.store(), posted);
    return paint(api, order);
}

} // namespace

const QList<ApiRoute>& pictureRoutes()
{
    static const QList<ApiRoute> routes{
        {"POST", QStringLiteral("/preview"), preview, {},
            {QStringLiteral("register"), QStringLiteral("protocol")}},
        {"GET", QStringLiteral("/documents/{id}/picture"), documentPicture},
    };
    return routes;
}

} // namespace frserver
