#include "ofdstatusinfo.h"

#include "servicetexts.h"

QString OfdStatusInfo::toString() const
{
    const QString number
        = firstUnsentNumber == -1 ? servicetexts::noData() : QString::number(firstUnsentNumber);
    QString text = QStringLiteral("Соединение с ОФД: %1, непереданный документ: %2, дата и время: %3")
                       .arg(servicetexts::yesNo(isConnected != 0), number,
                           servicetexts::dateTime(firstUnsentDateTime));
    if (!message.isEmpty())
        text += QStringLiteral(", сообщение: ") + message;
    return text;
}
