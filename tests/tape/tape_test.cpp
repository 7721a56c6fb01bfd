#include "tape/pagejson.h"
#include "tape/pagetext.h"

#include <gtest/gtest.h>
#include <QJsonDocument>

namespace {

const tape::Attributes wideAndHigh{tape::Attribute::DoubleHeight, tape::Attribute::DoubleWidth};
const tape::Picture dots{QStringLiteral("ЛОГОТИП"), 9, 2, QByteArray::fromHex("ff80aa00")};
const tape::Code shelf{
    tape::Symbology::Ean13, QStringLiteral("4601234567890"), -1, 2, 100, tape::CodeCaption::Below};

// On paper of 12 characters.
const QList<std::tuple<tape::Line, QStringList, const char*>> cases{
    {tape::TextLine::of("Хлеб"), {"Хлеб"}, R"("Хлеб")"},
    {tape::TextLine(), {""}, R"({"cells":[]})"},
    {tape::TextLine::of("", tape::Attribute::Bold), {"■"},
        R"({"cells":[{"attributes":["bold"],"text":""}]})"},
    {tape::TextLine::of("123456789ABCDE", tape::Attribute::Small), {"·123456789AB", "·CDE"},
        R"({"cells":[{"attributes":["small"],"text":"123456789ABCDE"}]})"},
    {tape::TextLine::of("кот", tape::Attribute::DoubleWidth), {"↔к о т"},
        R"({"cells":[{"attributes":["doubleWidth"],"text":"кот"}]})"},
    {tape::TextLine::of("кот", wideAndHigh | tape::Attribute::Inverse), {"⤢▒к о т"},
        R"({"cells":[{"attributes":["doubleHeight","doubleWidth","inverse"],"text":"кот"}]})"},
    {tape::TextLine{{{"ИТОГ ", {}}, {"1.00", tape::Attribute::DoubleHeight}}}, {"ИТОГ ↕1.00"},
        R"({"cells":[{"text":"ИТОГ "},{"attributes":["doubleHeight"],"text":"1.00"}]})"},
    {dots, {"┌─[ЛОГОТИ]─┐", "│ 9 x 2    │", "└──────────┘"},
        R"({"height":2,"picture":"ЛОГОТИП","rows":"/4CqAA==","width":9})"},
    {shelf, {"┌─[EAN-13]─┐", "│ 46012345 │", "│ 67890    │", "└──────────┘"},
        R"({"caption":"below","code":"EAN-13","data":"4601234567890","height":100,"moduleWidth":2})"},
    {tape::Code{tape::Symbology::Qr, "t=1"}, {"┌─[QR]─────┐", "│ t=1      │", "└──────────┘"},
        R"({"code":"QR","data":"t=1"})"},
    {tape::Code{tape::Symbology::Other, "", 12}, {"┌─[ШТРИХК]─┐", "│          │", "└──────────┘"},
        R"({"code":"other","data":"","number":12})"},
    {tape::Cut(), {"", "- - - - - -", ""}, R"({"cut":true})"},
};

QJsonValue parsed(const QByteArray& json)
{
    return QJsonDocument::fromJson('[' + json + ']').array().at(0);
}

std::string joined(const QStringList& lines)
{
    return lines.join('\n').toStdString();
}

} // namespace

TEST(Tape, LinesHaveATextAndComeBackFromDisk)
{
    tape::Page page{12, {}};
    QStringList text;
    for (const auto& [line, lineText, json] : cases) {
        EXPECT_EQ(joined(tape::toText(line, 12)), joined(lineText)) << json;
        EXPECT_EQ(QJsonDocument(QJsonArray{tape::toJson(line)}).toJson(QJsonDocument::Compact),
            '[' + QByteArray(json) + ']');
        EXPECT_EQ(tape::lineFromJson(parsed(json)), line) << json;
        page.lines.append(line);
        text += lineText;
    }
    EXPECT_EQ(joined(tape::toText(page)), joined(text));
    const QByteArray kept = QJsonDocument(tape::toJson(page)).toJson();
    EXPECT_EQ(tape::pageFromJson(QJsonDocument::fromJson(kept).object()), page);
}

TEST(Tape, WhatNobodyHasWrittenIsNoPage)
{
    const char* const lines[]{"1", "null", "[]", "{}", R"({"cut":false})", R"({"cut":true,"more":1})",
        R"({"cells":"x"})", R"({"cells":["x"]})", R"({"cells":[{"text":1}]})",
        R"({"cells":[{"text":"x","attributes":["loud"]}]})",
        R"({"cells":[{"text":"x","attributes":"bold"}]})", R"({"cells":[{"text":"x","font":1}]})",
        R"({"code":"PDF417","data":"1"})", R"({"code":"QR"})", R"({"code":"QR","data":1})",
        R"({"code":"QR","data":"1","height":-1})", R"({"code":"QR","data":"1","height":1.5})",
        R"({"code":"QR","data":"1","caption":"aside"})",
        R"({"height":2,"picture":"","rows":"/4CqAA==","width":17})",
        R"({"height":1,"picture":"","rows":"/4CqAA==","width":9})",
        R"({"height":2,"picture":"","rows":"/4Cq*A==","width":9})",
        R"({"height":-2,"picture":"","rows":"","width":-9})",
        R"({"height":2,"picture":"","rows":"/4CqAA=="})"};
    for (const char* const line : lines)
        EXPECT_EQ(tape::lineFromJson(parsed(line)), std::nullopt) << line;
    for (const char* const page : {"1", R"({"lines":[]})", R"({"width":44})", R"({"width":0,"lines":[]})",
             R"({"width":44,"lines":[1]})", R"({"width":44,"lines":{}})",
             R"({"width":44,"lines":[],"height":1})"})
        EXPECT_EQ(tape::pageFromJson(parsed(page)), std::nullopt) << page;
}

TEST(Tape, AttributesOfTheWireTellHowMuchFitsOnALine)
{
    const std::tuple<int, tape::Attributes, int, int> fonts[]
        = {{0, {}, 44, 48}, {1, tape::Attribute::Small, 64, 64}, {8, tape::Attribute::Bold, 44, 48},
            {16, tape::Attribute::DoubleHeight, 44, 48}, {32, tape::Attribute::DoubleWidth, 24, 24},
            {48, wideAndHigh, 24, 24}, {33, {tape::Attribute::Small | tape::Attribute::DoubleWidth}, 32, 32},
            {128, tape::Attribute::Inverse, 44, 48}, {2 | 4 | 64, {}, 44, 48}};
    for (const auto& [bits, attributes, on44, on48] : fonts) {
        EXPECT_EQ(tape::attributesOf(bits), attributes) << bits;
        EXPECT_EQ(tape::columns(attributes, 44), on44) << bits;
        EXPECT_EQ(tape::columns(attributes, 48), on48) << bits;
    }
}
