#include "marksyntax.h"

#include "frutils.h"
#include "keyboardlayout.h"
#include "receipttr.h"
#include "showntext.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace receipt {

namespace {

using Fault = std::optional<MarkFault>;

constexpr QChar separator(0x1D);
constexpr qsizetype gtinEnd = 16;
constexpr qsizetype packLength = 29;
constexpr qsizetype longestIdentity = 18 + 20;

constexpr QStringView proofs[] = {u"91", u"92", u"93"};

// What scanners and people put where a group separator was.
constexpr const char* writtenSeparators[]
    = {"<GS>", "{GS}", "[GS]", "\\u001d", "\\u001D", "\\x1d", "\\x1D", "␝", "^]", " "};

MarkFault errorBecause(const QString& reason)
{
    return {Finding::Error, reason};
}

MarkFault warningBecause(const QString& reason)
{
    return {Finding::Warning, reason};
}

bool matches(const QString& code, const QString& pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(code).hasMatch();
}

/// The last digit of a trade number, out of those before it.
int checkDigit(QStringView digits)
{
    int sum = 0;
    // 3 and 1 in turns, 3 for the last.
    int weight = digits.size() % 2 != 0 ? 3 : 1;
    for (const QChar digit : digits) {
        sum += weight * digit.digitValue();
        weight = 4 - weight;
    }
    return (10 - sum % 10) % 10;
}

Fault tradeNumberFault(const QString& number)
{
    const int expected = checkDigit(QStringView(number).chopped(1));
    if (number.back().digitValue() == expected)
        return {};
    return errorBecause(tr("has %1 with a wrong check digit, %2 would be right: scan it again")
                            .arg(number, QString::number(expected)));
}

Fault packFault(const QString& code)
{
    return tradeNumberFault(code.left(14));
}

Fault noFault(const QString&)
{
    return {};
}

MarkFault lostSeparators(const QString& restored)
{
    return errorBecause(
        tr("has lost its group separators (character 1D); with them it is \"%1\": set the scanner to "
           "send them, in JSON they are written \\u001d")
            .arg(shownText(restored)));
}

Fault separatorFault(const QString& code)
{
    const QString restored = FrUtils::getMarkingCodeWithSeparators(QString(code).remove(separator));
    if (restored.count(separator) > code.count(separator))
        return lostSeparators(restored);
    const qsizetype length = code.section(separator, 0, 0, QString::SectionSkipEmpty).length();
    if (length <= longestIdentity)
        return {};
    return errorBecause(
        tr("has lost its group separators (character 1D): the first would be due behind a serial "
           "number of at most 20 characters, here are %1; set the scanner to send them")
            .arg(length - 18));
}

/// A second scan into the same field of a form goes on where the first has ended.
bool hasTwoScans(const QStringList& fields)
{
    return std::any_of(std::begin(proofs), std::end(proofs), [&fields](QStringView proof) {
        return std::count_if(fields.cbegin() + 1, fields.cend(), [proof](const QString& field) {
            return field.startsWith(proof);
        }) > 1;
    });
}

Fault fieldFault(const QString& code)
{
    const QStringList fields = code.split(separator);
    if (hasTwoScans(fields))
        return errorBecause(tr("has one of the fields 91, 92 and 93 twice: scan it once"));
    if (fields.contains(QString()))
        return warningBecause(tr("has a group separator that separates nothing; it is sent as it stands"));
    const bool hasProof = std::any_of(fields.cbegin() + 1, fields.cend(), [](const QString& field) {
        return std::any_of(std::begin(proofs), std::end(proofs),
            [&field](QStringView proof) { return field.startsWith(proof); });
    });
    if (hasProof)
        return {};
    return warningBecause(tr("has none of the fields 91, 92 and 93 behind a group separator (character "
                             "1D), by which a code is known to be genuine; it is sent as it stands"));
}

Fault gs1Fault(const QString& code)
{
    // A pack of tobacco whose number starts with 01 can look the same.
    if (code.length() == packLength && !packFault(code))
        return {};
    const QString plain = code.startsWith(separator) ? code.mid(1) : code;
    if (const Fault fault = tradeNumberFault(plain.mid(2, gtinEnd - 2)))
        return fault;
    if (const Fault fault = separatorFault(plain))
        return fault;
    return fieldFault(code);
}

struct Form
{
    const char* pattern;
    Fault (*fault)(const QString& code);
};

constexpr Form forms[] = {
    // EAN-8, EAN-13, ITF-14
    {"\\d{8}|\\d{13}|\\d{14}", tradeNumberFault},
    // A pack of tobacco: number, serial number of 7, price and check code of 4 characters
    {"(?!01\\d{14}21)\\d{14}[!-~]{15}", packFault},
    // Excise stamps on alcohol
    {"[0-9A-Z]{68}|[0-9A-Z]{150}", noFault},
    // The control mark of a fur product
    {"[A-Z]{2}-\\d{6}-[A-Z0-9]{10}", noFault},
    {"\\x1D?01\\d{14}21[!-~][!-~\\x1D]*", gs1Fault},
};

const Form* formOf(const QString& code)
{
    const Form* const form = std::find_if(std::begin(forms), std::end(forms),
        [&code](const Form& known) { return matches(code, QLatin1String(known.pattern)); });
    return form == std::end(forms) ? nullptr : form;
}

Fault layoutFault(const QString& code)
{
    if (!isRussianLayout(code))
        return {};
    return errorBecause(tr("was scanned in the Russian keyboard layout, in the Latin one it is \"%1\": set "
                           "the keyboard layout to English, or the scanner to a serial port")
                            .arg(shownText(inLatinLayout(code))));
}

Fault writtenSeparatorFault(const QString& code)
{
    if (code.contains(separator))
        return {};
    for (const char* const text : writtenSeparators) {
        const QString written = QString::fromUtf8(text);
        QString restored = code.trimmed();
        restored.replace(written, separator);
        const Form* const form = formOf(restored);
        if (restored.contains(separator) && form != nullptr && !form->fault(restored))
            return errorBecause(tr("has \"%1\" in place of its group separators (character 1D): set the "
                                   "scanner to send them, in JSON they are written \\u001d")
                                    .arg(written));
    }
    return {};
}

Fault additionFault(const QString& code)
{
    if (code.trimmed() != code)
        return errorBecause(tr("has blanks around it"));
    if (!matches(code, QStringLiteral("\\][A-Za-z]\\d.*|\\(01\\).*")))
        return {};
    return errorBecause(tr("is not as it stands on the goods: switch off brackets and the symbology "
                           "identifier (as ]d2 in front) of the scanner"));
}

Fault formFault(const QString& code)
{
    if (const Form* const form = formOf(code))
        return form->fault(code);
    return errorBecause(
        tr("is no marking code: a GS1 code has 01, 14 digits, 21, a serial number, and 91 and 92 or 93 "
           "behind the character 1D; short codes are EAN-8, EAN-13, ITF-14, 29 characters of a tobacco "
           "pack, 68 or 150 capitals and digits of an excise stamp, a fur mark as RU-430302-ABC1234567"));
}

constexpr Fault (*faults[])(const QString&) = {layoutFault, writtenSeparatorFault, additionFault, formFault};

} // namespace

std::optional<MarkFault> markFault(const QString& code)
{
    for (const auto faultOf : faults) {
        if (const Fault fault = faultOf(code))
            return fault;
    }
    return {};
}

QString markIdentity(const QString& code)
{
    // Some scanners put a separator in front of the code as well.
    return FrUtils::getMarkingCodeWithSeparators(code).section(separator, 0, 0, QString::SectionSkipEmpty);
}

} // namespace receipt
