#pragma once

#include "checkprintmode.h"
#include "checktype.h"
#include "frhost_export.h"
#include "taxsystem.h"

#include <QString>

/// The head of a receipt. A default one is a sale without cashier that names no tax system.
class FRHOST_EXPORT FiscalDocument
{
public:
    FiscalDocument() = default;
    explicit FiscalDocument(hw::fr::CheckType type)
        : m_documentType(type)
    {
    }

    hw::fr::CheckType getDocumentType() const { return m_documentType; }
    void setDocumentType(hw::fr::CheckType type) { m_documentType = type; }
    QString getCashierName() const { return m_cashierName; }
    void setCashierName(const QString& name) { m_cashierName = name; }
    /// Telephone or e-mail address for the customer's electronic copy.
    QString getCustomerAddress() const { return m_customerAddress; }
    void setCustomerAddress(const QString& address) { m_customerAddress = address; }
    /// Tax system of the receipt; 0 lets the driver take the register's first one.
    hw::fr::common::TaxSystemType getTaxSystem() const { return m_taxSystem; }
    void setTaxSystem(hw::fr::common::TaxSystemType system) { m_taxSystem = system; }
    CheckPrintMode getPrintMode() const { return m_printMode; }
    void setPrintMode(CheckPrintMode mode) { m_printMode = mode; }

    /// One line for a log.
    QString toString() const;

private:
    hw::fr::CheckType m_documentType = hw::fr::CheckSale;
    QString m_cashierName;
    QString m_customerAddress;
    hw::fr::common::TaxSystemType m_taxSystem = hw::fr::common::TaxSystemNone;
    CheckPrintMode m_printMode = CheckPrintNormal;
};
