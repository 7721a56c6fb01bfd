#include "jsonfields.h"

#include "money.h"
#include "receipttr.h"

#include <QRegularExpression>
#include <QStringList>

namespace receipt {

namespace {
// Above them a product of price and quantity would leave 64 bits; no receipt comes near.
constexpr double largestSum = 1e8;
constexpr double largestQuantity = 1e5;

QString kindOf(QJsonValue::Type type)
{
    switch (type) {
    case QJsonValue::Bool:
        return tr("true or false");
    case QJsonValue::Double:
        return tr("a number");
    case QJsonValue::String:
        return tr("a text");
    case QJsonValue::Array:
        return tr("an array");
    case QJsonValue::Object:
        return tr("an object");
    default:
        return QStringLiteral("null");
    }
}

QString allowedNames(std::span<const NamedValue> values, bool withNumbers)
{
    QStringList names;
    for (const NamedValue& entry : values)
        names.append(withNumbers ? QStringLiteral("%1 (%2)").arg(QLatin1String(entry.name)).arg(entry.value)
                                 : QString::fromLatin1(entry.name));
    return names.join(QStringLiteral(", "));
}
} // namespace

JsonFields::JsonFields(const QJsonObject& object, const QString& path, QList<ReceiptError>& errors)
    : m_object(object)
    , m_path(path)
    , m_errors(errors)
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
    note(ReceiptError(path(name), reason, m_object.value(name)));
}

void JsonFields::note(const ReceiptError& error) const
{
    if (m_errors.size() < mostErrors)
        m_errors.append(error);
}

QJsonValue JsonFields::take(const QString& name)
{
    m_taken.insert(name);
    return m_object.value(name);
}

void JsonFields::takeAll()
{
    for (const QString& name : m_object.keys())
        m_taken.insert(name);
}

std::optional<QJsonValue> JsonFields::require(const QString& name, QJsonValue::Type type, const QString& kind)
{
    const QJsonValue value = take(name);
    if (value.type() == type)
        return value;
    fail(name,
        value.isUndefined() ? tr("is missing") : tr("must be %1, not %2").arg(kind, kindOf(value.type())));
    return std::nullopt;
}

QJsonArray JsonFields::array(const QString& name, const QString& kind)
{
    const std::optional<QJsonValue> value = require(name, QJsonValue::Array, kind);
    if (value && value->toArray().isEmpty())
        fail(name, tr("must not be empty"));
    return value.value_or(QJsonValue()).toArray();
}

QString JsonFields::text(const QString& name, int maxLength, TextKind kind)
{
    const std::optional<QJsonValue> given = require(name, QJsonValue::String, tr("a text"));
    if (!given)
        return {};
    const QString value = given->toString();
    if (value.trimmed().isEmpty())
        fail(name, tr("must not be empty"));
    else if (value.size() > maxLength)
        fail(name, tr("must have at most %1 characters, not %2").arg(maxLength).arg(value.size()));
    else if (const auto fault = textFault(value, kind))
        fail(name, *fault);
    else
        return value;
    return {};
}

std::optional<QString> JsonFields::optionalText(const QString& name, int maxLength)
{
    return has(name) ? std::optional(text(name, maxLength)) : std::nullopt;
}

bool JsonFields::flag(const QString& name, bool otherwise)
{
    if (!has(name))
        return otherwise;
    const auto value = require(name, QJsonValue::Bool, tr("true or false"));
    return value ? value->toBool() : otherwise;
}

int JsonFields::integer(const QString& name, int least, int most)
{
    const std::optional<QJsonValue> given = require(name, QJsonValue::Double, tr("a number"));
    if (!given)
        return noChoice;
    const double value = given->toDouble();
    if (value >= least && value <= most && fixedPoint(value, 0))
        return static_cast<int>(*fixedPoint(value, 0));
    fail(name, tr("must be a whole number from %1 to %2").arg(least).arg(most));
    return noChoice;
}

