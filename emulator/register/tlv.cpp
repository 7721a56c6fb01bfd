#include "register/tlv.h"

#include "register/tagtable.h"
#include "register/tagvalue.h"

#include <QJsonArray>

namespace emulator::tlv {

namespace {

constexpr qsizetype headSize = 4;
constexpr int highestTag = 0xFFFF;
constexpr qsizetype longestValue = 0xFFFF;
constexpr int deepest = 8;

void addWord(QByteArray& bytes, qsizetype word)
{
    bytes += static_cast<char>(word & 0xFF);
    bytes += static_cast<char>(word >> 8);
}

qsizetype wordAt(const QByteArray& bytes, qsizetype at)
{
    return static_cast<uchar>(bytes[at]) | static_cast<uchar>(bytes[at + 1]) << 8;
}

std::optional<QByteArray> anyBytes(TagKind kind, const QJsonValue& value)
{
    if (kind != TagKind::Structure)
        return tagvalue::bytes(kind, value);
    return value.isObject() ? std::optional<QByteArray>(encode(value.toObject())) : std::nullopt;
}

std::optional<QByteArray> fittingBytes(int tag, const QJsonValue& value)
{
    const std::optional<QByteArray> bytes = anyBytes(tagtable::row(tag).kind, value);
    const bool fits = tag > 0 && tag <= highestTag && bytes && bytes->size() <= longestValue;
    return fits ? bytes : std::nullopt;
}

void add(QByteArray& bytes, int tag, const QJsonValue& value)
{
    const std::optional<QByteArray> inside = fittingBytes(tag, value);
    if (!inside)
        return;
    addWord(bytes, tag);
    addWord(bytes, inside->size());
    bytes += *inside;
}

std::optional<QJsonObject> decode(const QByteArray& bytes, int depth);

std::optional<QJsonValue> readValue(const TagRow& row, const QByteArray& bytes, int depth)
{
    if (row.kind != TagKind::Structure)
        return tagvalue::read(row.kind, bytes);
    const std::optional<QJsonObject> inside = decode(bytes, depth + 1);
    return inside ? std::optional<QJsonValue>(*inside) : std::nullopt;
}

// A tag that is there once only may not come again.
bool put(QJsonObject& requisites, const TagRow& row, const QJsonValue& value)
{
    const QString name = QString::number(row.tag);
    if (!row.repeats && requisites.contains(name))
        return false;
    QJsonArray all = requisites.value(name).toArray();
    all.append(value);
    requisites[name] = row.repeats ? QJsonValue(all) : value;
    return true;
}

std::optional<QJsonObject> decode(const QByteArray& bytes, int depth)
{
    QJsonObject requisites;
    qsizetype at = 0;
    while (depth <= deepest && bytes.size() - at >= headSize) {
        const TagRow row = tagtable::row(static_cast<int>(wordAt(bytes, at)));
        const qsizetype length = wordAt(bytes, at + 2);
        at += headSize;
        const auto value
            = length <= bytes.size() - at ? readValue(row, bytes.mid(at, length), depth) : std::nullopt;
        if (!value || !put(requisites, row, *value))
            return {};
        at += length;
    }
    return at == bytes.size() ? std::optional<QJsonObject>(requisites) : std::nullopt;
}

} // namespace

bool holds(int tag, const QJsonValue& value)
{
    return fittingBytes(tag, value).has_value();
}

QByteArray encode(const QJsonObject& requisites)
{
    QByteArray bytes;
    for (auto requisite = requisites.begin(); requisite != requisites.end(); ++requisite) {
        const int tag = requisite.key().toInt();
        if (!requisite.value().isArray()) {
            add(bytes, tag, requisite.value());
            continue;
        }
        const QJsonArray all = requisite.value().toArray();
        for (const auto& value : all)
            add(bytes, tag, value);
    }
    return bytes;
}

std::optional<QJsonObject> decode(const QByteArray& bytes)
{
    return decode(bytes, 0);
}

} // namespace emulator::tlv
