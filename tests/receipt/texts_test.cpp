// What a text may hold before it goes to a register.

#include "plaintext.h"
#include "receipterror.h"
#include "receiptparser.h"

#include <gtest/gtest.h>

using namespace receipt;

namespace {

TEST(TextFault, NamesTheCharacterAndItsPlace)
{
    const std::tuple<QString, TextKind, const char*> rows[] = {
        {QStringLiteral("Чай «Дарджилинг» 😀 ₽"), TextKind::Line, ""},
        {QStringLiteral("😀\x01"), TextKind::Line, "has the control character U+0001 at character 2"},
        {QStringLiteral("a\u007F"), TextKind::Line, "has the control character U+007F at character 2"},
        {QStringLiteral("a\nb"), TextKind::Line, "has the control character U+000A at character 2"},
        {QStringLiteral("01\u001D9"), TextKind::MarkingCode, ""},
        {QStringLiteral("01\u001D9"), TextKind::Line, "has the control character U+001D at character 3"},
        {QStringLiteral("01\n"), TextKind::MarkingCode, "has the control character U+000A at character 3"},
        {QChar(0xD83D), TextKind::Line, "has half of a character, U+D83D at character 1"},
        {QStringLiteral("\uFFFE"), TextKind::Line, "has no character: U+FFFE at character 1"},
    };
    for (const auto& [text, kind, fault] : rows)
        EXPECT_EQ(textFault(text, kind).value_or(QString()).toStdString(), fault);
}

std::string errorOf(const QByteArray& text)
{
    try {
        receiptFromText(text);
    } catch (const ReceiptError& error) {
        return error.what();
    }
    return {};
}

TEST(ReceiptFromText, RefusesWhatIsNoStrictJson)
{
    const std::pair<QByteArray, const char*> rows[] = {
        {"[]", "a receipt is a JSON object"},
        {"{\n\n  \"type\": sell }", "type: line 3: syntax error"},
        {"{\"type\": 1e999}", "type: line 1: number overflow"},
        {"{\"items\": [0, {\"price\": 1e-400}]}", "items[1].price: 1e-400 is nearer to zero than"},
        {"{\"type\": 1, \"items\": 0e-400}", "items: must be an array"},
        {QByteArray(100000, '['), "is nested deeper than any receipt"},
        {"{\"items\": [{}, {\"tax\": {\"a\": 1, \"\\u0061\": 2}}]}", "items[1].tax.a: stands there twice"},
        {"{\"a\": [{\"b\": 1}, {\"b\": 1}], \"b\": 1, \"a\": 1}", "a: stands there twice"},
        {"{\"a\": {\"b\": 1, \"b\": 1}, \"a\": 1}", "a.b: stands there twice; a: stands there twice"},
        {QByteArray("\x7F"
                    "ELF\x02\x01\x01\0\xC0\xC0\xC0\xC0\xC0",
             13),
            "the text is not UTF-8: byte C0 at offset 8, line 1; it looks like no text at all"},
        {"{\"operator\": {\"name\": \"\\ud83d\"}}", "operator.name: line 1: has half of a character"},
        {"{\"operator\": {\"name\": \"a\x01\"}}", "operator.name: line 1: has the control character U+0001"},
        {"\xEF\xBB\xBF{\"what\": 1}", "type: is missing"},
        {"{\n\"name\": \"\xD5\xEB\xE5\xE1\"}",
            "the text is not UTF-8: byte D5 at offset 11, line 2; it looks like CP1251"},
        {"\"\xE2\x82\xBD \x95\xAB\xA5\xA1\"",
            "the text is not UTF-8: byte 95 at offset 5, line 1; it looks like CP866"},
        {QByteArray("\xFF\xFE{\0", 4),
            "the text is not UTF-8: byte FF at offset 0, line 1; it looks like UTF-16"},
        {QByteArray("{\0\"\0\xAB\0\"\0}\0", 10),
            "the text is not UTF-8: byte 00 at offset 1, line 1; it looks like UTF-16"},
        {QByteArray("\x04\x14\x04\x3E\x04\x3C\x00\x21", 8),
            "the text is not UTF-8: byte 04 at offset 0, line 1; it looks like UTF-16"},
        {QByteArray("{\"type\": \"a\0\"}", 14), "type: line 1: has the control character U+0000"},
        {"\"\xE2\x82", "the text is not UTF-8: byte E2 at offset 1"},
    };
    for (const auto& [text, error] : rows)
        EXPECT_EQ(errorOf(text).rfind(error, 0), 0U) << errorOf(text) << "\ninstead of " << error;
}

} // namespace
