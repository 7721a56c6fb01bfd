#include "positionparser.h"

#include "jsonfields.h"
#include "linesum.h"
#include "markingcode.h"
#include "money.h"
#include "receiptnames.h"
#include "receipttr.h"
#include "requisitecodes.h"

#include <QJsonValue>
#include <QStringList>

namespace receipt {

namespace {

constexpr int nameLength = 128;
constexpr int markLength = 512;

QString nearestValues(const LineSum& sum)
{
    QStringList values;
    for (const int step : {-1, 1}) {
        if (const auto discount = sum.nearestDiscount(step))
            values.append(moneyText(*discount));
    }
    return values.join(tr(" and "));
}

const QString& discountName()
{
    static const QString name = QStringLiteral("infoDiscountAmount");
    return name;
}

bool isSumRight(const JsonFields& fields, const LineSum& sum, qint64 amount)
{
    if (sum.discount > sum.gross())
        fields.fail(discountName(), tr("is more than the line costs, %1").arg(moneyText(sum.gross())));
    else if (amount != sum.amount())
        fields.fail(QStringLiteral("amount"),
            tr("must be price times quantity less the discount, %1").arg(moneyText(sum.amount())));
    else
        return true;
    return false;
}

LineSum readSum(JsonFields& fields, bool& isSound)
{
    const qsizetype errors = fields.errorCount();
    const QString& discount = discountName();
    LineSum sum;
    sum.price = fields.kopecks(QStringLiteral("price"));
    sum.quantity = fields.thousandths(QStringLiteral("quantity"));
    sum.discount = fields.has(discount) ? fields.kopecks(discount) : 0;
    const qint64 amount = fields.kopecks(QStringLiteral("amount"));
    isSound = fields.errorCount() == errors && isSumRight(fields, sum, amount);
    return sum;
}

/// What can be done about a discount that does not divide, besides another discount.
QString splitAdvice(bool isMarked, bool isWhole)
{
    if (isMarked)
        return tr("marked goods are not split, since each piece is a position of its own");
    return isWhole ? tr("\"split\": true in the position makes two positions of it")
                   : tr("only a whole quantity can be split into two positions");
}

QList<LineSum> issuedSums(JsonFields& fields, bool isSplitAllowed)
{
    bool isSound = false;
    const LineSum sum = readSum(fields, isSound);
    const bool isSplit = fields.flag(QStringLiteral("split"), false) || isSplitAllowed;
    const bool isMarked = fields.has(QStringLiteral("markingCode"));
    if (!isSound || sum.isDiscountDivisible())
        return {sum};
    if (isSplit && !isMarked && sum.isWhole())
        return sum.split();
    fields.fail(discountName(),
        tr("does not divide into whole kopecks per unit; nearest possible: %1; %2")
            .arg(nearestValues(sum), splitAdvice(isMarked, sum.isWhole())));
    return {sum};
}

int measureUnit(JsonFields& fields)
{
    const QString name = QStringLiteral("measurementUnit");
    if (!fields.has(name))
        return 0;
    return fields.choice(name, names::measureUnits(), 0, 255);
}

void readMark(JsonFields& fields, FrPosition& position)
{
    const QString name = QStringLiteral("markingCode");
    if (!fields.has(name))
        return;
    if (!fields.isObject(name)) {
        position.setMarkingCode(markFromText(fields.scannedText(name, markLength)), MarkCommon);
        return;
    }
    fields.object(name, [&](JsonFields& mark) {
        const QString code = markFromText(mark.scannedText(QStringLiteral("mark"), markLength));
        const QString type = QStringLiteral("type");
        position.setMarkingCode(code,
            mark.has(type) ? static_cast<ExciseMarkType>(mark.choice(type, names::markTypes())) : MarkCommon);
    });
}

int paymentObject(JsonFields& fields, const FrPosition& position)
{
    const QString name = QStringLiteral("paymentObject");
    if (fields.has(name))
        return fields.choice(name, names::paymentObjects(), 1, 255);
    if (position.getMarkingCode().isEmpty())
        return Commodity;
    const ExciseMarkType type = position.getExciseMarkType();
    return type == MarkAlcohol || type == MarkTobacco ? ExciseWithMarking : CommodityWithMarking;
}

FrPosition withSum(FrPosition position, const LineSum& sum)
{
    position.setPrice(roubles(sum.price));
    position.setCount(static_cast<double>(sum.quantity) / 1000.0);
    position.setDiscsum(roubles(sum.discount));
    return position;
}

} // namespace

QList<FrPosition> positionsFromJson(JsonFields& fields, bool isSplitAllowed)
{
    FrPosition position;
    position.setName(fields.text(QStringLiteral("name"), nameLength));
    const QList<LineSum> sums = issuedSums(fields, isSplitAllowed);
    const QString method = QStringLiteral("paymentMethod");
    position.setPaymentMethod(
        fields.has(method) ? fields.choice(method, names::paymentMethods()) : FullPayment);
    // Any number that the tag can hold: a rate that the law brings tomorrow must not wait for its name.
    fields.object(QStringLiteral("tax"), [&](JsonFields& tax) {
        position.setTaxCode(tax.choice(QStringLiteral("type"), names::taxRates(), 1, 255));
    });
    position.setFrUnit(measureUnit(fields));
    position.setMeasureName(names::measureName(position.getFrUnit()));
    readMark(fields, position);
    position.setPaymentObject(paymentObject(fields, position));
    readPositionRequisites(fields, position);

    QList<FrPosition> positions;
    for (const LineSum& sum : sums)
        positions.append(withSum(position, sum));
    return positions;
}

} // namespace receipt
