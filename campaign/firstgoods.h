#pragma once

#include <QJsonObject>
#include <QString>

/// What the first goods are called of a receipt, be it a host's or one in the journal of a register; empty
/// where there are none.
inline QString firstGoodsOf(const QJsonObject& receipt)
{
    return receipt.value(QStringLiteral("items"))[0][QStringLiteral("name")].toString();
}
