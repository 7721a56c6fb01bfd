#include "shownvalue.h"

#include "frctltr.h"
#include "showntext.h"

#include <QJsonValue>
#include <QVariant>

namespace frctl {

QString shownValue(const QJsonValue& value)
{
    if (value.isNull() || value.isUndefined())
        return QStringLiteral("-");
    return receipt::shownText(
        value.isBool() ? (value.toBool() ? tr("yes") : tr("no")) : value.toVariant().toString());
}

} // namespace frctl
