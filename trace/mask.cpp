#include "trace/mask.h"

#include "trace/codepage.h"
#include "trace/commandtable.h"
#include "trace/hexframe.h"
#include "trace/signs.h"
#include "trace/tagtable.h"
#include "trace/xmldocument.h"

#include <QRegularExpression>

#include <algorithm>

namespace trace {

namespace {

// Number of the setting that holds the password, and the command that reads it.
const QByteArray passwordSetting = "31";
constexpr int passwordNumber = 31;
const QByteArray readSetting = "A1";

/// Size of what stands behind the sign of a font or a code; 0 where it is none.
qsizetype controlSize(const QByteArray& text, qsizetype start)
{
    static const QRegularExpression form(QStringLiteral("^(?:f[0-9]{7}|q[0-9]{4}|b[0-9]{2})"));
    constexpr qsizetype longest = 8;
    return form.match(QString::fromLatin1(text.mid(start, longest))).capturedLength();
}

/// Fonts and codes travel within the texts that a register prints, and stay what they are.
QByteArray maskedText(const QByteArray& text)
{
    static const QByteArray sign = "‼?";
    QByteArray result;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype found = text.indexOf(sign, at);
        const qsizetype stop = found < 0 ? text.size() : found;
        result += standInUtf8(text.mid(at, stop - at));
        at = found < 0 ? stop : stop + sign.size() + controlSize(text, stop + sign.size());
        result += text.mid(stop, at - stop);
    }
    return result;
}

/// The texts of a node with the markup between them left as it is.
QByteArray maskedTexts(const QByteArray& content, bool isEscaped)
{
    const QByteArray begin = isEscaped ? "&lt;" : "<";
    const QByteArray end = isEscaped ? "&gt;" : ">";
    QByteArray result;
    for (qsizetype at = 0; at < content.size();) {
        const qsizetype found = content.indexOf(begin, at);
        const qsizetype stop = found < 0 ? content.size() : found;
        result += maskedText(content.mid(at, stop - at));
        // CDATA ends with the sign that ends markup, and begins with none.
        static const QByteArray section = "![CDATA[";
        const bool isSection = content.mid(stop + begin.size(), section.size()) == section;
        const qsizetype close = content.indexOf(end, stop);
        if (isSection)
            at = stop + begin.size() + section.size();
        else
            at = close < 0 ? content.size() : close + end.size();
        result += content.mid(stop, at - stop);
    }
    return result;
}

/// Where the node ends whose content begins there: nodes of the same name may stand within.
qsizetype contentEnd(const QByteArray& bytes, qsizetype start, bool isEscaped)
{
    const QByteArray open = isEscaped ? "&lt;pa" : "<pa";
    const QByteArray close = isEscaped ? "&lt;/pa" : "</pa";
    int depth = 1;
    for (qsizetype at = start;;) {
        const qsizetype closing = bytes.indexOf(close, at);
        const qsizetype opening = bytes.indexOf(open, at);
        if (closing < 0)
            return bytes.size();
        const bool isOpening = opening >= 0 && opening < closing;
        const qsizetype tagEnd = isOpening ? bytes.indexOf(isEscaped ? "&gt;" : ">", opening) : -1;
        const bool isEmptyNode = tagEnd > 0 && bytes.at(tagEnd - 1) == '/';
        depth += isOpening ? (isEmptyNode ? 0 : 1) : -1;
        if (depth == 0)
            return closing;
        at = (isOpening ? opening : closing) + open.size();
    }
}

/// Of a start tag of the tree: the name of its node.
QString nodeName(const QByteArray& tag)
{
    static const QRegularExpression form(QStringLiteral("\\sn\\s*=\\s*(?:[\"']|&quot;|&apos;)([^\"'&]*)"));
    return form.match(QString::fromUtf8(tag)).captured(1);
}

/// Data may come as CDATA, or as text in which the signs of the markup are escaped.
QByteArray maskedTree(const QByteArray& bytes, bool isEscaped)
{
    const QByteArray open = isEscaped ? "&lt;pa" : "<pa";
    const QByteArray end = isEscaped ? "&gt;" : ">";
    QByteArray result;
    qsizetype at = 0;
    for (qsizetype tag = bytes.indexOf(open); tag >= 0; tag = bytes.indexOf(open, at)) {
        const qsizetype close = bytes.indexOf(end, tag);
        if (close < 0)
            break;
        const qsizetype content = close + end.size();
        result += bytes.mid(at, content - at);
        at = content;
        const bool isEmptyNode = bytes.at(close - 1) == '/';
        if (isEmptyNode || !tagtable::isPersonal(nodeName(bytes.mid(tag, close - tag))))
            continue;
        const qsizetype stop = contentEnd(bytes, content, isEscaped);
        result += maskedTexts(bytes.mid(content, stop - content), isEscaped);
        at = stop;
    }
    return result + bytes.mid(at);
}

} // namespace

QByteArray Mask::masked(const Frame& frame)
{
    const QByteArray& bytes = frame.bytes;
    if (bytes.startsWith(startOfText))
        return maskedHex(frame);
    // Wide letters hide the tags that are looked for.
    if (xmldocument::isDocument(bytes) && !bytes.contains('\0'))
        return maskedTree(maskedTree(bytes, false), true);
    // A picture tells nothing of people; what else is no frame may be a part of one.
    return bytes.startsWith(escape) ? bytes : standInCp866(bytes);
}

QByteArray Mask::maskedHex(const Frame& frame)
{
    using namespace hexframe;
    const QByteArray password = frame.bytes.mid(passwordPlace.start, passwordPlace.size);
    const bool isEcho = frame.direction == Direction::ToHost && password == m_password;
    const Direction direction = isEcho ? Direction::ToRegister : frame.direction;
    const HexFrame parts = parse(frame.bytes, direction);
    QByteArray question = parts.fields.value(0);
    // A register that forgives takes it with a sign or zeros before it, too.
    if (question.toInt() == passwordNumber)
        question = passwordSetting;
    QByteArray result = frame.bytes;
    if (direction == Direction::ToRegister) {
        m_password = password;
        result.replace(passwordPlace.start, password.size(), standInCp866(password));
        if (parts.command == readSetting && question == passwordSetting)
            m_secretIds.insert(parts.id);
        else
            m_secretIds.remove(parts.id);
    } else {
        question = m_secretIds.contains(parts.id) ? passwordSetting : QByteArray();
    }
    return withCheckOf(maskedHexFields(result, direction, question), frame.bytes);
}

QByteArray Mask::maskedHexFields(
    const QByteArray& bytes, Direction direction, const QByteArray& question) const
{
    const HexFrame parts = hexframe::parse(bytes, direction);
    const CommandRow* const command = commandtable::hexCommand(parts.command, question);
    const QList<hexframe::Place> places = hexframe::fieldPlaces(bytes, direction);
    const QList<FieldRow> rows = commandtable::hexFields(command, direction, places.size());
    QByteArray result = bytes;
    for (qsizetype index = 0; index < places.size(); ++index) {
        const hexframe::Place place = places.at(index);
        const QByteArray field = bytes.mid(place.start, place.size);
        const FieldRow& row = rows.at(index);
        if (row.isPersonal)
            result.replace(place.start, place.size, row.isUtf8 ? standInUtf8(field) : standInCp866(field));
    }
    return result;
}

} // namespace trace
