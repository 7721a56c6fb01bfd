#include "basicfrdriver.h"
#include "messagelog.h"

#include <gtest/gtest.h>

namespace {

using Rows = std::vector<std::vector<unsigned char>>;

} // namespace

TEST(Rendering, packsModulesFromTheHighestBit)
{
    // Only bit 0 of a module counts: 0xFE is light.
    const Rows rows{{0xFF, 0, 0, 0xFE, 0, 0, 1, 1, 0xFF}, {}, {0, 1}, {0, 0, 0, 0, 0, 0, 0, 1}};
    const BasicFrDriver driver;
    EXPECT_EQ(driver.convertBytes2Bits(rows, false), (Rows{{0x83, 0x80}, {}, {0x40}, {0x01}}));
    EXPECT_EQ(driver.convertBytes2Bits(rows, true), (Rows{{0xC1, 0x01}, {}, {0x02}, {0x80}}));
}

TEST(Rendering, makesTheSmallestCode)
{
    const BasicFrDriver driver;
    const MessageLog log;
    const Rows code = driver.generateQR(QStringLiteral("a"));
    EXPECT_EQ(MessageLog::taken().back(), "info frdriver: qr-code сгенерирован");
    ASSERT_EQ(code.size(), 21U);
    // The square in the corner of every code, and the light line around it.
    const char* const corner[]
        = {"#######.", "#.....#.", "#.###.#.", "#.###.#.", "#.###.#.", "#.....#.", "#######.", "........"};
    for (std::size_t row = 0; row < 8; ++row) {
        ASSERT_EQ(code[row].size(), 21U);
        for (std::size_t column = 0; column < 8; ++column)
            EXPECT_EQ(code[row][column], corner[row][column] == '#' ? 0xFF : 0) << row << ' ' << column;
    }
    // At the highest level of correction 7 bytes fit into the smallest code.
    EXPECT_EQ(driver.generateQR(QStringLiteral("abcdefg")).size(), 21U);
    EXPECT_EQ(driver.generateQR(QStringLiteral("abcdefgh")).size(), 25U);
}

TEST(Rendering, textThatMakesNoCode)
{
    const BasicFrDriver driver;
    const MessageLog log;
    EXPECT_TRUE(driver.generateQR(QString()).empty());
    EXPECT_TRUE(MessageLog::taken().empty());
    EXPECT_TRUE(driver.generateQR(QString(3000, QLatin1Char('x'))).empty());
    EXPECT_EQ(MessageLog::taken(),
        (std::vector<std::string>{
            "info frdriver: Генерируем qr-code", "error frdriver: Не удалось сгенерировать QR код!"}));
}
