#include "conformance/hostreport.h"
#include "http/problem.h"
#include "panel/desk.h"
#include "panel/deskroute.h"
#include "panel/documentjson.h"
#include "panel/exchangejson.h"
#include "panel/jsonvalues.h"
#include "panel/packedpage.h"
#include "panel/pagepicture.h"
#include "panel/queryvalues.h"
#include "panel/stateview.h"
#include "tape/pagedrawing.h"
#include "tape/pagetext.h"

#include <QJsonArray>
#include <QRegularExpression>

#include <limits>

namespace emulator::panel {

namespace {

using http::Answer;
using http::Request;
using http::Response;

constexpr int anyNumber = std::numeric_limits<int>::max();
constexpr int greatestLimit = 500;

int limitOf(const Request& request, int usual)
{
    return request.queryNumber(QStringLiteral("limit"), 1, greatestLimit).value_or(usual);
}

/// The last part of a path: a number, and the format that stands behind a point.
struct Numbered
{
    int number = 0;
    QString format;
};

Numbered numberedOf(const Request& request)
{
    static const QRegularExpression form(QStringLiteral("\\A([1-9]\\d{0,8})(?:\\.(svg|png|pdf))?\\z"));
    const QRegularExpressionMatch match = form.match(request.parameter(QStringLiteral("number")));
    return {match.captured(1).toInt(), match.captured(2)};
}

template <typename Thing>
const Thing& found(const Thing* thing)
{
    if (thing == nullptr)
        throw http::Problem(404, QStringLiteral("There is none of that number, or it is not kept any more."));
    return *thing;
}

// ---- at a glance

Answer state(Desk& desk, const Request&)
{
    return Response::json(stateview::whole(desk));
}

Answer settings(Desk& desk, const Request&)
{
    return Response::json(stateview::settings(desk));
}

Answer conformance(Desk& desk, const Request&)
{
    return Response::json(hostreport::toJson(desk.hostRecord()));
}

// ---- documents

DocumentSearch searchOf(const Request& request)
{
    const auto text = [&request](const char* name) {
        return request.queryValue(QLatin1String(name)).value_or(QString());
    };
    DocumentSearch search{0, text("sum"), text("id"), text("text")};
    search.number
        = static_cast<quint32>(request.queryNumber(QStringLiteral("number"), 1, anyNumber).value_or(0));
    if (!search.sum.isEmpty()) {
        const std::optional<qint64> sum = parseDecimal(search.sum.toLatin1(), 2);
        if (!sum)
            throw http::Problem(400, QStringLiteral("sum is roubles with kopecks, such as 100.00."));
        search.sum = moneyText(*sum);
    }
    return search;
}

Answer documents(Desk& desk, const Request& request)
{
    constexpr int usual = 50;
    const int limit = limitOf(request, usual);
    const int before = request.queryNumber(QStringLiteral("before"), 1, anyNumber).value_or(anyNumber);
    // One more tells whether there are more.
    QList<const ArchivedDocument*> all
        = desk.documents().search(searchOf(request), static_cast<quint32>(before), limit + 1);
    const bool hasMore = all.size() > limit;
    QJsonArray heads;
    for (const ArchivedDocument* const document : all.first(qMin<qsizetype>(limit, all.size())))
        heads.append(documentjson::head(*document, desk));
    const QJsonValue next = hasMore ? heads.last().toObject().value(QStringLiteral("number")) : QJsonValue();
    return Response::json(QJsonObject{{QStringLiteral("documents"), heads}, {QStringLiteral("next"), next}});
}

Answer document(Desk& desk, const Request& request)
{
    const Numbered wanted = numberedOf(request);
    const auto& document = found(desk.documents().find(static_cast<quint32>(wanted.number)));
    if (wanted.format.isEmpty())
        return Response::json(documentjson::whole(document, desk));
    const tape::Page page = packedpage::unpacked(document.page);
    if (page.lines.isEmpty())
        throw http::Problem(
            404, QStringLiteral("Document %1 has no page: nothing of it was printed.").arg(wanted.number));
    return pagepicture::answer(page, wanted.format);
}

// ---- tape

QSize sizeOf(const TapeEntry& entry, const tape::Page& page)
{
    if (!entry.size)
        entry.size = tape::drawingOf(page).size;
    return *entry.size;
}

QJsonObject entryJson(const TapeEntry& entry)
{
    const tape::Page page = packedpage::unpacked(entry.page);
    const QSize size = sizeOf(entry, page);
    return {{QStringLiteral("number"), entry.number},
        {QStringLiteral("dateTime"), jsonvalues::time(entry.dateTime)},
        {QStringLiteral("document"), jsonvalues::numberOrNull(entry.document)},
        {QStringLiteral("columns"), page.width}, {QStringLiteral("width"), size.width()},
        {QStringLiteral("height"), size.height()},
        {QStringLiteral("lines"), QJsonArray::fromStringList(tape::toText(page))}};
}

Answer tapeEntries(Desk& desk, const Request& request)
{
    constexpr int usual = 100;
    const TapeLog& log = desk.tape();
    const int after = request.queryNumber(QStringLiteral("after"), 0, anyNumber).value_or(0);
    const int limit = limitOf(request, usual);
    QJsonArray entries;
    int number = qMax(after, log.first() - 1);
    while (number < log.last() && entries.size() < limit)
        entries.append(entryJson(found(log.find(++number))));
    return Response::json(QJsonObject{{QStringLiteral("entries"), entries},
        {QStringLiteral("next"), number < log.last() ? QJsonValue(number) : QJsonValue()},
        {QStringLiteral("first"), log.first()}, {QStringLiteral("last"), log.last()}});
}

Answer tapeText(Desk& desk, const Request&)
{
    QString text;
    for (int number = desk.tape().first(); number <= desk.tape().last(); ++number) {
        for (const QString& line : tape::toText(packedpage::unpacked(found(desk.tape().find(number)).page)))
            text += line + QLatin1Char('\n');
    }
    return Response::text(text);
}

Answer tapePicture(Desk& desk, const Request& request)
{
    const Numbered wanted = numberedOf(request);
    const TapeEntry* const entry = wanted.format.isEmpty() ? nullptr : desk.tape().find(wanted.number);
    return pagepicture::answer(packedpage::unpacked(found(entry).page), wanted.format);
}

// ---- exchanges

QList<const LoggedExchange*> exchangesFor(const Desk& desk, const Request& request, int after)
{
    const int document = request.queryNumber(QStringLiteral("document"), 1, anyNumber).value_or(0);
    const bool isRefused = queryvalues::flag(request, QStringLiteral("refused"));
    QList<const LoggedExchange*> all;
    if (document > 0)
        all = desk.exchanges().leadingTo(static_cast<quint32>(document));
    for (int number = desk.exchanges().first(); document == 0 && number <= desk.exchanges().last(); ++number)
        all.append(desk.exchanges().find(number));
    all.removeIf([isRefused, after](const LoggedExchange* exchange) {
        return exchange->number <= after || (isRefused && !exchange->isRefused());
    });
    return all;
}

Answer exchanges(Desk& desk, const Request& request)
{
    constexpr int usual = 100;
    const std::optional<int> after = request.queryNumber(QStringLiteral("after"), 0, anyNumber);
    const int limit = limitOf(request, usual);
    QList<const LoggedExchange*> all = exchangesFor(desk, request, after.value_or(0));
    const bool hasMore = after && all.size() > limit;
    // Who does not say where to begin wants to see the end.
    all = after ? all.first(qMin<qsizetype>(limit, all.size()))
                : all.last(qMin<qsizetype>(limit, all.size()));
    QJsonArray list;
    for (const LoggedExchange* const exchange : all)
        list.append(exchangejson::whole(*exchange));
    return Response::json(QJsonObject{{QStringLiteral("exchanges"), list},
        {QStringLiteral("next"), hasMore ? QJsonValue(all.constLast()->number) : QJsonValue()},
        {QStringLiteral("first"), desk.exchanges().first()},
        {QStringLiteral("last"), desk.exchanges().last()}});
}

Answer exchange(Desk& desk, const Request& request)
{
    const Numbered wanted = numberedOf(request);
    return Response::json(
        exchangejson::whole(found(wanted.format.isEmpty() ? desk.exchanges().find(wanted.number) : nullptr)));
}

QStringList listOf(const char* names)
{
    return QString::fromLatin1(names).split(QLatin1Char(' '));
}

} // namespace

const QList<DeskRoute>& lookRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/state", state},
        {"GET", "/settings", settings},
        {"GET", "/conformance", conformance},
        {"GET", "/documents", documents, listOf("number sum id text before limit")},
        {"GET", "/documents/{number}", document},
        {"GET", "/tape", tapeEntries, listOf("after limit")},
        {"GET", "/tape.txt", tapeText},
        {"GET", "/tape/{number}", tapePicture},
        {"GET", "/exchanges", exchanges, listOf("after document refused limit")},
        {"GET", "/exchanges/{number}", exchange},
    };
    return routes;
}

} // namespace emulator::panel
