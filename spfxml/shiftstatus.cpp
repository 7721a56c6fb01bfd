#include "shiftstatus.h"

#include "statustext.h"

namespace spfxml {

namespace {

// Compared as a text on purpose: the status of the fiscal drive reads its flag as a number, and the two reads
// must differ for "01".
bool isSet(const QDomDocument& document, const QString& key)
{
    return statusText(document, key) == QLatin1String("1");
}

} // namespace

ShiftStatus::ShiftStatus(const QDomDocument& document)
    : opened(isSet(document, QStringLiteral("ShiftState")))
    , overtime(isSet(document, QStringLiteral("ShiftOvertime")))
    , shiftNumber(statusNumber(document, QString::number(1038)))
    , documentNumber(statusNumber(document, QString::number(1042)))
{
}

} // namespace spfxml