std::optional<QString> JsonFields::optionalInn(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{10}|\\d{12})$"));
    const std::optional<QString> value = optionalText(name);
    if (!value || value->isEmpty() || pattern.match(*value).hasMatch())
        return value;
    fail(name, tr("must have 10 or 12 digits"));
    return QString();
}

qint64 JsonFields::fixed(
    const QString& name, int decimals, double largest, qint64 least, const QString& tooSmall)
{
    const std::optional<QJsonValue> given = require(name, QJsonValue::Double, tr("a number"));
    if (!given)
        return 0;
    const double value = given->toDouble();
    const std::optional<qint64> fixedValue = fixedPoint(value, decimals);
    if (value > largest)
        fail(name, tr("is too large"));
    else if (value < 0 || fixedValue.value_or(least) < least)
        fail(name, tooSmall);
    else if (!fixedValue)
        fail(name, tr("must have at most %1 decimals").arg(decimals));
    else
        return *fixedValue;
    return 0;
}

qint64 JsonFields::kopecks(const QString& name)
{
    return fixed(name, 2, largestSum, 0, tr("must not be negative"));
}

qint64 JsonFields::thousandths(const QString& name)
{
    return fixed(name, 3, largestQuantity, 1, tr("must be above zero"));
}

int JsonFields::word(const QString& name, std::span<const NamedValue> values)
{
    const QString wanted = text(name);
    for (const NamedValue& entry : values) {
        if (wanted == QLatin1String(entry.name))
            return entry.value;
    }
    // What is no text was complained of.
    if (!wanted.isEmpty())
        fail(name, tr("is none of ") + allowedNames(values, false));
    return noChoice;
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
    fail(name, tr("is none of ") + allowedNames(values, true));
    return noChoice;
}

int JsonFields::choice(const QString& name, std::span<const NamedValue> values, int least, int most)
{
    return isNumber(name) ? integer(name, least, most) : word(name, values);
}

template <typename Element, typename Read>
QList<Element> JsonFields::elements(const QString& name, const QString& kind, const Read& read)
{
    QList<Element> result;
    for (const QJsonValue value : array(name, kind)) {
        if (m_errors.size() >= mostErrors)
            break;
        const QString element = QStringLiteral("%1[%2]").arg(name).arg(result.size());
        JsonFields fields = nested({{element, value}}, m_path);
        result.append(read(fields, element));
    }
    return result;
}

QList<int> JsonFields::choices(const QString& name, std::span<const NamedValue> values)
{
    return elements<int>(name, tr("an array of names"),
        [values](JsonFields& fields, const QString& element) { return fields.choice(element, values); });
}

void JsonFields::object(const QString& name, const std::function<void(JsonFields&)>& read)
{
    const std::optional<QJsonValue> value = require(name, QJsonValue::Object, tr("an object"));
    if (!value)
        return;
    JsonFields fields = nested(value->toObject(), path(name));
    read(fields);
    fields.finish();
}

void JsonFields::objects(const QString& name, const std::function<void(JsonFields&)>& read)
{
    int index = 0;
    for (const QJsonValue value : array(name, tr("an array"))) {
        if (m_errors.size() >= mostErrors)
            break;
        const QString entryPath = QStringLiteral("%1[%2]").arg(path(name)).arg(index++);
        if (!value.isObject()) {
            note(ReceiptError(entryPath, tr("must be an object"), value));
            continue;
        }
        JsonFields fields = nested(value.toObject(), entryPath);
        read(fields);
        fields.finish();
    }
}

QList<QString> JsonFields::texts(const QString& name, int maxLength)
{
    return elements<QString>(name, tr("an array of texts"),
        [maxLength](JsonFields& fields, const QString& element) { return fields.text(element, maxLength); });
}

void JsonFields::finish() const
{
    for (auto field = m_object.constBegin(); field != m_object.constEnd(); ++field) {
        if (!m_taken.contains(field.key()))
            fail(field.key(), tr("is not a known field here"));
    }
}

} // namespace receipt
