#pragma once

#include "register/amounts.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace emulator {

/// The fields of a HEX request. A field that cannot be read as what it should be is remembered, so that a
/// command reads all its fields first and asks once.
class HexFields
{
public:
    /// A strict one takes only what a host of today's rules sends: a number has one way to be written.
    HexFields(const QList<QByteArray>& fields, bool strict)
        : m_fields(fields)
        , m_strict(strict)
    {
    }

    qsizetype count() const { return m_fields.size(); }
    bool isStrict() const { return m_strict; }
    bool isBad() const { return m_firstBad >= 0; }
    /// Index of the first field that is not what it should be, negative when there is none.
    qsizetype firstBad() const { return m_firstBad; }
    /// What the first bad field should be, in words.
    const QString& wanted() const { return m_wanted; }
    /// The command takes no such value in that field.
    void reject(qsizetype index, const QString& wantedWords) { keep(index, false, 0, wantedWords); }

    QByteArray raw(qsizetype index) const { return m_fields.value(index); }
    bool isEmpty(qsizetype index) const { return raw(index).isEmpty(); }
    /// An empty field is bad, unless the register is lenient: then it gives the usual value.
    int number(qsizetype index, int usual = 0);
    int numberWithin(qsizetype index, int least, int most);
    /// A number of 32 bits without a sign.
    quint32 documentNumber(qsizetype index);
    /// Sums and quantities have all their decimals, and no sign before zero.
    Money money(qsizetype index) { return decimal(index, 2, moneyText); }
    Quantity quantity(qsizetype index) { return decimal(index, 3, quantityText); }
    /// As short as can be.
    double real(qsizetype index);
    /// Text in the register's code page, at most that long.
    QString text(qsizetype index, qsizetype longest);
    QString utf8(qsizetype index, qsizetype longest);
    /// Twelve digits at the most, or nothing.
    QString inn(qsizetype index);
    QDate date(qsizetype index);
    QDateTime dateTime(qsizetype dateIndex, qsizetype timeIndex);

private:
    qint64 decimal(qsizetype index, int decimals, QString (*toText)(qint64));
    /// The field's number has the form in which hosts write it.
    bool isWritten(qsizetype index, const QByteArray& form) const { return !m_strict || raw(index) == form; }

    template <typename T>
    T keep(qsizetype index, bool good, const T& value, const QString& wantedWords)
    {
        if (!good && m_firstBad < 0) {
            m_firstBad = index;
            m_wanted = wantedWords;
        }
        return value;
    }
    int readNumber(qsizetype index, int usual, bool& good) const;

    QList<QByteArray> m_fields;
    bool m_strict;
    qsizetype m_firstBad = -1;
    QString m_wanted;
};

} // namespace emulator
