#include "hex/fields.h"

#include "hex/codepage.h"

#include <algorithm>

namespace emulator {

namespace {

// A number as hosts write it with so many decimals.
bool isFixed(const QByteArray& number, int decimals)
{
    const bool negativeZero = number.startsWith('-') && number.count('0') == number.size() - 2;
    return number.indexOf('.') == number.size() - decimals - 1 && number == number.trimmed() && !negativeZero;
}

} // namespace

int HexFields::number(qsizetype index, int usual)
{
    if (isEmpty(index))
        return usual;
    bool ok = false;
    const int value = raw(index).toInt(&ok);
    return keep(index, ok, value);
}

quint32 HexFields::documentNumber(qsizetype index)
{
    bool ok = false;
    const quint32 value = raw(index).toUInt(&ok);
    return keep(index, ok, value);
}

qint64 HexFields::decimal(qsizetype index, int decimals)
{
    const std::optional<qint64> value = parseDecimal(raw(index), decimals);
    const bool good = value.has_value() && (!m_strict || isFixed(raw(index), decimals));
    return keep(index, good, value.value_or(0));
}

double HexFields::real(qsizetype index)
{
    bool ok = false;
    const double value = raw(index).toDouble(&ok);
    return keep(index, ok, value);
}

QString HexFields::text(qsizetype index, qsizetype longest)
{
    return keep(index, raw(index).size() <= longest, codepage::toText(raw(index)));
}

QString HexFields::utf8(qsizetype index, qsizetype longest)
{
    const QString value = QString::fromUtf8(raw(index));
    return keep(index, value.size() <= longest, value);
}

QString HexFields::inn(qsizetype index)
{
    const QByteArray digits = raw(index).trimmed();
    const bool good = digits.size() <= 12 && std::all_of(digits.cbegin(), digits.cend(), [](char digit) {
        return digit >= '0' && digit <= '9';
    });
    return keep(index, good, QString::fromLatin1(digits));
}

QDate HexFields::date(qsizetype index)
{
    const QDate twoDigitYear = QDate::fromString(QString::fromLatin1(raw(index)), QStringLiteral("ddMMyy"));
    const bool past = twoDigitYear.year() < 2000;
    return keep(index, twoDigitYear.isValid(), past ? twoDigitYear.addYears(100) : twoDigitYear);
}

QDateTime HexFields::dateTime(qsizetype dateIndex, qsizetype timeIndex)
{
    const QTime time = QTime::fromString(QString::fromLatin1(raw(timeIndex)), QStringLiteral("HHmmss"));
    return keep(timeIndex, time.isValid(), QDateTime(date(dateIndex), time));
}

} // namespace emulator
