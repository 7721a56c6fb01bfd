#include "spfxml/errorcatalogue.h"

#include <gtest/gtest.h>

namespace {

// What the cashier reads. The printer table comes first for the printer category and for no other.
TEST(ErrorCatalogue, joinsCategoryAndMessage)
{
    const std::tuple<int, int, const char*, const char*> cases[] = {
        {2, 2005, "", "Ошибка ФН. Некорректное состояние ФН"},
        {1, 1007, "", "Внутренняя ошибка. Недостаточно средств в денежном ящике"},
        {5, 5009, "", "Ошибка POS терминала. На текущий момент команда не поддерживается"},
        {3, 8, "", "Ошибка печатающего устройства. Конец бумаги"},
        {3, 1, "X", "Ошибка печатающего устройства. Функция невыполнима при данном статусе ККМ"},
        {3, 3001, "X", "Ошибка печатающего устройства. Некорректное значение параметров принтера"},
        {1, 8, "", "Внутренняя ошибка. Неизвестная ошибка"},
        {1, 1, "X", "Внутренняя ошибка. X"},
        {4, 0, "X", "Ошибка ОФД. X"},
        {4, 4002, "X",
            "Ошибка ОФД. Неверные дата и/или время (Дата и время операции не соответствуют логике работы ФН)"},
        {6, 1001, "", "Некорректный документ"},
        {-1, -1, "", "Неизвестная ошибка"},
    };
    for (const auto& [category, code, description, expected] : cases) {
        const tr::TrList message
            = spf::utils::getErrorMessage(category, code, QString::fromUtf8(description));
        EXPECT_EQ(message.joinRu(QStringLiteral(". ")).toStdString(), expected) << category << ' ' << code;
    }
}

TEST(ErrorCatalogue, numbersTheKeyOfEveryCode)
{
    const tr::Tr own = spf::utils::getErrorStr(22, {});
    const tr::Tr ofd = spf::utils::getErrorStr(4003, {});
    EXPECT_EQ(own.ru(), ofd.ru());
    EXPECT_EQ(own.key(), QStringLiteral("spfErrorMessage22"));
    EXPECT_EQ(ofd.key(), QStringLiteral("spfErrorMessage4003"));
    EXPECT_EQ(spf::utils::getErrorStr(7, QStringLiteral("X")).key(), QStringLiteral("spfErrorMessage7"));
    EXPECT_EQ(spf::utils::getPrinterError(7).key(), QStringLiteral("spfPrinterError7"));
    EXPECT_EQ(spf::utils::getErrorCategoryStr(6).key(), QStringLiteral("spfErrorCategory6"));
}

} // namespace
