#include "ofdstatus.h"

#include "names.h"

namespace spfxml {

OfdStatus::OfdStatus(const QDomDocument& state)
    : OfdStatus(StatusTexts(state))
{
}

OfdStatus::OfdStatus(const StatusTexts& state)
    : queueLength(state.number(names::ofd::queueLength))
    , firstDocumentNumber(state.number(names::ofd::firstDocumentNumber))
    , firstDocumentTime(state.text(names::ofd::firstDocumentTime))
{
}

QString OfdStatus::toString() const
{
    return indentedBlock({
        QStringLiteral("Длина очереди неотправленных документов: %1").arg(queueLength),
        QStringLiteral("Номер первого неотправленного документа: %1").arg(firstDocumentNumber),
        QStringLiteral("Время первого неотправленного документа: %1").arg(firstDocumentTime),
    });
}

} // namespace spfxml
