#include "positionparser.h"

#include "receipttr.h"

#include "jsonfields.h"
#include "receiptnames.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>

namespace receipt {

namespace {

constexpr int phoneLength = 19;

/// Fields of a composite requisite in the making.
class Composite
{
public:
    void add(EFrDriver::RequisiteTypes tag, const std::optional<QString>& value)
    {
        if (value)
            m_fields.insert(tag, FdRequisite(tag, *value));
    }

    void storeIn(FrPosition& position, EFrDriver::RequisiteTypes tag) const
    {
        if (!m_fields.isEmpty())
            position.setRequisite(FdRequisite::composite(tag, m_fields));
    }

private:
    FdRequisiteMap m_fields;
};

/// The format knows lists of telephones, the register takes one.
std::optional<QString> phone(JsonFields& fields)
{
    const QString name = QStringLiteral("phones");
    if (!fields.has(name))
        return std::nullopt;
    const QList<QString> phones = fields.texts(name, phoneLength);
    if (phones.size() > 1)
        fields.fail(name, tr("the register takes one telephone"));
    return phones.value(0);
}

QString threeDigits(JsonFields& fields, const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^\\d{3}$"));
    const QString value = fields.text(name);
    if (!value.isEmpty() && !pattern.match(value).hasMatch())
        fields.fail(name, tr("must have three digits"));
    return value;
}

int agentMask(JsonFields& fields)
{
    int mask = 0;
    for (const int agent : fields.choices(QStringLiteral("agents"), names::agentTypes()))
        mask |= std::max(0, agent);
    return mask;
}

void readTransferOperator(JsonFields& fields, Composite& agent)
{
    agent.add(EFrDriver::TransferOperatorPhone, phone(fields));
    agent.add(EFrDriver::TransferOperatorName, fields.optionalText(QStringLiteral("name"), 64));
    agent.add(EFrDriver::TransferOperatorAddress, fields.optionalText(QStringLiteral("address")));
    agent.add(EFrDriver::TransferOperatorInn, fields.optionalInn(QStringLiteral("vatin")));
}

void readAgent(JsonFields& fields, FrPosition& position)
{
    const QString paying = QStringLiteral("payingAgent");
    const QString receiving = QStringLiteral("receivePaymentsOperator");
    const QString transfer = QStringLiteral("moneyTransferOperator");
    position.setRequisite(FdRequisite(EFrDriver::ItemAgentType, agentMask(fields)));
    Composite agent;
    if (fields.has(paying)) {
        fields.object(paying, [&](JsonFields& data) {
            agent.add(EFrDriver::AgentOperation, data.optionalText(QStringLiteral("operation"), 24));
            agent.add(EFrDriver::AgentPhone, phone(data));
        });
    }
    if (fields.has(receiving))
        fields.object(
            receiving, [&](JsonFields& data) { agent.add(EFrDriver::PaymentOperatorPhone, phone(data)); });
    if (fields.has(transfer))
        fields.object(transfer, [&](JsonFields& data) { readTransferOperator(data, agent); });
    agent.storeIn(position, EFrDriver::AgentData);
}

void readSupplier(JsonFields& fields, FrPosition& position)
{
    Composite supplier;
    supplier.add(EFrDriver::SupplierPhone, phone(fields));
    supplier.add(EFrDriver::SupplierName, fields.optionalText(QStringLiteral("name")));
    supplier.storeIn(position, EFrDriver::SupplierData);
    if (const auto inn = fields.optionalInn(QStringLiteral("vatin")))
        position.setRequisite(FdRequisite(EFrDriver::SupplierInn, *inn));
}

void readIndustry(JsonFields& fields, FrPosition& position)
{
    const QString date = QStringLiteral("date");
    const QString day = fields.text(date);
    if (!day.isEmpty() && !QDate::fromString(day, QStringLiteral("dd.MM.yyyy")).isValid())
        fields.fail(date, tr("must be a date as 31.12.2024"));
    Composite industry;
    industry.add(EFrDriver::IndustryAuthority, threeDigits(fields, QStringLiteral("fois")));
    industry.add(EFrDriver::IndustryDocumentDate, day);
    industry.add(EFrDriver::IndustryDocumentNumber, fields.text(QStringLiteral("number"), 32));
    industry.add(EFrDriver::IndustryValue, fields.text(QStringLiteral("industryAttribute")));
    industry.storeIn(position, EFrDriver::IndustryRequisite);
}

} // namespace

void readPositionRequisites(JsonFields& fields, FrPosition& position)
{
    const QString agent = QStringLiteral("agentInfo");
    const QString supplier = QStringLiteral("supplierInfo");
    const QString industry = QStringLiteral("industryInfo");
    const QString country = QStringLiteral("countryCode");
    if (fields.has(agent))
        fields.object(agent, [&](JsonFields& data) { readAgent(data, position); });
    if (fields.has(supplier))
        fields.object(supplier, [&](JsonFields& data) { readSupplier(data, position); });
    if (fields.has(industry))
        fields.object(industry, [&](JsonFields& data) { readIndustry(data, position); });
    if (fields.has(country))
        position.setRequisite(FdRequisite(EFrDriver::CountryOfOrigin, threeDigits(fields, country)));
    if (const auto declaration = fields.optionalText(QStringLiteral("customsDeclaration"), 32))
        position.setRequisite(FdRequisite(EFrDriver::CustomsDeclaration, *declaration));
}

} // namespace receipt
