#include "tape/pagejson.h"

#include "tape/jsonfields.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace tape {

namespace {

const QString widthKey = QStringLiteral("width");
const QString heightKey = QStringLiteral("height");
const QString linesKey = QStringLiteral("lines");
const QString textKey = QStringLiteral("text");
const QString attributesKey = QStringLiteral("attributes");
const QString cellsKey = QStringLiteral("cells");
const QString pictureKey = QStringLiteral("picture");
const QString rowsKey = QStringLiteral("rows");
const QString codeKey = QStringLiteral("code");
const QString dataKey = QStringLiteral("data");
const QString numberKey = QStringLiteral("number");
const QString moduleWidthKey = QStringLiteral("moduleWidth");
const QString captionKey = QStringLiteral("caption");
const QString cutKey = QStringLiteral("cut");

struct AttributeName
{
    Attribute attribute;
    const char* name;
};

constexpr AttributeName attributeNames[]
    = {{Attribute::Small, "small"}, {Attribute::Bold, "bold"}, {Attribute::DoubleHeight, "doubleHeight"},
        {Attribute::DoubleWidth, "doubleWidth"}, {Attribute::Inverse, "inverse"}};

// In the order of the enumeration.
constexpr std::array<const char*, 4> captionNames{"none", "above", "below", "both"};

QJsonArray attributesToJson(Attributes attributes)
{
    QJsonArray names;
    for (const AttributeName& candidate : attributeNames) {
        if (attributes.testFlag(candidate.attribute))
            names.append(QLatin1String(candidate.name));
    }
    return names;
}

std::optional<Attributes> attributesFromJson(const QJsonValue& json)
{
    Attributes attributes;
    for (const auto& name : json.toArray()) {
        const auto* const found = std::find_if(std::begin(attributeNames), std::end(attributeNames),
            [&name](const AttributeName& candidate) { return name == QLatin1String(candidate.name); });
        if (found == std::end(attributeNames))
            return std::nullopt;
        attributes |= found->attribute;
    }
    return json.isUndefined() || json.isArray() ? std::optional<Attributes>(attributes) : std::nullopt;
}

QJsonObject cellsToJson(const Cells& cells)
{
    QJsonObject json{{textKey, cells.text}};
    if (cells.attributes)
        json[attributesKey] = attributesToJson(cells.attributes);
    return json;
}

std::optional<Cells> cellsFromJson(const QJsonValue& json)
{
    JsonFields fields(json.toObject());
    const QString text = fields.text(textKey);
    const std::optional<Attributes> attributes = attributesFromJson(fields.value(attributesKey));
    return fields.isGood() && attributes ? std::optional<Cells>({text, *attributes}) : std::nullopt;
}

/// The object of each kind of line.
struct Writer
{
    QJsonValue operator()(const TextLine& line) const
    {
        if (line.cells.size() == 1 && !line.cells.constFirst().attributes)
            return line.cells.constFirst().text;
        QJsonArray list;
        for (const Cells& cells : line.cells)
            list.append(cellsToJson(cells));
        return QJsonObject{{cellsKey, list}};
    }

    QJsonValue operator()(const Picture& picture) const
    {
        return QJsonObject{{pictureKey, picture.title}, {widthKey, picture.width},
            {heightKey, picture.height}, {rowsKey, QString::fromLatin1(picture.rows.toBase64())}};
    }

    QJsonValue operator()(const Code& code) const
    {
        QJsonObject json{{codeKey, symbologyName(code.symbology)}, {dataKey, code.data}};
        if (code.number >= 0)
            json[numberKey] = code.number;
        if (code.moduleWidth != 0)
            json[moduleWidthKey] = code.moduleWidth;
        if (code.height != 0)
            json[heightKey] = code.height;
        if (code.caption != CodeCaption::None)
            json[captionKey] = QLatin1String(captionNames.at(static_cast<size_t>(code.caption)));
        return json;
    }

