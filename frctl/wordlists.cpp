#include "wordlists.h"

#include "receiptnames.h"
#include "schemas.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace frctl {

namespace {

constexpr WordList wordListTable[] = {
    {"types", "type", "receiptType", receipt::names::receiptTypes},
    {"tax-systems", "taxationType", "taxSystem", receipt::names::taxSystems},
    {"taxes", "items[].tax.type", "taxRate", receipt::names::taxRates},
    {"payment-methods", "items[].paymentMethod", "paymentMethod", receipt::names::paymentMethods},
    {"payment-objects", "items[].paymentObject", "paymentObject", receipt::names::paymentObjects},
    {"units", "items[].measurementUnit", "measurementUnit", receipt::names::measureUnits},
    {"marking-codes", "items[].markingCode.type", "markType", receipt::names::markTypes},
    {"agents", "items[].agentInfo.agents", "agentType", receipt::names::agentTypes},
    {"barcode-types", "items[].barcodeType", "barcodeType", receipt::names::barcodeTypes},
    {"payments", "payments[].type", "paymentKind", receipt::names::paymentKinds},
};

QJsonObject schemaDefinition(const QString& name)
{
    static const QJsonObject schema = QJsonDocument::fromJson(schemaText(QStringLiteral("receipt"))).object();
    return schema.value(QStringLiteral("definitions"))[name].toObject();
}

/// The schema is in English; what it says of words has a file of translations of its own, words_ru.ts.
QString translated(const QJsonValue& text)
{
    return QCoreApplication::translate("words", text.toString().toUtf8().constData());
}

} // namespace

std::span<const WordList> wordLists()
{
    return wordListTable;
}

QString meaningOf(const WordList& list, const receipt::NamedValue& word)
{
    for (const QJsonValue row :
        schemaDefinition(QLatin1String(list.definition)).value(QStringLiteral("anyOf")).toArray()) {
        if (row[QStringLiteral("enum")][0] != QLatin1String(word.name))
            continue;
        const QString description = translated(row[QStringLiteral("description")]);
        return translated(row[QStringLiteral("title")])
            + (description.isEmpty() ? QString() : QStringLiteral(". ") + description);
    }
    return {};
}

} // namespace frctl
