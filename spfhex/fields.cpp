#include "fields.h"

#include "bytestohexutils.h"
#include "cp866.h"
#include "datetimefields.h"
#include "decimals.h"

namespace spfhex::field {

QVariant empty()
{
    return {};
}

QVariant constant(int value)
{
    return value;
}

QVariant asGiven(const QVariant& value)
{
    return value;
}

QVariant utf8(const QString& text)
{
    return text;
}

QVariant utf8(const QString& text, int maxCharacters)
{
    return text.left(maxCharacters);
}

QVariant utf8(const std::optional<QString>& text, int maxCharacters)
{
    return text ? utf8(*text, maxCharacters) : empty();
}

QVariant cp866(const QString& text)
{
    return toCp866(text);
}

QVariant cp866(const QString& text, qsizetype maxBytes)
{
    return toCp866(text).left(maxBytes);
}

QVariant cp866Hex(const QString& text)
{
    return bytestohexutils::bytesToHexStr(toCp866(text), QString(), QString());
}

QVariant number(int value)
{
    return value;
}

QVariant number(long value)
{
    return QVariant::fromValue(value);
}

QVariant number(long long value)
{
    return value;
}

QVariant number(const std::optional<int>& value)
{
    return value ? number(*value) : empty();
}

QVariant flag(bool value)
{
    return value ? 1 : 0;
}

QVariant money(double sum)
{
    return moneyText(sum);
}

QVariant quantity(double count)
{
    return quantityText(count);
}

QVariant shortestQuantity(double count)
{
    return count;
}

QVariant date(const QDate& date)
{
    return date.toString(dateFormat());
}

QVariant date(const QDateTime& moment)
{
    return moment.toString(dateFormat());
}

QVariant time(const QDateTime& moment)
{
    return moment.toString(timeFormat());
}

} // namespace spfhex::field
