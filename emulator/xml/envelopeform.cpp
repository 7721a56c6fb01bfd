#include "xml/envelopeform.h"

#include "xml/envelope.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace emulator::xmlenvelopeform {

namespace {

constexpr char16_t byteOrderMark = 0xFEFF;

bool matches(const QString& text, const char* pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(QLatin1String(pattern)))
        .match(text)
        .hasMatch();
}

// Blank from there up to the text, which must be there.
bool isNext(const QString& document, qsizetype from, const QString& text)
{
    const qsizetype at = document.indexOf(text, from);
    return from > 0 && at >= 0 && document.mid(from, at - from).trimmed().isEmpty();
}

bool hasMark(const QString& document)
{
    return document.startsWith(QChar(byteOrderMark));
}

bool hasNoDeclaration(const QString& document)
{
    return !document.startsWith(QStringLiteral("<?xml"));
}

bool isOfAnotherKind(const QString& document)
{
    return !matches(document.left(document.indexOf(QLatin1Char('>')) + 1),
        R"(<\?xml\s+version=(["'])1\.0\1\s+encoding=(["'])(?i)utf-8\2\s*\?>)");
}

bool hasDocumentType(const QString& document)
{
    return document.contains(QStringLiteral("<!DOCTYPE"));
}

bool isNoSection(const QString& document)
{
    const QString begin = QStringLiteral("<![CDATA[");
    const QString end = QStringLiteral("]]>");
    const qsizetype element = document.indexOf(QStringLiteral("<RequestData"));
    return document.count(begin) != 1 || document.count(end) != 1
        || !isNext(document, document.indexOf(QLatin1Char('>'), element) + 1, begin)
        || !isNext(document, document.indexOf(end) + end.size(), QStringLiteral("</RequestData"));
}

// Without parameters there is nothing between the brackets.
bool hasBlanksAlone(const QString& document)
{
    static const QRegularExpression blanks(QStringLiteral("<!\\[CDATA\\[\\s+\\]\\]>"));
    return document.contains(blanks);
}

bool hasInnerDeclaration(const QString& document)
{
    const QString begin = QStringLiteral("<![CDATA[");
    return isNext(document, document.indexOf(begin) + begin.size(), QStringLiteral("<?xml"));
}

bool hasComment(const QString& document)
{
    return document.contains(QStringLiteral("<!--"));
}

bool hasInstruction(const QString& document)
{
    return document.count(QStringLiteral("<?")) > 1;
}

struct TextRule
{
    bool (*isBroken)(const QString& document);
    const char* words;
};

// The parameters are escaped and cannot hold what is sought here, so the text is looked at as a whole.
constexpr TextRule textRules[] = {
    {&hasMark, "a byte order mark before the document"},
    {&hasNoDeclaration, "no XML declaration"},
    {&isOfAnotherKind, "the declaration is not that of XML 1.0 in UTF-8"},
    {&hasDocumentType, "DOCTYPE"},
    {&isNoSection, "RequestData is not one CDATA section"},
    {&hasBlanksAlone, "blanks in the place of parameters"},
    {&hasInnerDeclaration, "a declaration in the parameters"},
    {&hasComment, "a comment"},
    {&hasInstruction, "a processing instruction"},
};

struct BodyRule
{
    const char* element;
    const char* pattern;
    XmlVerdict (*verdict)(const QString& words);
    const char* words;
};

constexpr BodyRule bodyRules[] = {
    {"ProtocolVersion", "[1-9][0-9]*\\.[0-9]+", &XmlVerdict::badVersion, "no version"},
    {"RequestId", "\\{[0-9A-Fa-f]{8}-(?:[0-9A-Fa-f]{4}-){3}[0-9A-Fa-f]{12}\\}", &XmlVerdict::badRequest,
        "no UUID of 38 characters with its braces"},
    {"Command", "[1-9][0-9]*", &XmlVerdict::badRequest, "no number of a command"},
};

const QStringList& elements()
{
    static const QStringList names = QStringList{QStringLiteral("ArmRequest"), QStringLiteral("RequestBody")}
        + xmlenvelope::bodyNames() + QStringList{QStringLiteral("RequestData")};
    return names;
}

XmlVerdict checkText(const QByteArray& document)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(document);
    if (decoder.hasError())
        return XmlVerdict::badRequest(QStringLiteral("bytes that are not UTF-8"));
    const auto* const broken = std::find_if(std::begin(textRules), std::end(textRules),
        [&text](const TextRule& rule) { return rule.isBroken(text); });
    return broken == std::end(textRules) ? XmlVerdict()
                                         : XmlVerdict::badRequest(QLatin1String(broken->words));
}

XmlVerdict checkValue(const QString& element, const QString& value)
{
    const auto* const rule = std::find_if(std::begin(bodyRules), std::end(bodyRules),
        [&element](const BodyRule& candidate) { return element == QLatin1String(candidate.element); });
    if (rule == std::end(bodyRules) || matches(value, rule->pattern))
        return {};
    return rule->verdict(QStringLiteral("%1: %2").arg(element, QLatin1String(rule->words)));
}

// Begins at the element that is to come next and does not look into the parameters.
XmlVerdict checkElement(QXmlStreamReader& reader, qsizetype place)
{
    const QString name = reader.qualifiedName().toString();
    const QString expected = elements().value(place);
    if (expected.isEmpty())
        return XmlVerdict::badRequest(QStringLiteral("%1 behind the last element").arg(name));
    if (name != expected)
        return XmlVerdict::badRequest(QStringLiteral("%1 before %2").arg(name, expected));
    if (!reader.attributes().isEmpty() || !reader.namespaceDeclarations().isEmpty())
        return XmlVerdict::badRequest(QStringLiteral("attributes of %1").arg(name));
    constexpr qsizetype firstLeaf = 2;
    return place < firstLeaf ? XmlVerdict() : checkValue(name, reader.readElementText());
}

XmlVerdict checkElements(const QByteArray& document)
{
    QXmlStreamReader reader(document);
    for (qsizetype place = 0; !reader.atEnd();) {
        reader.readNext();
        if (reader.isCharacters() && !reader.isWhitespace())
            return XmlVerdict::badRequest(QStringLiteral("text between the elements"));
        if (!reader.isStartElement())
            continue;
        if (const XmlVerdict verdict = checkElement(reader, place++); !verdict.isGood())
            return verdict;
    }
    return {};
}

} // namespace

XmlVerdict check(const QByteArray& document)
{
    const XmlVerdict verdict = checkText(document);
    return verdict.isGood() ? checkElements(document) : verdict;
}

} // namespace emulator::xmlenvelopeform
