#include "receipttype.h"

#include "jsonfields.h"
#include "receiptnames.h"
#include "receipttr.h"

#include <algorithm>

namespace receipt {

namespace {

constexpr const char* typesOfOtherMeans[] = {
    "buy",
    "buyReturn",
    "sellCorrection",
    "sellReturnCorrection",
    "buyCorrection",
    "buyReturnCorrection",
};

} // namespace

hw::fr::CheckType receiptType(JsonFields& fields)
{
    const QString name = QStringLiteral("type");
    const bool isKnown = std::any_of(std::begin(typesOfOtherMeans), std::end(typesOfOtherMeans),
        [given = fields.given(name)](const char* type) { return given == QLatin1String(type); });
    if (!isKnown)
        return static_cast<hw::fr::CheckType>(fields.choice(name, names::receiptTypes()));
    fields.text(name);
    fields.fail(name,
        tr("is not possible, only sell and sellReturn are: this driver issues no purchases and no "
           "corrections (see docs/limits.md)"));
    return hw::fr::CheckSale;
}

} // namespace receipt
