#include "storedjson.h"

#include <QJsonDocument>

namespace sale {

namespace {

template <typename Json>
QString textOf(const Json& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

template <typename Json>
QVariant stored(const Json& json)
{
    return json.isEmpty() ? QVariant(QMetaType::fromType<QString>()) : QVariant(textOf(json));
}

} // namespace

QVariant storedJson(const QJsonObject& json)
{
    return stored(json);
}

QVariant storedJson(const QJsonArray& json)
{
    return stored(json);
}

QString wholeJson(const QJsonObject& json)
{
    return textOf(json);
}

} // namespace sale
