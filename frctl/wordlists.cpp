#include "wordlists.h"

#include "receiptnames.h"
#include "schemas.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace frctl {

namespace {

namespace names = receipt::names;

constexpr WordList lists[] = {
    {"types", "type", "receiptType", names::receiptTypes},
    {"tax-systems", "taxationType", "taxSystem", names::taxSystems},
    {"taxes", "items[].tax.type", "taxRate", names::taxRates},
    {"payment-methods", "items[].paymentMethod", "paymentMethod", names::paymentMethods},
    {"payment-objects", "items[].paymentObject", "paymentObject", names::paymentObjects},
    {"units", "items[].measurementUnit", "measurementUnit", names::measureUnits},
    {"marking-codes", "items[].markingCode.type", "markType", names::markTypes},
    {"agents", "items[].agentInfo.agents", "agentType", names::agentTypes},
    {"barcode-types", "items[].barcodeType", "barcodeType", names::barcodeTypes},
    {"payments", "payments[].type", "paymentKind", names::paymentKinds},
};

QJsonObject definition(const QString& name)
{
    static const QJsonObject schema = QJsonDocument::fromJson(schemaText(QStringLiteral("receipt"))).object();
    return schema.value(QStringLiteral("definitions"))[name].toObject();
}

} // namespace

std::span<const WordList> wordLists()
{
    return lists;
}

QString meaningOf(const WordList& list, const receipt::NamedValue& word)
{
    for (const QJsonValue row :
        definition(QLatin1String(list.definition)).value(QStringLiteral("anyOf")).toArray()) {
        if (row[QStringLiteral("enum")][0] != QLatin1String(word.name))
            continue;
        const QString description = row[QStringLiteral("description")].toString();
        return row[QStringLiteral("title")].toString()
            + (description.isEmpty() ? QString() : QStringLiteral(". ") + description);
    }
    return {};
}

} // namespace frctl
