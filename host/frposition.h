#pragma once

#include "excisemarktype.h"
#include "fdrequisite.h"
#include "frhost_export.h"

#include <QString>

/// One line of a receipt. Sums are roubles as double and are rounded only where they are written.
///
/// Count, price and the discount of the whole line are what a host sets; the sum and the price with discount
/// follow from them, so that price with discount times count is always the sum with discount.
class FRHOST_EXPORT FrPosition
{
public:
    FrPosition() = default;
    FrPosition(const QString& name, double price, double count);

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    /// The goods' barcode, digits as printed on the package.
    QString getBarcode() const { return m_barcode; }
    void setBarcode(const QString& barcode) { m_barcode = barcode; }
    /// Quantity in measure units, with 3 decimals when written.
    double getCount() const { return m_count; }
    void setCount(double count) { m_count = count; }
    /// Price of one unit before discount.
    double getPrice() const { return m_price; }
    void setPrice(double price) { m_price = price; }
    /// Discount on the whole line; a surcharge is negative.
    double getDiscsum() const { return m_discsum; }
    void setDiscsum(double sum) { m_discsum = sum; }
    /// Price of one unit after discount; the price before it when the count is 0.
    double getPriceWithDisc() const;
    /// Sum of the line before discount.
    double getPossum() const;
    /// Sum of the line after discount.
    double getPossumWithDisc() const;

    /// Code of the tax rate (tag 1199); -1 when none is set.
    int getTaxCode() const { return m_taxCode; }
    void setTaxCode(int code) { m_taxCode = code; }
    /// Tag 1214; 0 when none is set, which drivers send as full settlement.
    int getPaymentMethod() const { return m_paymentMethod; }
    void setPaymentMethod(int method) { m_paymentMethod = method; }
    /// Tag 1212, as set here or else by the requisite; 0 when neither is.
    int getPaymentObject() const;
    void setPaymentObject(int object) { m_paymentObject = object; }
    /// Code of the measure unit (tag 2108); 0 is a piece.
    int getFrUnit() const { return m_frUnit; }
    void setFrUnit(int unit) { m_frUnit = unit; }
    QString getMeasureName() const { return m_measureName; }
    void setMeasureName(const QString& name) { m_measureName = name; }

    /// The marking code as scanned; empty for unmarked goods.
    QString getMarkingCode() const { return m_markingCode; }
    ExciseMarkType getExciseMarkType() const { return m_exciseMarkType; }
    void setMarkingCode(const QString& code, ExciseMarkType type);

    void setRequisite(const FdRequisite& requisite);
    bool hasFdRequisite(EFrDriver::RequisiteTypes tag) const;
    /// The requisite of the tag; an empty one when the position has none.
    FdRequisite getRequisite(EFrDriver::RequisiteTypes tag) const;
    FdRequisiteMap getRequisites() const { return m_requisites; }
    /// True with requisite 1223.
    bool hasAgentDataRequisites() const;
    /// True with one of the requisites 1224, 1222 and 1226.
    bool hasSupplierRequisites() const;
    /// True with requisite 1260.
    bool hasIndustryRequisites() const;

    /// One line for a log.
    QString toString() const;

private:
    QString m_name;
    QString m_barcode;
    double m_count = 1.0;
    double m_price = 0.0;
    double m_discsum = 0.0;
    int m_taxCode = -1;
    int m_paymentMethod = 0;
    int m_paymentObject = 0;
    int m_frUnit = 0;
    QString m_measureName;
    QString m_markingCode;
    ExciseMarkType m_exciseMarkType = MarkNone;
    FdRequisiteMap m_requisites;
};
