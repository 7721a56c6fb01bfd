#include "jsonfields.h"

#include "money.h"
#include "receipterror.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QStringList>

namespace receipt {

namespace {
// Above them a product of price and quantity would leave 64 bits; no receipt comes near.
constexpr double largestSum = 1e8;
constexpr double largestQuantity = 1e5;

QString allowedNames(std::span<const NamedValue> values, bool withNumbers)
{
    QStringList names;
    for (const NamedValue& entry : values)
        names.append(withNumbers ? QStringLiteral("%1 (%2)").arg(QLatin1String(entry.name)).arg(entry.value)
                                 : QString::fromLatin1(entry.name));
    return names.join(QStringLiteral(", "));
}
} // namespace

JsonFields::JsonFields(const QJsonObject& object, const QString& path)
    : m_object(object)
    , m_path(path)
{
}

QString JsonFields::path(const QString& name) const
{
    if (name.isEmpty() || m_path.isEmpty())
        return m_path + name;
    return m_path + QLatin1Char('.') + name;
}

void JsonFields::fail(const QString& name, const QString& reason) const
{
    throw ReceiptError(path(name), reason, m_object.value(name));
}

QJsonValue JsonFields::take(const QString& name)
{
    m_taken.insert(name);
    return m_object.value(name);
}

QJsonValue JsonFields::require(const QString& name, QJsonValue::Type type, const QString& kind)
{
    const QJsonValue value = take(name);
    if (value.isUndefined())
        fail(name, QStringLiteral("is missing"));
    if (value.type() != type)
        fail(name, QStringLiteral("must be ") + kind);
    return value;
}

QString JsonFields::text(const QString& name, int maxLength, TextKind kind)
{
    const QString value = require(name, QJsonValue::String, QStringLiteral("a text")).toString();
    if (value.trimmed().isEmpty())
        fail(name, QStringLiteral("must not be empty"));
    if (value.size() > maxLength)
        fail(
            name, QStringLiteral("must have at most %1 characters, not %2").arg(maxLength).arg(value.size()));
    if (const auto fault = textFault(value, kind))
        fail(name, *fault);
    return value;
}

std::optional<QString> JsonFields::optionalText(const QString& name, int maxLength)
{
    return has(name) ? std::optional(text(name, maxLength)) : std::nullopt;
}

bool JsonFields::flag(const QString& name, bool otherwise)
{
    return has(name) ? require(name, QJsonValue::Bool, QStringLiteral("true or false")).toBool() : otherwise;
}

int JsonFields::integer(const QString& name, int least, int most)
{
    const double value = require(name, QJsonValue::Double, QStringLiteral("a number")).toDouble();
    if (value < least || value > most || !fixedPoint(value, 0))
        fail(name, QStringLiteral("must be a whole number from %1 to %2").arg(least).arg(most));
    return static_cast<int>(*fixedPoint(value, 0));
}

std::optional<QString> JsonFields::optionalInn(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{10}|\\d{12})$"));
    const std::optional<QString> value = optionalText(name);
    if (value && !pattern.match(*value).hasMatch())
        fail(name, QStringLiteral("must have 10 or 12 digits"));
    return value;
}

qint64 JsonFields::fixed(const QString& name, int decimals, double largest)
{
    const double value = require(name, QJsonValue::Double, QStringLiteral("a number")).toDouble();
    if (value > largest)
        fail(name, QStringLiteral("is too large"));
    const std::optional<qint64> fixedValue = fixedPoint(value, decimals);
    if (value >= 0 && !fixedValue)
        fail(name, QStringLiteral("must have at most %1 decimals").arg(decimals));
    return value < 0 ? -1 : *fixedValue;
}

qint64 JsonFields::kopecks(const QString& name)
{
    const qint64 value = fixed(name, 2, largestSum);
    if (value < 0)
        fail(name, QStringLiteral("must not be negative"));
    return value;
}

qint64 JsonFields::thousandths(const QString& name)
{
    const qint64 value = fixed(name, 3, largestQuantity);
    if (value <= 0)
        fail(name, QStringLiteral("must be above zero"));
    return value;
}

int JsonFields::word(const QString& name, std::span<const NamedValue> values)
{
    const QString wanted = text(name);
    for (const NamedValue& entry : values) {
        if (wanted == QLatin1String(entry.name))
            return entry.value;
    }
    fail(name, QStringLiteral("is none of ") + allowedNames(values, false));
}

int JsonFields::choice(const QString& name, std::span<const NamedValue> values)
{
    if (!isNumber(name))
        return word(name, values);
    const double wanted = take(name).toDouble();
    for (const NamedValue& entry : values) {
        if (fixedPoint(wanted, 0) == entry.value)
            return entry.value;
    }
    fail(name, QStringLiteral("is none of ") + allowedNames(values, true));
}

int JsonFields::choice(const QString& name, std::span<const NamedValue> values, int least, int most)
{
    return isNumber(name) ? integer(name, least, most) : word(name, values);
}

template <typename Element, typename Read>
QList<Element> JsonFields::elements(const QString& name, const QString& kind, const Read& read)
{
    const QJsonArray array = require(name, QJsonValue::Array, kind).toArray();
    if (array.isEmpty())
        fail(name, QStringLiteral("must not be empty"));
    QList<Element> result;
    for (const QJsonValue value : array) {
        const QString element = QStringLiteral("%1[%2]").arg(name).arg(result.size());
        JsonFields fields({{element, value}}, m_path);
        result.append(read(fields, element));
    }
    return result;
}

QList<int> JsonFields::choices(const QString& name, std::span<const NamedValue> values)
{
    return elements<int>(name, QStringLiteral("an array of names"),
        [values](JsonFields& fields, const QString& element) { return fields.choice(element, values); });
}

void JsonFields::object(const QString& name, const std::function<void(JsonFields&)>& read)
{
    JsonFields fields(require(name, QJsonValue::Object, QStringLiteral("an object")).toObject(), path(name));
    read(fields);
    fields.finish();
}

void JsonFields::objects(const QString& name, const std::function<void(JsonFields&)>& read)
{
    const QJsonArray array = require(name, QJsonValue::Array, QStringLiteral("an array")).toArray();
    if (array.isEmpty())
        fail(name, QStringLiteral("must not be empty"));
    for (qsizetype index = 0; index < array.size(); ++index) {
        const QString entryPath = QStringLiteral("%1[%2]").arg(path(name)).arg(index);
        if (!array.at(index).isObject())
            throw ReceiptError(entryPath, QStringLiteral("must be an object"));
        JsonFields fields(array.at(index).toObject(), entryPath);
        read(fields);
        fields.finish();
    }
}

QList<QString> JsonFields::texts(const QString& name, int maxLength)
{
    return elements<QString>(name, QStringLiteral("an array of texts"),
        [maxLength](JsonFields& fields, const QString& element) { return fields.text(element, maxLength); });
}

void JsonFields::finish() const
{
    for (auto field = m_object.constBegin(); field != m_object.constEnd(); ++field) {
        if (!m_taken.contains(field.key()))
            fail(field.key(), QStringLiteral("is not a known field here"));
    }
}

} // namespace receipt
