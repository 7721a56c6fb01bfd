#include "hex/fields.h"

#include "register/codepage.h"
#include "register/shortdate.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace emulator {

int HexFields::readNumber(qsizetype index, int usual, bool& good) const
{
    if (isEmpty(index) && !m_strict) {
        good = true;
        return usual;
    }
    const int value = raw(index).toInt(&good);
    good = good && isWritten(index, QByteArray::number(value));
    return value;
}

int HexFields::number(qsizetype index, int usual)
{
    bool good = false;
    const int value = readNumber(index, usual, good);
    return keep(index, good, value, QStringLiteral("a number"));
}

int HexFields::numberWithin(qsizetype index, int least, int most)
{
    bool good = false;
    const int value = readNumber(index, 0, good);
    return keep(index, good && value >= least && value <= most, value,
        QStringLiteral("a number from %1 to %2").arg(least).arg(most));
}

quint32 HexFields::documentNumber(qsizetype index)
{
    bool ok = false;
    const quint32 value = raw(index).toUInt(&ok);
    return keep(index, ok && isWritten(index, QByteArray::number(value)), value, QStringLiteral("a number"));
}

qint64 HexFields::decimal(qsizetype index, int decimals, QString (*toText)(qint64))
{
    const std::optional<qint64> value = parseDecimal(raw(index), decimals);
    return keep(index, value && isWritten(index, toText(*value).toLatin1()), value.value_or(0),
        QStringLiteral("a number with %1 decimals").arg(decimals));
}

double HexFields::real(qsizetype index)
{
    bool ok = false;
    const double value = raw(index).toDouble(&ok);
    const QByteArray shortest = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
    return keep(
        index, ok && std::isfinite(value) && isWritten(index, shortest), value, QStringLiteral("a number"));
}

QString HexFields::text(qsizetype index, qsizetype longest)
{
    return keep(index, raw(index).size() <= longest, codepage::toText(raw(index)),
        QStringLiteral("%1 bytes at most").arg(longest));
}

QString HexFields::utf8(qsizetype index, qsizetype longest)
{
    const QString value = QString::fromUtf8(raw(index));
    return keep(index, value.size() <= longest, value, QStringLiteral("%1 characters at most").arg(longest));
}

QString HexFields::inn(qsizetype index)
{
    const QByteArray digits = raw(index).trimmed();
    const bool good = digits.size() <= 12 && std::all_of(digits.cbegin(), digits.cend(), [](char digit) {
        return digit >= '0' && digit <= '9';
    });
    return keep(index, good, QString::fromLatin1(digits), QStringLiteral("12 digits at most"));
}

QDate HexFields::date(qsizetype index)
{
    const QDate date = shortDate(QString::fromLatin1(raw(index)));
    return keep(index, date.isValid(), date, QStringLiteral("a date, ddMMyy"));
}

QDateTime HexFields::dateTime(qsizetype dateIndex, qsizetype timeIndex)
{
    const QTime time = QTime::fromString(QString::fromLatin1(raw(timeIndex)), QStringLiteral("HHmmss"));
    return keep(
        timeIndex, time.isValid(), QDateTime(date(dateIndex), time), QStringLiteral("a time, HHmmss"));
}

} // namespace emulator
