#include "servicedocument.h"

#include "documentarguments.h"
#include "documentoutput.h"
#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "jsontext.h"
#include "money.h"
#include "plaindocument.h"
#include "receipterror.h"
#include "receipttexts.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <iterator>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::ReceiptError;

const QString typeName = QStringLiteral("type");
const QString operatorName = QStringLiteral("operator");

QString reportDone(const Options& options, const QJsonObject&)
{
    return tr("%1 printed").arg(options.command);
}

QString sumDone(const Options& options, const QJsonObject&)
{
    const QString text
        = options.command == QStringLiteral("cash-in") ? tr("cash in: %1") : tr("cash out: %1");
    return text.arg(moneyText(cashArgument(options)));
}

QString receiptDone(const Options&, const QJsonObject& answer)
{
    const auto number = static_cast<quint32>(answer.value(QStringLiteral("documentNumber")).toInteger());
    if (answer.value(QStringLiteral("replayed")).toBool())
        return tr("receipt issued before") + numberText(number);
    const qint64 total = receipt::kopecksOf(answer.value(QStringLiteral("total")).toDouble());
    const qint64 change = receipt::kopecksOf(answer.value(QStringLiteral("change")).toDouble());
    return issuedText(total, total + change, change, number);
}

QJsonObject noDetails(const Options&)
{
    return {};
}

QJsonObject sumDetails(const Options& options)
{
    return {{QStringLiteral("sum"), receipt::roubles(cashArgument(options))}};
}

QJsonObject textDetails(const Options& options)
{
    return {{QStringLiteral("lines"), QJsonArray::fromStringList(readLines(options.arguments.constFirst()))}};
}

QJsonObject copyDetails(const Options& options)
{
    return {{QStringLiteral("documentNumber"), qint64{documentArgument(options)}}};
}

/// One line of the table of documents that are no receipts.
struct ServedRow
{
    const char* command;
    const char* type;
    QJsonObject (*details)(const Options& options) = noDetails;
    QString (*done)(const Options& options, const QJsonObject& answer) = reportDone;
    const char* unchanged = nullptr;
};

constexpr ServedRow servedTable[] = {
    {"open-shift", "openShift", noDetails,
        [](const Options&, const QJsonObject&) { return tr("shift opened"); },
        QT_TR_NOOP("the shift was open already")},
    {"z-report", "zReport", noDetails, [](const Options&, const QJsonObject&) { return tr("shift closed"); },
        QT_TR_NOOP("the shift was closed already")},
    {"x-report", "xReport"},
    {"accounting-report", "accountingReport"},
    {"cash-in", "cashIn", sumDetails, sumDone},
    {"cash-out", "cashOut", sumDetails, sumDone},
    {"print", "text", textDetails},
    {"print-document", "copy", copyDetails},
    {"print-last-document", "copy"},
};

/// Null for a command that makes none of these.
const ServedRow* findRow(const QString& command)
{
    const auto* const row = std::find_if(std::begin(servedTable), std::end(servedTable),
        [&command](const ServedRow& one) { return command == QLatin1String(one.command); });
    return row == std::end(servedTable) ? nullptr : row;
}

/// The command line goes before the file, and the number of one person is not put to another's name.
void putCashier(QJsonObject& json, const FrUser& cashier)
{
    QJsonObject person = json.value(operatorName).toObject();
    const bool isOther
        = !cashier.name.isEmpty() && cashier.name != person.value(QStringLiteral("name")).toString();
    if (isOther)
        person = {{QStringLiteral("name"), cashier.name}};
    if (!cashier.inn.isEmpty())
        person.insert(QStringLiteral("vatin"), cashier.inn);
    json.insert(operatorName, person);
}

ServiceDocument plainDocument(const Options& options, const ServedRow& row)
{
    QJsonObject body = row.details(options);
    // As at a line of its own there is no number without a name.
    if (!options.cashier.name.isEmpty())
        putCashier(body, options.cashier);
    else if (!options.cashier.inn.isEmpty())
        options.requireCashierOption();
    body.insert(typeName, QLatin1String(row.type));
    return {.body = QJsonDocument(body).toJson(QJsonDocument::Compact),
        .done = row.done,
        .unchanged = row.unchanged};
}

/// The command says what it is to be, whatever the file says.
void refuseOtherType(const Options& options, const QJsonObject& json)
{
    const QString type = json.value(typeName).toString();
    if (sale::plainKindOf(type))
        throw ReceiptError(typeName, tr("is no receipt"), type);
    if (!type.isEmpty())
        refuseOtherCommand(options, type == QStringLiteral("sellReturn"));
}

ServiceDocument receiptDocument(const Options& options)
{
    ServiceDocument document{.body = oneReceipt(options), .done = receiptDone};
    QJsonObject json = receipt::jsonFromText(document.body);
    refuseOtherType(options, json);
    document.id = json.value(QStringLiteral("id")).toString();
    if (options.cashier.name.isEmpty() && options.cashier.inn.isEmpty())
        return document;
    putCashier(json, options.cashier);
    document.body = QJsonDocument(json).toJson(QJsonDocument::Compact);
    return document;
}

} // namespace

bool isServedDocument(const QString& command)
{
    return findRow(command) != nullptr || command == QStringLiteral("sell")
        || command == QStringLiteral("refund");
}

ServiceDocument serviceDocument(const Options& options)
{
    const ServedRow* const row = findRow(options.command);
    return row == nullptr ? receiptDocument(options) : plainDocument(options, *row);
}

} // namespace frctl
