#pragma once

#include "efrdriver.h"
#include "frhost_export.h"

#include <QMap>
#include <QString>
#include <QVariant>

class FdRequisite;

/// Requisites by tag, in ascending order of the tags.
using FdRequisiteMap = QMap<EFrDriver::RequisiteTypes, FdRequisite>;

/// A requisite of the fiscal data format: a tag and its value, or, for a composite tag such as 1223, its
/// fields.
class FRHOST_EXPORT FdRequisite
{
public:
    FdRequisite() = default;
    /// The value goes to the register as it stands. A QVariantMap makes a composite requisite; its keys are
    /// the tags of the fields in decimal.
    FdRequisite(EFrDriver::RequisiteTypes tag, const QVariant& sourceData);
    /// A composite requisite out of its fields.
    static FdRequisite composite(EFrDriver::RequisiteTypes tag, const FdRequisiteMap& fields);

    EFrDriver::RequisiteTypes getTag() const { return m_tag; }
    /// The Russian name of the tag as it stands in the fiscal data format, "реквизит N" for one not known
    /// here.
    QString getDescription() const;
    QVariant getSourceData() const { return m_sourceData; }
    /// The fields of a composite requisite; empty for any other.
    FdRequisiteMap toMap() const;

private:
    EFrDriver::RequisiteTypes m_tag = EFrDriver::NoRequisite;
    QVariant m_sourceData;
};
