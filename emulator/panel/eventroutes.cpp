#include "http/problem.h"
#include "panel/commandnames.h"
#include "panel/desk.h"
#include "panel/deskroute.h"
#include "panel/eventview.h"
#include "panel/queryvalues.h"
#include "register/documentname.h"

#include <algorithm>

namespace emulator::panel {

namespace {

using http::Answer;
using http::Event;
using http::Request;

const QStringList& eventNames()
{
    static const QStringList names{QStringLiteral("document"), QStringLiteral("tape"),
        QStringLiteral("exchange"), QStringLiteral("refusal"), QStringLiteral("warning"),
        QStringLiteral("fault"), QStringLiteral("state")};
    return names;
}

const QString eventName = QStringLiteral("event");
const QString typeName = QStringLiteral("type");
const QString commandName = QStringLiteral("command");
const QString partName = QStringLiteral("part");

/// A filter of events, and what it goes with.
struct Filter
{
    QString name;
    QStringList events;
    /// Of an event's data: one of them has the value.
    QStringList members;
    QStringList words;
};

QStringList documentWords()
{
    // No documents of the fiscal drive, but of the journal.
    return documentnames::words() + QStringList{QStringLiteral("cashIn"), QStringLiteral("cashOut")};
}

const QList<Filter>& filters()
{
    static const QList<Filter> all{{typeName, {QStringLiteral("document")}, {typeName}, documentWords()},
        {commandName, {QStringLiteral("exchange"), QStringLiteral("refusal")},
            {commandName, QStringLiteral("name")}, commandnames::withCodes()},
        {partName, {QStringLiteral("state")}, {partName}, eventview::parts()}};
    return all;
}

bool isOf(const Event& event, int number)
{
    return event.data.value(QStringLiteral("register")).toInt() == number;
}

bool hasValue(const Event& event, const QStringList& members, const QString& wanted)
{
    for (const QString& member : members) {
        if (event.data.value(member).toString() == wanted)
            return true;
    }
    return false;
}

/// The filters that the query has, with the values that they ask for.
QList<std::pair<Filter, QString>> filtersOf(const Request& request, const QString& event)
{
    QList<std::pair<Filter, QString>> found;
    for (const Filter& filter : filters()) {
        const std::optional<QString> wanted = queryvalues::word(request, filter.name, filter.words);
        if (wanted && !filter.events.contains(event))
            throw http::Problem(400,
                QStringLiteral("%1 goes with event=%2.")
                    .arg(filter.name, filter.events.join(QStringLiteral(" or "))));
        if (wanted)
            found.append({filter, *wanted});
    }
    return found;
}

Answer wait(Desk& desk, const Request& request)
{
    constexpr int longest = 600;
    constexpr int usual = 10;
    const std::optional<QString> wanted = queryvalues::word(request, eventName, eventNames());
    if (!wanted)
        throw http::Problem(
            400, QStringLiteral("event is missing, one of: ") + eventNames().join(QStringLiteral(", ")));
    const int seconds = request.queryNumber(QStringLiteral("timeout"), 0, longest).value_or(usual);
    const auto filter
        = [number = desk.number(), kind = *wanted, asked = filtersOf(request, *wanted)](const Event& event) {
              return isOf(event, number) && kind == QLatin1String(event.type)
                  && std::all_of(asked.cbegin(), asked.cend(),
                      [&event](const auto& one) { return hasValue(event, one.first.members, one.second); });
          };
    const QString after = request.queryValue(QStringLiteral("after")).value_or(QString());
    return desk.events().wait(filter, std::chrono::seconds(seconds), after.toLatin1());
}

Answer events(Desk& desk, const Request& request)
{
    const bool isOfAll = queryvalues::flag(request, QStringLiteral("all"));
    const QStringList kinds = queryvalues::someWords(request, eventName, eventNames());
    return desk.events().subscribe(request, [number = desk.number(), isOfAll, kinds](const Event& event) {
        return (isOfAll || isOf(event, number))
            && (kinds.isEmpty() || kinds.contains(QLatin1String(event.type)));
    });
}

} // namespace

const QList<DeskRoute>& eventRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/wait", wait,
            {eventName, typeName, commandName, partName, QStringLiteral("timeout"), QStringLiteral("after")}},
        {"GET", "/events", events, {eventName, QStringLiteral("all"), QStringLiteral("lastEventId")}},
    };
    return routes;
}

} // namespace emulator::panel
