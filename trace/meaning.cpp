#include "trace/meaning.h"

#include "trace/tracetr.h"

#include <QJsonArray>

namespace trace {

namespace {

QString kindName(Meaning::Kind kind)
{
    switch (kind) {
    case Meaning::Kind::Request:
        return QStringLiteral("request");
    case Meaning::Kind::Answer:
        return QStringLiteral("answer");
    case Meaning::Kind::Enquiry:
        return QStringLiteral("ENQ");
    case Meaning::Kind::Acknowledge:
        return QStringLiteral("ACK");
    case Meaning::Kind::Picture:
        return QStringLiteral("picture");
    case Meaning::Kind::Echo:
        return QStringLiteral("echo");
    case Meaning::Kind::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

/// On one line, whatever it holds, and with quotes where its end could not be seen otherwise.
QString shown(const QString& value)
{
    QString text;
    bool isPlain = !value.isEmpty();
    for (const QChar letter : value) {
        if (letter == QLatin1Char('\n'))
            text += QStringLiteral("\\n");
        else if (letter == QLatin1Char('"') || letter == QLatin1Char('\\'))
            text += QLatin1Char('\\') + letter;
        else if (letter.isPrint())
            text += letter;
        else
            text += QStringLiteral("\\u%1").arg(letter.unicode(), 4, 16, QLatin1Char('0'));
        isPlain = isPlain && (letter.isLetterOrNumber() || QStringLiteral(".,-+:_@/").contains(letter));
    }
    return isPlain ? text : QLatin1Char('"') + text + QLatin1Char('"');
}

/// Of a field without a name: which one it is.
QString nameOf(const QList<Meaning::Field>& fields, qsizetype index)
{
    const QString name = fields.at(index).name;
    return name.isEmpty() ? QStringLiteral("field%1").arg(index + 1) : name;
}

QString takenText(qint64 microseconds)
{
    constexpr double perMillisecond = 1000;
    // untranslated: a trace is in English
    return QStringLiteral("%1 ms").arg(static_cast<double>(microseconds) / perMillisecond, 0, 'f', 3);
}

bool isSame(const Meaning::Field& one, const Meaning::Field& other)
{
    return one.name == other.name && one.type == other.type && one.isTime == other.isTime
        && (one.isTime || one.value == other.value);
}

QString told(const QString& name, const QString& given, const QString& expected)
{
    return tr("%1: %2, expected %3").arg(name, shown(given), shown(expected));
}

} // namespace

bool Meaning::isLike(const Meaning& other) const
{
    return differencesFrom(other).isEmpty();
}

QString Meaning::title() const
{
    QStringList words;
    if (!protocol.isEmpty())
        words.append(protocol);
    const bool hasCommand = kind == Kind::Request || kind == Kind::Answer || kind == Kind::Echo;
    if (!hasCommand || kind == Kind::Echo)
        words.append(kindName(kind));
    if (hasCommand)
        words.append(
            name.isEmpty() ? QStringLiteral("(%1)").arg(code) : QStringLiteral("%1(%2)").arg(name, code));
    if (kind == Kind::Answer && fault.isEmpty()) // untranslated: a trace is in English
        words.append(error.isEmpty() ? QStringLiteral("ok") : QStringLiteral("error ") + error);
    if (!fault.isEmpty())
        words.append(QStringLiteral("BAD: ") + fault);
    return words.join(QLatin1Char(' '));
}

QStringList Meaning::fieldTexts() const
{
    QStringList texts;
    for (qsizetype index = 0; index < fields.size(); ++index) {
        const Field& field = fields.at(index);
        if (!field.value.isEmpty() || (!field.name.isEmpty() && protocol == QStringLiteral("XML")))
            texts.append(nameOf(fields, index) + QLatin1Char('=') + shown(field.value));
    }
    return texts;
}

QString Meaning::text() const
{
    QStringList words{title()};
    if (!id.isEmpty())
        words.append(QStringLiteral("id=") + id);
    words += fieldTexts();
    if (taken)
        words.append(takenText(*taken));
    return words.join(QLatin1Char(' '));
}

QStringList Meaning::differencesFrom(const Meaning& expected) const
{
    if (kind != expected.kind || protocol != expected.protocol || code != expected.code
        || error != expected.error || fault != expected.fault)
        return {tr("%1, expected %2").arg(title(), expected.title())};
    QStringList lines;
    if (envelope != expected.envelope)
        lines.append(told(QStringLiteral("envelope"), envelope, expected.envelope));
    for (qsizetype index = 0; index < qMax(fields.size(), expected.fields.size()); ++index) {
        if (index >= fields.size())
            lines.append(tr("%1: missing").arg(nameOf(expected.fields, index)));
        else if (index >= expected.fields.size())
            lines.append(tr("%1: too much").arg(nameOf(fields, index)));
        else if (!isSame(fields.at(index), expected.fields.at(index)))
            lines.append(fields.at(index).name == expected.fields.at(index).name
                    ? told(nameOf(fields, index), fields.at(index).value, expected.fields.at(index).value)
                    : tr("%1, expected %2").arg(nameOf(fields, index), nameOf(expected.fields, index)));
    }
    return lines;
}

Meaning Meaning::withoutPeople() const
{
    Meaning rest = *this;
    if (protocol == QStringLiteral("XML"))
        rest.fields.removeIf([](const Field& field) { return field.isPersonal; });
    for (Field& field : rest.fields) {
        if (field.isPersonal)
            field.value.clear();
    }
    return rest;
}

QJsonObject Meaning::json() const
{
    QJsonArray list;
    for (qsizetype index = 0; index < fields.size(); ++index)
        list.append(QJsonObject{{QStringLiteral("name"), nameOf(fields, index)},
            {QStringLiteral("value"), fields.at(index).value}});
    QJsonObject json{{QStringLiteral("kind"), kindName(kind)}, {QStringLiteral("fields"), list}};
    const auto put = [&json](const char* key, const QString& value) {
        json.insert(QLatin1String(key), value.isEmpty() ? QJsonValue() : QJsonValue(value));
    };
    put("protocol", protocol);
    put("id", id);
    put("code", code);
    put("name", name);
    put("error", error);
    put("fault", fault);
    json.insert(QStringLiteral("microseconds"), taken ? QJsonValue(*taken) : QJsonValue());
    return json;
}

} // namespace trace
