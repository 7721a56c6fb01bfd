// What a text may hold before it goes to a register.

#include "plaintext.h"

#include <gtest/gtest.h>

using namespace receipt;

namespace {

TEST(TextFault, NamesTheCharacterAndItsPlace)
{
    const std::tuple<QString, TextKind, const char*> rows[] = {
        {QStringLiteral("Чай «Дарджилинг» 😀 ₽"), TextKind::Line, ""},
        {QStringLiteral("😀\x01"), TextKind::Line, "has the control character U+0001 at character 2"},
        {QStringLiteral("a\u007F"), TextKind::Lines, "has the control character U+007F at character 2"},
        {QStringLiteral("a\nb"), TextKind::Lines, ""},
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

} // namespace
