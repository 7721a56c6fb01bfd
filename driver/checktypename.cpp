#include "checktypename.h"

#include <QMap>

QString checkTypeName(hw::fr::CheckType type)
{
    static const QMap<int, QString> names{
        {hw::fr::CheckSale, QStringLiteral("продажа")},
        {hw::fr::CheckSaleReturn, QStringLiteral("возврат продажи")},
        {hw::fr::CheckSaleAnnulment, QStringLiteral("аннулирование продажи")},
        {hw::fr::CheckReturnAnnulment, QStringLiteral("аннулирование возврата")},
        {hw::fr::CheckPurchase, QStringLiteral("покупка")},
        {hw::fr::CheckPurchaseReturn, QStringLiteral("возврат покупки")},
        {hw::fr::CheckPurchaseAnnulment, QStringLiteral("аннулирование покупки")},
        {hw::fr::CheckCashIn, QStringLiteral("внесение")},
        {hw::fr::CheckCashOut, QStringLiteral("выем")},
        {hw::fr::CheckSaleCorrection, QStringLiteral("коррекция продажи")},
        {hw::fr::CheckReturnCorrection, QStringLiteral("коррекция возврата")},
        {hw::fr::CheckNonFiscal, QStringLiteral("нефискальный")},
        {hw::fr::CheckCopy, QStringLiteral("копия документа")},
    };
    return names.value(type, QStringLiteral("неизвестный тип чека"));
}

QString checkTypeNameGenitive(hw::fr::CheckType type)
{
    // A copy of a document is meant to be missing here: it reads as an unknown type.
    static const QMap<int, QString> names{
        {hw::fr::CheckSale, QStringLiteral("продажи")},
        {hw::fr::CheckSaleReturn, QStringLiteral("возврата продажи")},
        {hw::fr::CheckSaleAnnulment, QStringLiteral("аннулирования продажи")},
        {hw::fr::CheckReturnAnnulment, QStringLiteral("аннулирования возврата")},
        {hw::fr::CheckPurchase, QStringLiteral("покупки")},
        {hw::fr::CheckPurchaseReturn, QStringLiteral("возврата покупки")},
        {hw::fr::CheckPurchaseAnnulment, QStringLiteral("аннулирования покупки")},
        {hw::fr::CheckCashIn, QStringLiteral("внесения")},
        {hw::fr::CheckCashOut, QStringLiteral("выема")},
        {hw::fr::CheckSaleCorrection, QStringLiteral("коррекции продажи")},
        {hw::fr::CheckReturnCorrection, QStringLiteral("коррекции возврата")},
        {hw::fr::CheckNonFiscal, QStringLiteral("нефискального")},
    };
    return names.value(type, QStringLiteral("неизвестного типа чека"));
}
