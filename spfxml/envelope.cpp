#include "envelope.h"

#include "names.h"
#include "xmlwriter.h"

#include <xmlutils.h>

#include <QXmlStreamReader>

namespace spfxml::envelope {

namespace {

// A device must not eat the stack of the host: a tree is walked and freed level by level. No register comes
// near that depth.
constexpr int deepestElement = 256;

template <typename Text>
bool isTooDeep(const Text& text)
{
    // Most answers are too short for it. A level takes a bracket, or an entity that holds one.
    using Character = typename Text::value_type;
    if (text.count(Character('<')) + text.count(Character('&')) <= deepestElement)
        return false;
    QXmlStreamReader reader(text);
    // As the document is read: or a prefix that nobody declared would end the count, but not the document.
    reader.setNamespaceProcessing(false);
    for (int depth = 0; !reader.atEnd();) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : 0;
        depth -= token == QXmlStreamReader::EndElement ? 1 : 0;
        if (depth > deepestElement)
            return true;
    }
    return false;
}

// From Qt 6.5 on the answer is a record, and Qt 6.8 warns of the three pointers.
template <typename Text>
bool setContent(QDomDocument& document, const Text& text, Flaw& flaw)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
    return document.setContent(text, &flaw.reason, &flaw.line, &flaw.column);
#else
    const QDomDocument::ParseResult result = document.setContent(text);
    if (!result)
        flaw
            = {static_cast<int>(result.errorLine), static_cast<int>(result.errorColumn), result.errorMessage};
    return static_cast<bool>(result);
#endif
}

template <typename Text>
std::optional<QDomDocument> parseText(const Text& text, Flaw& flaw)
{
    QDomDocument document;
    flaw.reason = QStringLiteral("слишком глубокая вложенность");
    if (isTooDeep(text) || !setContent(document, text, flaw))
        return std::nullopt;
    return document;
}

void writeBody(XmlWriter& writer, const Request& request)
{
    writer.open(names::request::body);
    writer.element(names::request::protocolLabel, u"OFDFNARMUKM");
    writer.element(names::request::protocolVersion, request.protocolVersion);
    writer.element(names::request::id, QString::fromUtf8(request.id));
    writer.element(names::request::ffdVersion, u"4");
    writer.element(names::request::containerVersion, u"1");
    writer.element(names::request::time, request.time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")));
    writer.element(names::request::command, QString::number(request.command));
    writer.close();
}

QString field(const QDomDocument& answer, const QString& tag)
{
    return xmlutils::getValueByTag(answer, tag, 0);
}

std::optional<int> number(const QDomDocument& answer, const QString& tag, BadField* badField)
{
    const QString text = field(answer, tag);
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    if (isNumber)
        return value;
    *badField = {tag, text};
    return std::nullopt;
}

} // namespace

QByteArray build(const Request& request)
{
    XmlWriter writer;
    writer.declaration();
    writer.open(names::request::root);
    writeBody(writer, request);
    writer.open(names::request::data);
    writer.cdata(request.data);
    writer.close();
    writer.close();
    return writer.result().toUtf8();
}

bool isWhole(const QByteArray& answer, const QByteArray& requestId)
{
    return answer.contains(names::answer::end) && answer.contains(requestId);
}

std::optional<QDomDocument> parse(const QByteArray& text, Flaw* flaw)
{
    Flaw unwanted;
    return parseText(text, flaw == nullptr ? unwanted : *flaw);
}

std::optional<QDomDocument> parse(const QString& text)
{
    Flaw unwanted;
    return parseText(text, unwanted);
}

std::optional<Verdict> verdict(const QDomDocument& answer, BadField* badField)
{
    const QString result = field(answer, names::answer::result);
    if (result.isEmpty()) {
        *badField = {names::answer::result, result};
        return std::nullopt;
    }
    if (result == QLatin1String("0"))
        return Verdict{true, 0, 0, {}};
    const std::optional<int> category = number(answer, names::answer::errorCategory, badField);
    if (!category)
        return std::nullopt;
    const std::optional<int> code = number(answer, names::answer::errorCode, badField);
    if (!code)
        return std::nullopt;
    return Verdict{false, *category, *code, field(answer, names::answer::errorDescription)};
}

QString data(const QDomDocument& answer)
{
    return field(answer, names::answer::data);
}

} // namespace spfxml::envelope
