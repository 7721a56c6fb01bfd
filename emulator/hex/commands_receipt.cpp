#include "hex/commands.h"

#include "register/codepage.h"
#include "register/hexdigits.h"
#include "register/judgement.h"
#include "register/markingquery.h"
#include "register/tags.h"

namespace emulator::hexcommands {

namespace {

constexpr qsizetype longestItemName = 48;

struct AgentRequisite
{
    QString name;
    qsizetype longest;
};

void addRequisite(QJsonObject& object, const QString& key, const QString& value)
{
    if (!value.isEmpty())
        object[key] = value;
}

} // namespace

HexAnswer addItem(Register& device, HexFields& fields)
{
    Item item;
    item.name = fields.text(0, longestItemName);
    item.barcode = fields.utf8(1, 13);
    item.quantity = fields.quantity(2);
    item.price = fields.money(3);
    item.tax = fields.number(5);
    item.paymentMethod = fields.number(7, 4);
    item.country = fields.utf8(10, 3);
    item.declaration = fields.utf8(11, 32);
    item.paymentObject = fields.number(12, 1);
    item.unit = fields.number(13);
    // Not told of goods that the host has not had checked.
    item.markingStatus = fields.isEmpty(15) ? -1 : fields.number(15);
    addRequisite(item.industry, tag::industryAuthority, fields.utf8(16, 3));
    if (!fields.isEmpty(17))
        addRequisite(
            item.industry, tag::industryDate, fields.date(17).toString(QStringLiteral("dd.MM.yyyy")));
    addRequisite(item.industry, tag::industryNumber, fields.utf8(18, 32));
    addRequisite(item.industry, tag::industryValue, fields.utf8(19, 256));
    if (fields.isBad())
        return Refusal::BadValue;
    const Refusal refusal = device.receipts().addItem(item);
    const char* const misfit = judgement::misfit(item);
    return HexAnswer::judged(
        refusal, misfit == nullptr ? QStringLiteral("more than a receipt can be of") : QLatin1String(misfit));
}

HexAnswer bindAgent(Register& device, HexFields& fields)
{
    constexpr int allAgents = 127;
    QJsonObject agent;
    if (!fields.isEmpty(0)) {
        agent[tag::agentKinds] = fields.numberWithin(0, 0, allAgents);
    }
    // Fields 2 to 11: operation, phones, name, address and INN of the agent, then phone, name and INN of the
    // supplier. Hosts cut the supplier's name to 19 characters as if it were a phone; that is how they are.
    const AgentRequisite requisites[] = {{tag::agentOperation, 24}, {tag::agentPhone, 19},
        {tag::transferName, 64}, {tag::transferAddress, 256}, {tag::transferPhone, 19},
        {tag::transferInn, 12}, {tag::paymentOperatorPhone, 19}, {tag::supplierPhone, 19},
        {tag::supplierName, fields.isStrict() ? 19 : 256}, {tag::supplierInn, 12}};
    qsizetype index = 1;
    for (const AgentRequisite& requisite : requisites)
        addRequisite(agent, requisite.name, fields.utf8(index++, requisite.longest));
    fields.inn(6);
    fields.inn(10);
    return fields.isBad() ? Refusal::BadValue : device.receipts().bindAgent(agent);
}

HexAnswer subtotal(Register& device, HexFields&)
{
    return device.receipts().subtotal();
}

HexAnswer pay(Register& device, HexFields& fields)
{
    const int kind = fields.number(0);
    const Money sum = fields.money(1);
    if (fields.isBad())
        return Refusal::BadValue;
    return HexAnswer::judged(device.receipts().pay(kind, sum),
        QStringLiteral(
            "field 1 is a kind from 0 to 4, field 2 a sum from 0.00 up, and change is given from cash alone"));
}

HexAnswer checkMarking(Register& device, HexFields& fields)
{
    MarkingQuery query;
    query.plannedStatus = fields.number(1);
    query.quantity = fields.real(2);
    // The measure unit has to be a number; the check does not look at it.
    fields.number(3);
    const auto code = bytesOfHexDigits(fields.raw(6));
    query.code = code.value_or(QByteArray());
    if (!code)
        fields.reject(6, QStringLiteral("a code in hexadecimal digits"));
    if (fields.isBad())
        return Refusal::BadValue;
    int result = 0;
    const Refusal refusal = device.marking().check(query, result);
    if (refusal != Refusal::None)
        return HexAnswer::judged(
            refusal, QStringLiteral("field 7 is a code, field 2 a planned status, field 3 no less than 0"));
    return QList<QByteArray>{QByteArray::number(result)};
}

HexAnswer bindMarking(Register& device, HexFields& fields)
{
    // The check had the code in the register's code page, this command has it as plain text.
    return HexAnswer::judged(device.marking().bind(codepage::fromText(QString::fromUtf8(fields.raw(0)))),
        QStringLiteral("field 1 is a marking code"));
}

HexAnswer clearMarking(Register& device, HexFields&)
{
    return device.marking().clear();
}

} // namespace emulator::hexcommands
