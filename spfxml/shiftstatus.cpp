#include "shiftstatus.h"

#include "names.h"

namespace spfxml {

namespace {

// Compared as a text on purpose: the status of the fiscal drive reads its flag as a number, and the two reads
// must differ for "01".
bool isSet(const StatusTexts& document, const QString& key)
{
    return document.text(key) == QLatin1String("1");
}

} // namespace

ShiftStatus::ShiftStatus(const QDomDocument& document)
    : ShiftStatus(StatusTexts(document))
{
}

ShiftStatus::ShiftStatus(const StatusTexts& document)
    : opened(isSet(document, names::shift::state))
    , overtime(isSet(document, names::shift::overtime))
    , shiftNumber(document.number(names::shift::number))
    , documentNumber(document.number(names::shift::documentNumber))
{
}

} // namespace spfxml
