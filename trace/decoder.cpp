#include "trace/codepage.h"
#include "trace/commandtable.h"
#include "trace/hexframe.h"
#include "trace/meaning.h"
#include "trace/signs.h"
#include "trace/xmldocument.h"

#include <algorithm>
#include <optional>

namespace trace {

namespace {

// In place of a request that was not seen: no question has that number.
const QByteArray unknownField = "?";

QString fieldText(const QByteArray& bytes, const FieldRow& row)
{
    const QString text = QString::fromUtf8(bytes);
    const bool isUtf8 = row.isUtf8 && text.toUtf8() == bytes;
    return isUtf8 ? text : fromCp866(bytes);
}

QList<Meaning::Field> fieldsOf(const HexFrame& frame, const CommandRow* command)
{
    const QList<FieldRow> rows = commandtable::hexFields(command, frame.direction, frame.fields.size());
    QList<Meaning::Field> fields;
    for (qsizetype index = 0; index < frame.fields.size(); ++index) {
        const FieldRow& row = rows.at(index);
        fields.append({row.name, fieldText(frame.fields.at(index), row), {}, row.isTime, row.isPersonal});
    }
    return fields;
}

QString hexFault(const HexFrame& frame)
{
    if (!frame.isWhole)
        return QStringLiteral("broken off");
    return frame.isSound ? QString() : QStringLiteral("check value");
}

QString hexError(const QByteArray& code)
{
    bool isNumber = false;
    const int number = code.toInt(&isNumber, 16);
    if (isNumber && number == 0)
        return {};
    const QString text = isNumber ? commandtable::hexErrorText(number) : QString();
    const QString shownCode = QString::fromLatin1(code);
    return text.isEmpty() ? shownCode : QStringLiteral("%1 \"%2\"").arg(shownCode, text);
}

QString xmlError(const XmlDocument& document)
{
    if (document.result == QStringLiteral("0"))
        return {};
    return QStringLiteral("%1.%2 \"%3\"")
        .arg(document.errorCategory, document.errorCode, document.errorDescription.simplified());
}

bool isTimeType(const QString& type)
{
    return type == QStringLiteral("5") || type == QStringLiteral("8");
}

Meaning signMeaning(Meaning::Kind kind)
{
    Meaning meaning;
    meaning.kind = kind;
    meaning.protocol = QStringLiteral("HEX");
    return meaning;
}

/// What is no frame is told by its bytes, so that two of them are alike when these are.
Meaning bytesMeaning(Meaning::Kind kind, const QByteArray& bytes)
{
    Meaning meaning;
    meaning.kind = kind;
    if (kind == Meaning::Kind::Picture)
        meaning.protocol = QStringLiteral("HEX");
    constexpr qsizetype shownBytes = 64;
    const qsizetype hidden = std::max<qsizetype>(0, bytes.size() - shownBytes);
    QString text = QString::fromLatin1(bytes.left(shownBytes).toHex(' '));
    if (hidden > 0)
        text += QStringLiteral(" and %1 bytes (%2)")
                    .arg(hidden)
                    .arg(qChecksum(bytes), 4, 16, QLatin1Char('0'));
    meaning.fields.append({QStringLiteral("bytes"), text, {}});
    return meaning;
}

} // namespace

Meaning Decoder::decode(const Frame& frame)
{
    const QByteArray& bytes = frame.bytes;
    if (frame.direction == Direction::ToHost && bytes.startsWith(startOfText) && bytes == m_lastRequest)
        return decodeEcho(frame);
    if (bytes.startsWith(startOfText)) {
        // Neither ENQ nor a picture keeps the line from sending the request back.
        if (frame.direction == Direction::ToRegister)
            m_lastRequest = bytes;
        return decodeHex(frame);
    }
    if (xmldocument::isDocument(bytes))
        return decodeXml(frame);
    if (bytes == QByteArray(1, enquiry))
        return signMeaning(Meaning::Kind::Enquiry);
    if (bytes == QByteArray(1, acknowledge))
        return signMeaning(Meaning::Kind::Acknowledge);
    const bool isPicture = frame.direction == Direction::ToRegister && bytes.startsWith(escape);
    return bytesMeaning(isPicture ? Meaning::Kind::Picture : Meaning::Kind::Unknown, bytes);
}

std::optional<Decoder::Asked> Decoder::asked(const QString& id) const
{
    const auto found = m_asked.constFind(id);
    return found == m_asked.cend() ? std::nullopt : std::optional<Asked>(*found);
}

Meaning Decoder::decodeEcho(Frame frame)
{
    const QHash<QString, Asked> known = m_asked;
    frame.direction = Direction::ToRegister;
    Meaning meaning = decodeHex(frame);
    meaning.kind = Meaning::Kind::Echo;
    m_asked = known;
    return meaning;
}

Meaning Decoder::decodeHex(const Frame& frame)
{
    const HexFrame parts = hexframe::parse(frame.bytes, frame.direction);
    const bool isRequest = frame.direction == Direction::ToRegister;
    Meaning meaning;
    meaning.kind = isRequest ? Meaning::Kind::Request : Meaning::Kind::Answer;
    meaning.protocol = QStringLiteral("HEX");
    meaning.id = QString::fromLatin1(QByteArray(1, parts.id).toHex().toUpper());
    meaning.code = QString::fromLatin1(parts.command);
    if (isRequest)
        m_asked[meaning.id] = {parts.fields.value(0), frame.microseconds};
    const std::optional<Asked> request = asked(meaning.id);
    const CommandRow* const command
        = commandtable::hexCommand(parts.command, request ? request->firstField : unknownField);
    if (command != nullptr) {
        meaning.name = command->name;
        meaning.isQuestion = command->isQuestion;
    }
    meaning.fields = fieldsOf(parts, command);
    meaning.fault = hexFault(parts);
    if (!isRequest) {
        meaning.error = hexError(parts.answerCode);
        if (request)
            meaning.taken = frame.microseconds - request->microseconds;
    }
    return meaning;
}

Meaning Decoder::decodeXml(const Frame& frame)
{
    const XmlDocument document = xmldocument::parse(frame.bytes);
    Meaning meaning;
    meaning.kind = document.isRequest ? Meaning::Kind::Request : Meaning::Kind::Answer;
    meaning.protocol = QStringLiteral("XML");
    meaning.id = document.id;
    meaning.code = document.command < 0 ? QString() : QString::number(document.command);
    if (const CommandRow* const command = commandtable::xmlCommand(document.command)) {
        meaning.name = command->name;
        meaning.isQuestion = command->isQuestion;
    }
    for (const XmlDocument::Leaf& leaf : document.leaves)
        meaning.fields.append({leaf.path, leaf.value, leaf.type, isTimeType(leaf.type), leaf.isPersonal});
    meaning.envelope = document.envelope;
    meaning.fault = document.fault;
    if (document.isRequest) {
        // Ids never come again, and a register may be at work for months.
        constexpr qsizetype mostRemembered = 1000;
        if (m_asked.size() > mostRemembered)
            m_asked.clear();
        m_asked[meaning.id] = {{}, frame.microseconds};
    } else {
        meaning.error = xmlError(document);
        if (const std::optional<Asked> request = asked(meaning.id))
            meaning.taken = frame.microseconds - request->microseconds;
    }
    return meaning;
}

} // namespace trace
