#include "fnutils.h"

#include "servicetexts.h"

QStringList FnUtils::ValidityDate::getStrInfo() const
{
    return {
        QStringLiteral("Срок действия ФН: %1").arg(servicetexts::date(date)),
        QStringLiteral("Доступно регистраций: %1").arg(availableRegistrations),
        QStringLiteral("Проведено регистраций: %1").arg(registrationsMade),
    };
}
