#include "register/recording.h"

#include "register/documentname.h"
#include "register/entrytags.h"
#include "register/parts.h"
#include "register/tags.h"
#include "register/taxes.h"
#include "register/tlv.h"

#include <QJsonArray>

namespace emulator::recording {

namespace {

QJsonArray itemEntries(const QList<Item>& items)
{
    QJsonArray entries;
    for (const Item& item : items)
        entries.append(item.toJson());
    return entries;
}

QJsonObject taxEntries(const QList<Item>& items)
{
    const QMap<int, Money> sums = taxes::sums(items);
    QJsonObject entries;
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum)
        entries[QString::number(sum.key())] = moneyText(sum.value());
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

// The format is that of 2022, version 1.2.
constexpr int formatVersion = 4;

void addUnlessEmpty(QJsonObject& entry, const QString& field, const QString& value)
{
    if (!value.isEmpty())
        entry[field] = value;
}

// Whose register it is; a host may name another place of settlement.
void addRegister(QJsonObject& entry, const Identity& identity, const Registration& registration)
{
    entry[QStringLiteral("serialNumber")] = identity.serialNumber;
    entry[QStringLiteral("registrationNumber")] = registration.number;
    entry[QStringLiteral("userInn")] = registration.userInn;
    entry[QStringLiteral("userName")] = registration.userName;
    entry[QStringLiteral("address")] = registration.address;
    entry[QStringLiteral("formatVersion")] = formatVersion;
    const QString key = QStringLiteral("requisites");
    QJsonObject requisites = entry.value(key).toObject();
    if (!requisites.contains(tag::place))
        requisites[tag::place] = registration.place;
    entry[key] = requisites;
}

QByteArray encoded(const QJsonObject& entry)
{
    return tlv::encode(entrytags::toTags(entry));
}

QByteArray factoryDocument(FiscalType type, QJsonObject entry, const Identity& identity,
    const Registration& registration, const QDateTime& now)
{
    entry[QStringLiteral("type")] = documentnames::find(type).word;
    entry[QStringLiteral("dateTime")] = now.toString(Qt::ISODate);
    addRegister(entry, identity, registration);
    return encoded(entry);
}

} // namespace

FactoryDocuments factoryDocuments(
    const Identity& identity, const Registration& registration, const QDateTime& now)
{
    return {factoryDocument(FiscalType::Registration,
                {{QStringLiteral("taxSystems"), registration.taxSystems}}, identity, registration, now),
        factoryDocument(FiscalType::DriveClosing, {}, identity, registration, now)};
}

FiscalRecord store(Parts& parts, FiscalType type, QJsonObject entry, const Cashier& cashier)
{
    const QDateTime now = parts.clock.now();
    entry[QStringLiteral("dateTime")] = now.toString(Qt::ISODate);
    entry[QStringLiteral("shift")] = parts.state.shift.number;
    addUnlessEmpty(entry, QStringLiteral("cashier"), cashier.name);
    addUnlessEmpty(entry, QStringLiteral("cashierInn"), cashier.inn);
    addRegister(entry, parts.identity, parts.state.registration);
    const FiscalRecord record = parts.drive.store(type, now, encoded(entry));
    if (parts.state.isOperatorReachable)
        parts.drive.sendAll();
    entry[QStringLiteral("number")] = static_cast<qint64>(record.number);
    entry[QStringLiteral("fiscalSign")] = record.sign;
    entry[QStringLiteral("fiscalDrive")] = parts.drive.number();
    parts.drive.keepEntry(entry);
    parts.journal.add(entry);
    return record;
}

FiscalRecord storeReceipt(Parts& parts, const Document& receipt)
{
    const int settlement = receipt.type == DocumentType::Sale ? 1 : 2;
    QJsonObject entry{{QStringLiteral("type"), documentnames::find(FiscalType::Receipt, settlement).word},
        {QStringLiteral("receipt"), parts.state.shift.receipts},
        {QStringLiteral("taxSystem"), receipt.taxSystem},
        {QStringLiteral("items"), itemEntries(receipt.items)},
        {QStringLiteral("total"), moneyText(receipt.total())},
        {QStringLiteral("payments"), paymentEntries(receipt)},
        {QStringLiteral("taxes"), taxEntries(receipt.items)},
        {QStringLiteral("change"), moneyText(receipt.change())}};
    addUnlessEmpty(entry, QStringLiteral("customer"), receipt.customer);
    if (receipt.unprinted)
        entry[QStringLiteral("unprinted")] = true;
    if (!receipt.requisites.isEmpty())
        entry[QStringLiteral("requisites")] = receipt.requisites;
    return store(parts, FiscalType::Receipt, entry, receipt.cashier);
}

void noteMoney(Parts& parts, const Document& money)
{
    const bool incoming = money.type == DocumentType::CashIn;
    parts.journal.add({{QStringLiteral("type"),
                           incoming ? QStringLiteral("cashIn") : QStringLiteral("cashOut")},
        {QStringLiteral("shift"), parts.state.shift.number}, {QStringLiteral("cashier"), money.cashier.name},
        {QStringLiteral("dateTime"), parts.clock.now().toString(Qt::ISODate)},
        {QStringLiteral("total"), moneyText(money.money)}});
}

} // namespace emulator::recording
