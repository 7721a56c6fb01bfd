#include "frutils.h"

#include "cp866codec.h"
#include "frposition.h"

#include <QDateTime>

namespace {

/// Settlement subjects that only format 1.2 has: marked goods, excisable (30, 31) and other ones (32, 33).
int withoutMarking(int paymentObject)
{
    switch (paymentObject) {
    case 30:
    case 31:
        return 2;
    case 32:
    case 33:
        return 1;
    default:
        return paymentObject;
    }
}

} // namespace

QByteArray FrUtils::to866(const QString& text)
{
    return cp866::encode(text);
}

QString FrUtils::getTimeAsString(const QDateTime& dateTime)
{
    return dateTime.isValid() ? dateTime.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"))
                              : QStringLiteral("некорректное время");
}

void FrUtils::fixDateTime(QDateTime& dateTime)
{
    constexpr int firstYear = 2000;
    constexpr int century = 100;
    if (dateTime.isValid() && dateTime.date().year() < firstYear)
        dateTime = dateTime.addYears(century);
}

int FrUtils::getPaymentObject(const FrPosition& position, const QString& ffdVersion)
{
    const int object = position.getPaymentObject();
    const bool isOldFormat = ffdVersion == QStringLiteral("1.0") || ffdVersion == QStringLiteral("1.05")
        || ffdVersion == QStringLiteral("1.1");
    return isOldFormat ? withoutMarking(object) : object;
}

int FrUtils::snoMask(const QList<hw::fr::common::TaxSystemType>& systems)
{
    int mask = 0;
    for (const hw::fr::common::TaxSystemType system : systems)
        mask |= system;
    return mask;
}

QList<hw::fr::common::TaxSystemType> FrUtils::snoList(int mask)
{
    using namespace hw::fr::common;
    QList<TaxSystemType> systems;
    for (int bit = TaxSystemGeneral; bit <= TaxSystemPatent; bit <<= 1) {
        if ((mask & bit) != 0)
            systems.append(static_cast<TaxSystemType>(bit));
    }
    return systems;
}
