#include "xml/envelope.h"

#include <QMap>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace emulator::xmlenvelope {

namespace {

const QString label = QStringLiteral("OFDFNARMUKM");
const QString newestVersion = QStringLiteral("13.0");

using Body = QMap<QString, QString>;

void readBody(QXmlStreamReader& reader, Body& body)
{
    while (reader.readNextStartElement()) {
        const QString name = reader.name().toString();
        if (!bodyNames().contains(name) || body.contains(name))
            reader.raiseError(QStringLiteral("%1 is unknown or twice").arg(name));
        body[name] = reader.readElementText();
    }
}

// The parameters come as character data, never as elements of the envelope or as escaped text.
QString readData(QXmlStreamReader& reader)
{
    QString data;
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::EndElement) {
        if (reader.isCDATA())
            data += reader.text();
        else if (!reader.isWhitespace() && !reader.hasError())
            reader.raiseError(QStringLiteral("RequestData is no CDATA section"));
    }
    return data;
}

std::optional<QString> readEnvelope(const QByteArray& document, Body& body, QString& error)
{
    QXmlStreamReader reader(document);
    std::optional<QString> data;
    if (!reader.readNextStartElement() || reader.name() != QLatin1String("ArmRequest")) {
        error = reader.hasError() ? reader.errorString() : QStringLiteral("no ArmRequest");
        return std::nullopt;
    }
    while (reader.readNextStartElement()) {
        if (reader.name() == QLatin1String("RequestBody") && body.isEmpty())
            readBody(reader, body);
        else if (reader.name() == QLatin1String("RequestData") && !data)
            data = readData(reader);
        else
            reader.raiseError(QStringLiteral("%1 is unknown or twice").arg(reader.name()));
    }
    while (!reader.atEnd())
        reader.readNext();
    error = reader.hasError() ? reader.errorString() : QStringLiteral("no RequestData");
    return reader.hasError() ? std::nullopt : data;
}

bool isVersion(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^\\d{1,3}\\.\\d{1,3}$"));
    return form.match(text).hasMatch() && text.toDouble() <= newestVersion.toDouble();
}

XmlVerdict checkBody(const Body& body)
{
    for (const QString& name : bodyNames()) {
        if (body.value(name).isEmpty())
            return XmlVerdict::badRequest(QStringLiteral("no %1").arg(name));
    }
    if (body.value(QStringLiteral("ProtocolLabel")) != label)
        return XmlVerdict::badRequest(QStringLiteral("ProtocolLabel is not %1").arg(label));
    if (!isVersion(body.value(QStringLiteral("ProtocolVersion"))))
        return XmlVerdict::badVersion(QStringLiteral("ProtocolVersion is none up to %1").arg(newestVersion));
    if (body.value(QStringLiteral("msgFFDVer")) != QStringLiteral("4")
        || body.value(QStringLiteral("msgContVer")) != QStringLiteral("1"))
        return XmlVerdict::badVersion(QStringLiteral("msgFFDVer is not 4, or msgContVer not 1"));
    if (!QDateTime::fromString(body.value(QStringLiteral("DateTime")), xmlDateTimeFormat).isValid())
        return XmlVerdict::badRequest(QStringLiteral("DateTime: no date with time"));
    return {};
}

// The text in UTF-16, without the zero that may stand before or behind it, whatever the order of its bytes.
QByteArray widened(const QByteArray& text)
{
    QByteArray wide;
    for (const char letter : text)
        wide.append(letter).append('\0');
    return wide.chopped(1);
}

// The id of a request that no XML reader needs to read.
QString idWithin(QByteArray document)
{
    static const QRegularExpression form(QStringLiteral("<RequestId>([^<]*)</RequestId>"));
    return form.match(QString::fromLatin1(document.replace('\0', ""))).captured(1);
}

} // namespace

const QStringList& bodyNames()
{
    static const QStringList names{QStringLiteral("ProtocolLabel"), QStringLiteral("ProtocolVersion"),
        QStringLiteral("RequestId"), QStringLiteral("msgFFDVer"), QStringLiteral("msgContVer"),
        QStringLiteral("DateTime"), QStringLiteral("Command")};
    return names;
}

qsizetype endOfRequest(const QByteArray& bytes, qsizetype from)
{
    static const QByteArray wideEnd = widened(requestEnd);
    const qsizetype narrow = bytes.indexOf(requestEnd, from);
    if (narrow >= 0)
        return narrow + requestEnd.size();
    const qsizetype wide = bytes.indexOf(wideEnd, from);
    return wide < 0 ? -1 : wide + wideEnd.size();
}

XmlVerdict read(const QByteArray& document, XmlRequest& request)
{
    static const QByteArray wideRoot = widened("<ArmRequest");
    if (document.contains(wideRoot)) {
        request.id = idWithin(document);
        return XmlVerdict::badRequest(QStringLiteral("UTF-16 instead of UTF-8"));
    }
    Body body;
    QString error;
    const std::optional<QString> data = readEnvelope(document, body, error);
    request.id = body.value(QStringLiteral("RequestId"));
    if (!data)
        return XmlVerdict::badRequest(error);
    if (const XmlVerdict verdict = checkBody(body); !verdict.isGood())
        return verdict;
    bool ok = false;
    request.command = body.value(QStringLiteral("Command")).toInt(&ok);
    if (!ok)
        return XmlVerdict::badRequest(QStringLiteral("Command: no number"));
    if (data->trimmed().isEmpty())
        return {};
    request.data = XmlNode::parse(*data, error);
    return request.data ? XmlVerdict() : XmlVerdict::badData(error);
}

QByteArray answer(const QString& id, int command, const QDateTime& time, const XmlAnswer& answer)
{
    QByteArray document;
    QXmlStreamWriter writer(&document);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("ArmResponse"));
    writer.writeStartElement(QStringLiteral("ResponseBody"));
    writer.writeTextElement(QStringLiteral("ProtocolLabel"), label);
    writer.writeTextElement(QStringLiteral("ProtocolVersion"), newestVersion);
    writer.writeTextElement(QStringLiteral("RequestId"), id);
    writer.writeTextElement(QStringLiteral("DateTime"), time.toString(xmlDateTimeFormat));
    writer.writeTextElement(QStringLiteral("Command"), QString::number(command));
    const XmlVerdict& verdict = answer.verdict;
    writer.writeTextElement(
        QStringLiteral("Result"), verdict.isGood() ? QStringLiteral("0") : QStringLiteral("1"));
    writer.writeTextElement(QStringLiteral("ErrorCategory"), QString::number(verdict.category));
    writer.writeTextElement(QStringLiteral("ErrorCode"), QString::number(verdict.code));
    writer.writeTextElement(QStringLiteral("ErrorDescription"), verdict.description);
    writer.writeEndElement();
    writer.writeStartElement(QStringLiteral("ResponseData"));
    writer.writeCDATA(answer.data ? answer.data->toText() : QString());
    writer.writeEndElement();
    writer.writeEndElement();
    return document;
}

} // namespace emulator::xmlenvelope
