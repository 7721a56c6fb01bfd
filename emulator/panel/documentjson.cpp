#include "panel/documentjson.h"

#include "panel/desk.h"
#include "panel/exchangejson.h"
#include "panel/jsonvalues.h"
#include "panel/packedpage.h"
#include "register/documentname.h"
#include "register/tags.h"
#include "register/tagtext.h"
#include "register/tlv.h"
#include "tape/pagetext.h"

#include <QJsonArray>

namespace emulator::panel::documentjson {

namespace {

QJsonObject requisitesOf(const ArchivedDocument& document)
{
    return tlv::decode(document.record.tags).value_or(QJsonObject());
}

QJsonObject head(const ArchivedDocument& document, const QJsonObject& requisites, const Desk& desk)
{
    const FiscalRecord& record = document.record;
    const int settlement = requisites.value(tag::settlement).toInt();
    const DocumentName name = documentnames::find(record.type, settlement);
    const LoggedExchange* const exchange = desk.exchanges().storing(record.number);
    QJsonObject object{{QStringLiteral("number"), static_cast<qint64>(record.number)},
        {QStringLiteral("type"), static_cast<int>(record.type)}, {QStringLiteral("word"), name.word},
        {QStringLiteral("kind"),
            settlement == 0 ? name.title
                            : name.title + QStringLiteral(", ") + documentnames::settlement(settlement)},
        {QStringLiteral("dateTime"), jsonvalues::time(record.dateTime)},
        {QStringLiteral("fiscalSign"), record.sign},
        {QStringLiteral("exchange"), jsonvalues::numberOrNull(exchange == nullptr ? 0 : exchange->number)}};
    if (!document.total.isEmpty())
        object[QStringLiteral("total")] = document.total;
    return object;
}

} // namespace

QJsonObject head(const ArchivedDocument& document, const Desk& desk)
{
    return head(document, requisitesOf(document), desk);
}

QJsonObject whole(const ArchivedDocument& document, const Desk& desk)
{
    const QJsonObject requisites = requisitesOf(document);
    QJsonArray exchanges;
    QJsonArray refusals;
    for (const LoggedExchange* const exchange : desk.exchanges().leadingTo(document.record.number)) {
        exchanges.append(exchangejson::whole(*exchange));
        if (exchange->isRefused())
            refusals.append(exchange->number);
    }
    QJsonObject object = head(document, requisites, desk);
    object[QStringLiteral("tags")] = tagtext::json(requisites);
    object[QStringLiteral("page")]
        = QJsonArray::fromStringList(tape::toText(packedpage::unpacked(document.page)));
    object[QStringLiteral("exchanges")] = exchanges;
    object[QStringLiteral("refusals")] = refusals;
    return object;
}

} // namespace emulator::panel::documentjson
