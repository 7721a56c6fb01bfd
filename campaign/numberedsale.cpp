#include "numberedsale.h"

#include "firstgoods.h"
#include "violation.h"

#include <QFile>

namespace numberedsale {

namespace {

QString goodsOf(int number)
{
    return QStringLiteral("Продажа %1").arg(number);
}

} // namespace

void write(const QString& fileName, int number)
{
    QFile file(fileName);
    expect(file.open(QIODevice::WriteOnly), QStringLiteral("cannot write ") + fileName);
    file.write(QStringLiteral(R"({"type": "sell", "taxationType": "osn", "items": [
{"type": "position", "name": "%1", "price": 100, "quantity": 1, "amount": 100, "tax": {"type": "vat22"}},
{"type": "text", "text": "Спасибо"},
{"type": "position", "name": "Пакет", "price": 0.01, "quantity": 7, "amount": 0.07, "tax": {"type": "vat10"}}],
"payments": [{"type": "electronically", "sum": 40}, {"type": "cash", "sum": 100}]})")
                   .arg(goodsOf(number))
                   .toUtf8());
}

bool isDocument(const QJsonObject& entry, int number)
{
    return firstGoodsOf(entry) == goodsOf(number);
}

} // namespace numberedsale
