#include "positionparser.h"

#include "jsonfields.h"
#include "money.h"
#include "receiptnames.h"

#include <QJsonValue>
#include <QStringList>

#include <algorithm>

namespace frctl {

namespace {

constexpr int NameLength = 128;
constexpr int MarkLength = 512;
constexpr int Commodity = 1;
constexpr int ExciseWithMarking = 31;
constexpr int CommodityWithMarking = 33;
constexpr int FullPayment = 4;

QString nearestValues(const LineSum& sum)
{
    QStringList values;
    for (const int step : {-1, 1}) {
        if (const auto discount = sum.nearestDiscount(step))
            values.append(moneyText(*discount));
    }
    return values.join(QStringLiteral(" and "));
}

LineSum readSum(JsonFields& fields)
{
    const QString discount = QStringLiteral("infoDiscountAmount");
    const QString amount = QStringLiteral("amount");
    LineSum sum;
    sum.price = fields.kopecks(QStringLiteral("price"));
    sum.quantity = fields.thousandths(QStringLiteral("quantity"));
    sum.discount = fields.has(discount) ? fields.kopecks(discount) : 0;
    if (sum.discount > sum.gross())
        fields.fail(discount, QStringLiteral("is more than the line costs, %1").arg(moneyText(sum.gross())));
    if (fields.kopecks(amount) != sum.amount())
        fields.fail(amount,
            QStringLiteral("must be price times quantity less the discount, %1")
                .arg(moneyText(sum.amount())));
    if (!sum.isDiscountDivisible())
        fields.fail(discount,
            QStringLiteral("does not divide into whole kopecks per unit; nearest possible: %1")
                .arg(nearestValues(sum)));
    return sum;
}

int measureUnit(JsonFields& fields)
{
    const QString name = QStringLiteral("measurementUnit");
    if (!fields.has(name))
        return 0;
    return fields.isNumber(name) ? fields.integer(name, 0, 255) : fields.choice(name, names::measureUnits());
}

void readMark(JsonFields& fields, FrPosition& position)
{
    const QString name = QStringLiteral("markingCode");
    if (!fields.has(name))
        return;
    if (!fields.isObject(name)) {
        position.setMarkingCode(markFromText(fields.text(name, MarkLength)), MarkCommon);
        return;
    }
    fields.object(name, [&](JsonFields& mark) {
        const QString code = markFromText(mark.text(QStringLiteral("mark"), MarkLength));
        const QString type = QStringLiteral("type");
        position.setMarkingCode(code,
            mark.has(type) ? static_cast<ExciseMarkType>(mark.choice(type, names::markTypes())) : MarkCommon);
    });
}

int paymentObject(JsonFields& fields, const FrPosition& position)
{
    const QString name = QStringLiteral("paymentObject");
    if (fields.isNumber(name))
        return fields.integer(name, 1, 255);
    if (fields.has(name))
        return fields.choice(name, names::paymentObjects());
    if (position.getMarkingCode().isEmpty())
        return Commodity;
    const ExciseMarkType type = position.getExciseMarkType();
    return type == MarkAlcohol || type == MarkTobacco ? ExciseWithMarking : CommodityWithMarking;
}

} // namespace

QString markFromText(const QString& text)
{
    // A scanned code begins with a digit or holds characters that base64 has not. Digits in front decode to
    // bytes above 0x7F, which no marking code has, so the two cannot be taken for each other.
    const auto decoded
        = QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    const auto scanned = [](char byte) { return byte == '\x1D' || (byte >= ' ' && byte <= '~'); };
    const bool isBase64 = decoded && !(*decoded).isEmpty() && text.size() % 4 == 0
        && std::all_of((*decoded).cbegin(), (*decoded).cend(), scanned);
    return isBase64 ? QString::fromLatin1(*decoded) : text;
}

FrPosition positionFromJson(JsonFields& fields, LineSum& sum)
{
    const QString name = fields.text(QStringLiteral("name"), NameLength);
    sum = readSum(fields);
    FrPosition position(name, roubles(sum.price), static_cast<double>(sum.quantity) / 1000.0);
    position.setDiscsum(roubles(sum.discount));

    const QString method = QStringLiteral("paymentMethod");
    position.setPaymentMethod(
        fields.has(method) ? fields.choice(method, names::paymentMethods()) : FullPayment);
    fields.object(QStringLiteral("tax"),
        [&](JsonFields& tax) { position.setTaxCode(tax.choice(QStringLiteral("type"), names::taxRates())); });
    position.setFrUnit(measureUnit(fields));
    position.setMeasureName(names::measureName(position.getFrUnit()));
    readMark(fields, position);
    position.setPaymentObject(paymentObject(fields, position));
    readPositionRequisites(fields, position);
    return position;
}

} // namespace frctl
