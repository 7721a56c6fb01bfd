// Rules about marked goods.

#include "judgement.h"
#include "linesum.h"
#include "marksyntax.h"
#include "receiptnames.h"
#include "receipttr.h"
#include "requisitecodes.h"
#include "rulelist.h"

#include <QMap>

namespace receipt::rules {

namespace {

constexpr int piece = 0;
constexpr qint64 one = 1000;
constexpr qsizetype shortStamp = 68;

QList<ReceiptItem> markedItems(const Receipt& receipt)
{
    QList<ReceiptItem> items;
    for (const ReceiptItem& item : receipt.items) {
        if (item.isMarked())
            items.append(item);
    }
    return items;
}

QString codePath(const ReceiptItem& item)
{
    return item.path + QStringLiteral(".markingCode");
}

/// Over XML a code of other groups stays behind: their goods go out by the code of the goods (tag 1163)
/// alone.
bool isSentWhole(ExciseMarkType type)
{
    return type >= MarkTobacco && type <= MarkMedicine;
}

void judgeGroup(Judgement& judgement, const ReceiptItem& item)
{
    const ExciseMarkType type = item.position.getExciseMarkType();
    if (judgement.options.protocol != Protocol::Xml || isSentWhole(type))
        return;
    const bool isShortStamp = item.position.getMarkingCode().length() == shortStamp;
    const QString sent = type != MarkAlcohol ? tr("the code of the goods in it")
        : isShortStamp ? tr("the first 14 characters of its code, as of a stamp of 150,")
                       : tr("the first 14 characters of its code");
    judgement.warning(codePath(item) + QStringLiteral(".type"), names::nameOf(names::markTypes(), type),
        tr("is a group of which only %1 goes out over XML (tag 1163), without the whole code (tag 2000), "
           "which registers want for marked goods; as common the code goes out whole")
            .arg(sent));
}

void judgeQuantity(Judgement& judgement, const ReceiptItem& item)
{
    const int unit = item.position.getFrUnit();
    const QString quantity = QString::number(item.position.getCount());
    if (unit == piece && lineSumOf(item.position).quantity != one)
        judgement.error(item.path + QStringLiteral(".quantity"), quantity,
            tr("must be 1 for a marked piece: each has a code and a position of its own, and parts "
               "of a package cannot be sent through this driver"));
    // The receipt says there that a piece was sold or came back, whatever the unit is.
    if (unit != piece && judgement.options.protocol == Protocol::Xml)
        judgement.error(item.path + QStringLiteral(".measurementUnit"),
            names::nameOf(names::measureUnits(), unit),
            tr("must be piece for marked goods: over XML the register is told of a piece, never of "
               "a measured quantity"));
}

} // namespace

void markSyntax(Judgement& judgement)
{
    for (const ReceiptItem& item : markedItems(judgement.receipt)) {
        const QString code = item.position.getMarkingCode();
        const std::optional<MarkFault> fault = markFault(code);
        if (!fault)
            continue;
        if (fault->severity == Finding::Error)
            judgement.error(codePath(item), code, fault->reason);
        else
            judgement.warning(codePath(item), code, fault->reason);
    }
}

void missingMarks(Judgement& judgement)
{
    for (const ReceiptItem& item : judgement.receipt.items) {
        const int object = item.position.getPaymentObject();
        const bool isMarkedObject = object == ExciseWithMarking || object == CommodityWithMarking;
        const QString name = names::nameOf(names::paymentObjects(), object);
        if (item.kind != ReceiptItem::Position || isMarkedObject == item.isMarked())
            continue;
        if (isMarkedObject)
            judgement.error(
                codePath(item), {}, tr("is missing: the payment object %1 is sold with its code").arg(name));
        else if (object <= CommodityWithMarking)
            judgement.warning(item.path + QStringLiteral(".paymentObject"), name,
                tr("has no marking code: with one goods are commodityWithMarking or "
                   "exciseWithMarking"));
    }
}

void markedPieces(Judgement& judgement)
{
    QMap<QString, QString> seen;
    for (const ReceiptItem& item : markedItems(judgement.receipt)) {
        judgeQuantity(judgement, item);
        judgeGroup(judgement, item);
        const QString code = item.position.getMarkingCode();
        const QString identity = markIdentity(code);
        if (seen.contains(identity))
            judgement.error(codePath(item), code,
                tr("stands at %1 too: one code is one piece").arg(seen.value(identity)));
        else
            seen.insert(identity, codePath(item));
    }
}

} // namespace receipt::rules
