#include "storedjson.h"

#include <QJsonDocument>

namespace sale {

namespace {

template <typename Json>
QVariant stored(const Json& json)
{
    return json.isEmpty() ? QVariant(QMetaType::fromType<QString>())
                          : QVariant(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact)));
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

} // namespace sale
