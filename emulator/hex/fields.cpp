#include "hex/fields.h"

#include "register/codepage.h"
#include "register/shortdate.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace emulator {

int HexFields::number(qsizetype index, int usual)
{
    if (isEmpty(index) && !m_strict)
        return usual;
    bool ok = false;
    const int value = raw(index).toInt(&ok);
    return keep(index, ok && isWritten(index, QByteArray::number(value)), value);
}

quint32 HexFields::documentNumber(qsizetype index)
{
    bool ok = false;
    const quint32 value = raw(index).toUInt(&ok);
    return keep(index, ok && isWritten(index, QByteArray::number(value)), value);
}

qint64 HexFields::decimal(qsizetype index, int decimals, QString (*toText)(qint64))
{
    const std::optional<qint64> value = parseDecimal(raw(index), decimals);
    return keep(index, value && isWritten(index, toText(*value).toLatin1()), value.value_or(0));
}

double HexFields::real(qsizetype index)
{
    bool ok = false;
    const double value = raw(index).toDouble(&ok);
    const QByteArray shortest = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
    return keep(index, ok && std::isfinite(value) && isWritten(index, shortest), value);
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
    const QDate date = shortDate(QString::fromLatin1(raw(index)));
    return keep(index, date.isValid(), date);
}

QDateTime HexFields::dateTime(qsizetype dateIndex, qsizetype timeIndex)
{
    const QTime time = QTime::fromString(QString::fromLatin1(raw(timeIndex)), QStringLiteral("HHmmss"));
    return keep(timeIndex, time.isValid(), QDateTime(date(dateIndex), time));
}

} // namespace emulator
