#include "parserwords.h"

#include "receipttr.h"

#include <QRegularExpression>

namespace receipt {

namespace {

// Where one is a part of another, the longer one stands before it.
constexpr const char* phrases[] = {
    QT_TR_NOOP("syntax error while parsing object separator"),
    QT_TR_NOOP("syntax error while parsing object key"),
    QT_TR_NOOP("syntax error while parsing object"),
    QT_TR_NOOP("syntax error while parsing array"),
    QT_TR_NOOP("syntax error while parsing value"),
    QT_TR_NOOP("invalid literal"),
    QT_TR_NOOP("invalid number"),
    QT_TR_NOOP("invalid string"),
    QT_TR_NOOP("invalid BOM"),
    QT_TR_NOOP("ill-formed UTF-8 byte"),
    QT_TR_NOOP("missing closing quote"),
    QT_TR_NOOP("forbidden character after backslash"),
    QT_TR_NOOP("must be followed by 4 hex digits"),
    QT_TR_NOOP("'+', '-', or digit after exponent sign"),
    QT_TR_NOOP("'+', '-', or digit after exponent"),
    QT_TR_NOOP("digit after"),
    QT_TR_NOOP("exponent sign"),
    QT_TR_NOOP("'[', '{', or a literal"),
    QT_TR_NOOP("string literal"),
    QT_TR_NOOP("number literal"),
    QT_TR_NOOP("true literal"),
    QT_TR_NOOP("false literal"),
    QT_TR_NOOP("null literal"),
    QT_TR_NOOP("end of input"),
    QT_TR_NOOP("unexpected"),
    QT_TR_NOOP("expected"),
    QT_TR_NOOP("last read"),
};

QString translated(QString text)
{
    for (const char* const phrase : phrases)
        text.replace(QLatin1String(phrase), tr(phrase));
    return text;
}

} // namespace

QString parserWords(const QString& reason)
{
    // ...; last read: 'what stands there'; expected ...
    static const QRegularExpression quoting(QStringLiteral("^(.*?; last read: )('.*')(; expected .*)?$"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch parts = quoting.match(reason);
    if (!parts.hasMatch())
        return translated(reason);
    return translated(parts.captured(1)) + parts.captured(2) + translated(parts.captured(3));
}

} // namespace receipt
