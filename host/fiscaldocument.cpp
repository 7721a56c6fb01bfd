#include "fiscaldocument.h"

QString FiscalDocument::toString() const
{
    using hw::fr::common::TaxSystem;
    const QString printMode
        = m_printMode == CheckPrintNone ? QStringLiteral("не печатать") : QStringLiteral("печатать");
    return QStringLiteral(
        "Документ: тип %1, кассир '%2', адрес покупателя '%3', система налогообложения '%4', %5")
        .arg(QString::number(m_documentType), m_cashierName, m_customerAddress,
            TaxSystem::getDescription(m_taxSystem), printMode);
}
