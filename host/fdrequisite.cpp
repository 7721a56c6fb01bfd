#include "fdrequisite.h"

#include "fdrequisitenames.h"

FdRequisite::FdRequisite(EFrDriver::RequisiteTypes tag, const QVariant& sourceData)
    : m_tag(tag)
    , m_sourceData(sourceData)
{
}

FdRequisite FdRequisite::composite(EFrDriver::RequisiteTypes tag, const FdRequisiteMap& fields)
{
    QVariantMap values;
    for (auto field = fields.cbegin(); field != fields.cend(); ++field)
        values.insert(QString::number(static_cast<int>(field.key())), field.value().getSourceData());
    return FdRequisite(tag, values);
}

QString FdRequisite::getDescription() const
{
    const QStringView name = fdRequisiteName(m_tag);
    return name.isEmpty() ? QStringLiteral("реквизит %1").arg(static_cast<int>(m_tag)) : name.toString();
}

FdRequisiteMap FdRequisite::toMap() const
{
    // A text converts to no map, so that a simple requisite has no fields.
    const QVariantMap values = m_sourceData.toMap();
    FdRequisiteMap fields;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const auto tag = static_cast<EFrDriver::RequisiteTypes>(value.key().toUShort());
        if (tag != EFrDriver::NoRequisite)
            fields.insert(tag, FdRequisite(tag, value.value()));
    }
    return fields;
}
