#include "memory/statereader.h"

#include "tape/pagejson.h"

namespace emulator {

void StateReader::fail(const QString& path)
{
    throw MemoryError(QStringLiteral("damaged: no good value of %1").arg(path));
}

void StateReader::decode(const QJsonValue& json, const QString& path, bool& value)
{
    if (!json.isBool())
        fail(path);
    value = json.toBool();
}

void StateReader::decode(const QJsonValue& json, const QString& path, qint64& value)
{
    value = json.toInteger();
    // A fraction and a number that is too great read as the default.
    if (!json.isDouble() || json.toInteger(1) != value)
        fail(path);
}

void StateReader::decode(const QJsonValue& json, const QString& path, QString& value)
{
    if (!json.isString())
        fail(path);
    value = json.toString();
}

void StateReader::decode(const QJsonValue& json, const QString& path, QJsonObject& value)
{
    if (!json.isObject())
        fail(path);
    value = json.toObject();
}

void StateReader::decode(const QJsonValue& json, const QString& path, QByteArray& value)
{
    const auto bytes
        = QByteArray::fromBase64Encoding(json.toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    if (!json.isString() || !bytes)
        fail(path);
    value = bytes.decoded;
}

void StateReader::decode(const QJsonValue& json, const QString& path, QDate& value)
{
    value = QDate::fromString(json.toString(), Qt::ISODate);
    if (!value.isValid())
        fail(path);
}

void StateReader::decode(const QJsonValue& json, const QString& path, QDateTime& value)
{
    value = QDateTime();
    if (json.isNull())
        return;
    qint64 milliseconds = 0;
    decode(json, path, milliseconds);
    value = QDateTime::fromMSecsSinceEpoch(milliseconds);
}

void StateReader::decode(const QJsonValue& json, const QString& path, tape::Page& value)
{
    std::optional<tape::Page> page = tape::pageFromJson(json);
    if (!page)
        fail(path);
    value = *std::move(page);
}

void StateReader::decode(const QJsonValue& json, const QString& path, QList<tape::Line>& value)
{
    std::optional<QList<tape::Line>> lines = tape::linesFromJson(json);
    if (!lines)
        fail(path);
    value = *std::move(lines);
}

QJsonArray StateReader::arrayOf(const QJsonValue& json, const QString& path)
{
    if (!json.isArray())
        fail(path);
    return json.toArray();
}

} // namespace emulator
