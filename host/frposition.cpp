#include "frposition.h"

#include "decimals.h"
#include "stringutils.h"

#include <QStringList>

namespace {

QString tagList(const FdRequisiteMap& requisites)
{
    QStringList tags;
    for (auto requisite = requisites.cbegin(); requisite != requisites.cend(); ++requisite)
        tags.append(QString::number(static_cast<int>(requisite.key())));
    return tags.join(QStringLiteral(", "));
}

} // namespace

FrPosition::FrPosition(const QString& name, double price, double count)
    : m_name(name)
    , m_count(count)
    , m_price(price)
{
}

int FrPosition::getPaymentObject() const
{
    return m_paymentObject != 0 ? m_paymentObject
                                : getRequisite(EFrDriver::PaymentObject).getSourceData().toInt();
}

double FrPosition::getPriceWithDisc() const
{
    // Only a count of exactly 0 cannot be divided by.
    return m_count < 0.0 || m_count > 0.0 ? m_price - m_discsum / m_count : m_price;
}

double FrPosition::getPossum() const
{
    return m_price * m_count;
}

double FrPosition::getPossumWithDisc() const
{
    return getPossum() - m_discsum;
}

void FrPosition::setMarkingCode(const QString& code, ExciseMarkType type)
{
    m_markingCode = code;
    m_exciseMarkType = type;
}

void FrPosition::setRequisite(const FdRequisite& requisite)
{
    m_requisites.insert(requisite.getTag(), requisite);
}

bool FrPosition::hasFdRequisite(EFrDriver::RequisiteTypes tag) const
{
    return m_requisites.contains(tag);
}

FdRequisite FrPosition::getRequisite(EFrDriver::RequisiteTypes tag) const
{
    return m_requisites.value(tag);
}

bool FrPosition::hasAgentDataRequisites() const
{
    return hasFdRequisite(EFrDriver::AgentData);
}

bool FrPosition::hasSupplierRequisites() const
{
    return hasFdRequisite(EFrDriver::SupplierData) || hasFdRequisite(EFrDriver::ItemAgentType)
        || hasFdRequisite(EFrDriver::SupplierInn);
}

bool FrPosition::hasIndustryRequisites() const
{
    return hasFdRequisite(EFrDriver::IndustryRequisite);
}

QString FrPosition::toString() const
{
    QString text = QStringLiteral("'%1' (%2): %3 %4 x %5, скидка %6, итого %7")
                       .arg(m_name, m_barcode, QString::number(m_count, 'f', 3), m_measureName,
                           moneyText(m_price), moneyText(m_discsum), moneyText(getPossumWithDisc()));
    text += QStringLiteral("; налог %1, способ расчета %2, предмет расчета %3, мера %4")
                .arg(m_taxCode)
                .arg(m_paymentMethod)
                .arg(m_paymentObject)
                .arg(m_frUnit);
    if (!m_markingCode.isEmpty()) {
        QString code = m_markingCode;
        code.replace(QChar(0x1D), QStringLiteral("<GS>"));
        text += QStringLiteral("; код маркировки %1 (группа %2)")
                    .arg(code, QString::number(static_cast<int>(m_exciseMarkType)));
    }
    if (!m_requisites.isEmpty())
        text += QStringLiteral("; реквизиты: ") + tagList(m_requisites);
    return stringutils::removeControlCharacters(text);
}
