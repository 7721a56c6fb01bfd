#include "ofdstatus.h"

#include "statustext.h"

namespace spfxml {

OfdStatus::OfdStatus(const QDomDocument& state)
    : queueLength(statusNumber(state, QStringLiteral("1097")))
    , firstDocumentNumber(statusNumber(state, QStringLiteral("1116")))
    , firstDocumentTime(statusText(state, QStringLiteral("1098")))
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
