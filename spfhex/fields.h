#pragma once

#include <QByteArray>
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QVariant>

#include <optional>

/// How a value becomes a field of a request: its encoding and its greatest length, which cuts what is longer.
///
/// Texts have two encodings, CP866 and UTF-8, and we know no rule for which one a field has: each request
/// names it. The cashier is CP866 in a document and in the reports and UTF-8 in OpenShift; a parameter goes
/// out in UTF-8 and comes back in CP866, so that a Cyrillic text is not written back as it was read. It is
/// uneven, and meant to stay so.
namespace spfhex::field {

/// Nothing but the separator.
QVariant empty();
/// The same value in each request; what it means only the device knows.
QVariant constant(int value);
/// A value that already has its form, as bytes of an answer have.
QVariant asGiven(const QVariant& value);

QVariant utf8(const QString& text);
QVariant utf8(const QString& text, int maxCharacters);
/// Empty without a text.
QVariant utf8(const std::optional<QString>& text, int maxCharacters);
QVariant cp866(const QString& text);
/// Cut behind the conversion.
QVariant cp866(const QString& text, qsizetype maxBytes);
/// The bytes of the text in CP866, each as two hexadecimal digits in small letters.
QVariant cp866Hex(const QString& text);

/// Decimal digits.
QVariant number(int value);
QVariant number(long value);
QVariant number(long long value);
/// Empty without a value.
QVariant number(const std::optional<int>& value);
/// 1 or 0.
QVariant flag(bool value);
/// Roubles with two decimals.
QVariant money(double sum);
/// Three decimals.
QVariant quantity(double count);
/// As few decimals as the value needs.
QVariant shortestQuantity(double count);

/// The device's form of a date; empty for an invalid one.
QVariant date(const QDate& date);
QVariant date(const QDateTime& moment);
QVariant time(const QDateTime& moment);

} // namespace spfhex::field
