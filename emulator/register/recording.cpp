#include "register/recording.h"

#include "register/parts.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace emulator::recording {

namespace {

QString documentName(DocumentType type)
{
    switch (type) {
    case DocumentType::Sale:
        return QStringLiteral("sell");
    case DocumentType::SaleReturn:
        return QStringLiteral("sellReturn");
    case DocumentType::CashIn:
        return QStringLiteral("cashIn");
    default:
        return QStringLiteral("cashOut");
    }
}

QJsonArray itemEntries(const QList<Item>& items)
{
    QJsonArray entries;
    for (const Item& item : items)
        entries.append(item.toJson());
    return entries;
}

QJsonObject paymentEntries(const Document& receipt)
{
    static const QString kindNames[paymentKinds] = {QStringLiteral("cash"), QStringLiteral("electronically"),
        QStringLiteral("prepaid"), QStringLiteral("credit"), QStringLiteral("other")};
    QJsonObject entries;
    for (size_t kind = 0; kind < paymentKinds; ++kind) {
        const Money sum = kind == 0 ? receipt.cash() : receipt.payments[kind];
        if (sum != 0)
            entries[kindNames[kind]] = moneyText(sum);
    }
    return entries;
}

} // namespace

FiscalRecord store(Parts& parts, FiscalType type, QJsonObject entry, const Cashier& cashier)
{
    entry[QStringLiteral("shift")] = parts.state.shift.number;
    entry[QStringLiteral("cashier")] = cashier.name;
    entry[QStringLiteral("cashierInn")] = cashier.inn;
    const QByteArray content = QJsonDocument(entry).toJson(QJsonDocument::Compact);
    const FiscalRecord record = parts.drive.store(type, parts.clock.now(), content);
    if (parts.state.isOperatorReachable)
        parts.drive.sendAll();
    entry[QStringLiteral("number")] = static_cast<qint64>(record.number);
    entry[QStringLiteral("dateTime")] = record.dateTime.toString(Qt::ISODate);
    entry[QStringLiteral("fiscalSign")] = record.sign;
    entry[QStringLiteral("fiscalDrive")] = parts.drive.number();
    parts.drive.keepEntry(entry);
    parts.journal.add(entry);
    return record;
}

FiscalRecord storeReceipt(Parts& parts, const Document& receipt)
{
    QJsonObject entry{{QStringLiteral("type"), documentName(receipt.type)},
        {QStringLiteral("receipt"), parts.state.shift.receipts},
        {QStringLiteral("taxSystem"), receipt.taxSystem}, {QStringLiteral("customer"), receipt.customer},
        {QStringLiteral("items"), itemEntries(receipt.items)},
        {QStringLiteral("total"), moneyText(receipt.total())},
        {QStringLiteral("payments"), paymentEntries(receipt)},
        {QStringLiteral("change"), moneyText(receipt.change())}};
    if (receipt.unprinted)
        entry[QStringLiteral("unprinted")] = true;
    if (!receipt.requisites.isEmpty())
        entry[QStringLiteral("requisites")] = receipt.requisites;
    return store(parts, FiscalType::Receipt, entry, receipt.cashier);
}

void noteMoney(Parts& parts, const Document& money)
{
    parts.journal.add({{QStringLiteral("type"), documentName(money.type)},
        {QStringLiteral("shift"), parts.state.shift.number}, {QStringLiteral("cashier"), money.cashier.name},
        {QStringLiteral("dateTime"), parts.clock.now().toString(Qt::ISODate)},
        {QStringLiteral("total"), moneyText(money.money)}});
}

} // namespace emulator::recording
