#include "ofdstatus.h"

namespace spfxml {

OfdStatus::OfdStatus(const QDomDocument& state)
    : OfdStatus(StatusTexts(state))
{
}

OfdStatus::OfdStatus(const StatusTexts& state)
    : queueLength(state.number(QStringLiteral("1097")))
    , firstDocumentNumber(state.number(QStringLiteral("1116")))
    , firstDocumentTime(state.text(QStringLiteral("1098")))
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