    QJsonValue operator()(const Cut&) const { return QJsonObject{{cutKey, true}}; }
};

std::optional<Line> textLineFromJson(JsonFields& fields)
{
    const QJsonValue list = fields.value(cellsKey);
    TextLine line;
    for (const auto& value : list.toArray()) {
        const std::optional<Cells> cells = cellsFromJson(value);
        if (!cells)
            return std::nullopt;
        line.cells.append(*cells);
    }
    return list.isArray() ? std::optional<Line>(line) : std::nullopt;
}

std::optional<Line> pictureFromJson(JsonFields& fields)
{
    Picture picture;
    picture.title = fields.text(pictureKey);
    picture.width = fields.number(widthKey);
    picture.height = fields.number(heightKey);
    const auto decoded = QByteArray::fromBase64Encoding(
        fields.text(rowsKey).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
    picture.rows = decoded.decoded;
    const bool good = decoded.decodingStatus == QByteArray::Base64DecodingStatus::Ok && picture.isWhole();
    return good ? std::optional<Line>(picture) : std::nullopt;
}

std::optional<CodeCaption> captionFromJson(const QJsonValue& json)
{
    if (json.isUndefined())
        return CodeCaption::None;
    const auto* const found = std::find_if(captionNames.cbegin(), captionNames.cend(),
        [&json](const char* name) { return json == QLatin1String(name); });
    return found == captionNames.cend()
        ? std::nullopt
        : std::optional(static_cast<CodeCaption>(found - captionNames.cbegin()));
}

std::optional<Line> codeFromJson(JsonFields& fields)
{
    constexpr int unknownNumber = -1;
    const std::optional<Symbology> symbology = symbologyOf(fields.text(codeKey));
    const std::optional<CodeCaption> caption = captionFromJson(fields.value(captionKey));
    Code code;
    code.data = fields.text(dataKey);
    code.number = fields.number(numberKey, unknownNumber);
    code.moduleWidth = fields.number(moduleWidthKey, 0);
    code.height = fields.number(heightKey, 0);
    if (!symbology || !caption || code.number < unknownNumber || code.moduleWidth < 0 || code.height < 0)
        return std::nullopt;
    code.symbology = *symbology;
    code.caption = *caption;
    return code;
}

std::optional<Line> cutFromJson(JsonFields& fields)
{
    return fields.value(cutKey) == true ? std::optional<Line>(Cut()) : std::nullopt;
}

} // namespace

QJsonValue toJson(const Line& line)
{
    return std::visit(Writer(), line);
}

QJsonArray toJson(const QList<Line>& lines)
{
    QJsonArray json;
    for (const Line& line : lines)
        json.append(toJson(line));
    return json;
}

QJsonObject toJson(const Page& page)
{
    return {{widthKey, page.width}, {linesKey, toJson(page.lines)}};
}

std::optional<Line> lineFromJson(const QJsonValue& json)
{
    if (json.isString())
        return TextLine::of(json.toString());
    static const std::pair<QString, std::optional<Line> (*)(JsonFields&)> kinds[]{
        {cellsKey, textLineFromJson}, {pictureKey, pictureFromJson}, {codeKey, codeFromJson},
        {cutKey, cutFromJson}};
    const QJsonObject object = json.toObject();
    for (const auto& [key, read] : kinds) {
        if (!object.contains(key))
            continue;
        JsonFields fields(object);
        const std::optional<Line> line = read(fields);
        return fields.isGood() ? line : std::nullopt;
    }
    return std::nullopt;
}

std::optional<QList<Line>> linesFromJson(const QJsonValue& json)
{
    QList<Line> lines;
    for (const auto& value : json.toArray()) {
        const std::optional<Line> line = lineFromJson(value);
        if (!line)
            return std::nullopt;
        lines.append(*line);
    }
    return json.isArray() ? std::optional<QList<Line>>(lines) : std::nullopt;
}

std::optional<Page> pageFromJson(const QJsonValue& json)
{
    constexpr int widest = 1000;
    JsonFields fields(json.toObject());
    const int width = fields.number(widthKey);
    const std::optional<QList<Line>> lines = linesFromJson(fields.value(linesKey));
    const bool good = fields.isGood() && lines && width > 0 && width <= widest;
    return good ? std::optional<Page>({width, *lines}) : std::nullopt;
}

} // namespace tape
