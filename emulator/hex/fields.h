#pragma once

#include "register/amounts.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

namespace emulator {

/// The fields of a HEX request. A field that cannot be read as what it should be is remembered, so that a
/// command reads all its fields first and asks once.
class HexFields
{
public:
    explicit HexFields(const QList<QByteArray>& fields)
        : m_fields(fields)
    {
    }

    qsizetype count() const { return m_fields.size(); }
    bool isBad() const { return m_bad; }

    QByteArray raw(qsizetype index) const { return m_fields.value(index); }
    bool isEmpty(qsizetype index) const { return raw(index).isEmpty(); }
    /// An empty field gives the usual value.
    int number(qsizetype index, int usual = 0);
    /// A number of 32 bits without a sign.
    quint32 documentNumber(qsizetype index);
    Money money(qsizetype index) { return decimal(index, 2); }
    Quantity quantity(qsizetype index) { return decimal(index, 3); }
    double real(qsizetype index);
    /// Text in the register's code page, at most that long.
    QString text(qsizetype index, qsizetype longest);
    QString utf8(qsizetype index, qsizetype longest);
    /// Twelve digits at the most, or nothing.
    QString inn(qsizetype index);
    QDate date(qsizetype index);
    QDateTime dateTime(qsizetype dateIndex, qsizetype timeIndex);

private:
    qint64 decimal(qsizetype index, int decimals);

    template <typename T>
    T keep(bool good, const T& value)
    {
        m_bad = m_bad || !good;
        return value;
    }

    QList<QByteArray> m_fields;
    bool m_bad = false;
};

} // namespace emulator
