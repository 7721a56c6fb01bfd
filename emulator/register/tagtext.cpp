#include "register/tagtext.h"

#include "register/documentname.h"
#include "register/names.h"
#include "register/parameterstore.h"
#include "register/tags.h"
#include "register/tagtable.h"

#include <QJsonArray>

namespace emulator::tagtext {

namespace {

// With the names that rates have from the factory.
QString words(const QString& name, const QJsonValue& value)
{
    static const ParameterStore parameters;
    if (name == tag::settlement)
        return documentnames::settlement(value.toInt());
    if (name == tag::taxSystem || name == tag::taxSystems)
        return names::taxSystems(value.toInt());
    return name == tag::taxRate ? names::taxRate(parameters, value.toInt()) : QString();
}

QString nameOf(const QString& tag)
{
    return QString::fromUtf8(tagtable::row(tag.toInt()).name);
}

// What is there once is a list of one.
QJsonArray all(const QJsonValue& value)
{
    return value.isArray() ? value.toArray() : QJsonArray{value};
}

// Codes of marked goods have separators in them, which a terminal would not show.
QString visible(QString text)
{
    constexpr ushort blank = 0x20;
    constexpr ushort pictures = 0x2400;
    for (QChar& character : text) {
        if (character.unicode() < blank)
            character = QChar(pictures + character.unicode());
    }
    return text;
}

QString valueText(const QString& tag, const QJsonValue& value)
{
    const QString meaning = words(tag, value);
    const QString text = visible(value.toVariant().toString());
    return meaning.isEmpty() ? text : QStringLiteral("%1 (%2)").arg(text, meaning);
}

QStringList lines(const QJsonObject& requisites, int depth);

QStringList lines(const QString& tag, const QJsonValue& value, int depth)
{
    const QString head = QString(2 * static_cast<qsizetype>(depth), QLatin1Char(' '))
        + QStringList{tag, nameOf(tag)}.join(QLatin1Char(' ')).trimmed();
    if (!value.isObject())
        return {head + QStringLiteral(": ") + valueText(tag, value)};
    return QStringList{head + QLatin1Char(':')} + lines(value.toObject(), depth + 1);
}

QStringList lines(const QJsonObject& requisites, int depth)
{
    QStringList text;
    for (auto requisite = requisites.begin(); requisite != requisites.end(); ++requisite) {
        const QJsonArray values = all(requisite.value());
        for (const auto& value : values)
            text += lines(requisite.key(), value, depth);
    }
    return text;
}

QJsonObject requisiteJson(const QString& tag, const QJsonValue& value)
{
    const QJsonValue inside = value.isObject() ? QJsonValue(json(value.toObject())) : value;
    QJsonObject object{{QStringLiteral("tag"), tag.toInt()}, {QStringLiteral("name"), nameOf(tag)},
        {QStringLiteral("value"), inside}};
    if (const QString meaning = words(tag, value); !meaning.isEmpty())
        object[QStringLiteral("words")] = meaning;
    return object;
}

} // namespace

QStringList lines(const QJsonObject& requisites)
{
    return lines(requisites, 0);
}

QJsonArray json(const QJsonObject& requisites)
{
    QJsonArray list;
    for (auto requisite = requisites.begin(); requisite != requisites.end(); ++requisite) {
        const QJsonArray values = all(requisite.value());
        for (const auto& value : values)
            list.append(requisiteJson(requisite.key(), value));
    }
    return list;
}

} // namespace emulator::tagtext
