#include "qtprinters.h"

#include <frposition.h>
#include <frutils.h>

#include <gtest/gtest.h>
#include <QDateTime>

#include <tuple>
#include <utility>

namespace {

using namespace hw::fr::common;

TEST(FrUtils, TextGoesToCodePage866WithOneByteACharacter)
{
    const std::pair<QString, QByteArray> cases[] = {
        {QStringLiteral("Az 09~"), "Az 09~"},
        {QStringLiteral("АПЯапря"), QByteArray::fromHex("808f9fa0afe0ef")},
        {QStringLiteral("Ёё№ ░"), QByteArray::fromHex("f0f1fc20b0")},
        {QStringLiteral("5 € — «x» 😀"), "5 ? ? ?x? ?"},
        {QStringLiteral("a\nb\x1d"), QByteArray("a\nb\x1d")},
        {QStringLiteral("\x1A\x1B\x1C\x1DЖ\x7F"), QByteArray("\x1A\x1B\x1C\x1D\x86\x7F")},
        {QString(), {}},
    };
    for (const auto& [text, bytes] : cases)
        EXPECT_EQ(FrUtils::to866(text), bytes);
}

TEST(FrUtils, TwoDigitYearsBelongToThisCentury)
{
    const std::pair<QDate, QDate> cases[] = {
        {QDate(1924, 2, 29), QDate(2024, 2, 29)},
        {QDate(1999, 12, 31), QDate(2099, 12, 31)},
        {QDate(2000, 1, 1), QDate(2000, 1, 1)},
        {QDate(2024, 5, 6), QDate(2024, 5, 6)},
    };
    for (const auto& [read, meant] : cases) {
        QDateTime time(read, QTime(12, 34, 56));
        FrUtils::fixDateTime(time);
        EXPECT_EQ(time, QDateTime(meant, QTime(12, 34, 56)));
    }
    QDateTime invalid;
    FrUtils::fixDateTime(invalid);
    EXPECT_FALSE(invalid.isValid());
}

TEST(FrUtils, TaxSystemsAndMaskAreTheSame)
{
    using Systems = QList<TaxSystemType>;
    const std::pair<int, Systems> cases[] = {
        {0, {}},
        {38, {TaxSystemSimplifiedIncome, TaxSystemSimplifiedIncomeOutcome, TaxSystemPatent}},
        {63,
            {TaxSystemGeneral, TaxSystemSimplifiedIncome, TaxSystemSimplifiedIncomeOutcome,
                TaxSystemImputedIncome, TaxSystemAgricultural, TaxSystemPatent}},
    };
    for (const auto& [mask, systems] : cases) {
        EXPECT_EQ(FrUtils::snoList(mask), systems);
        EXPECT_EQ(FrUtils::snoMask(systems), mask);
    }
    EXPECT_EQ(FrUtils::snoList(64 + 128 + 4), Systems{TaxSystemSimplifiedIncomeOutcome});
    EXPECT_EQ(FrUtils::snoMask({TaxSystemPatent, TaxSystemGeneral, TaxSystemPatent}), 33);
    EXPECT_EQ(TaxSystem::getDescription(TaxSystemGeneral), QStringLiteral("ОСН"));
    EXPECT_TRUE(TaxSystem::getDescription(static_cast<TaxSystemType>(3)).contains(QLatin1Char('3')));
}

TEST(FrUtils, PaymentObjectComesFromThePositionOrItsRequisite)
{
    // Each row: object and requisite 1212 of the position, version of the format, value to send.
    const std::tuple<int, int, const char*, int> cases[] = {
        {0, 10, "1.2", 10},
        {4, 10, "1.2", 4},
        {33, 0, "1.2", 33},
        {33, 0, "1.05", 1},
        {31, 0, "1.1", 2},
    };
    for (const auto& [object, requisite, version, expected] : cases) {
        FrPosition position;
        position.setPaymentObject(object);
        if (requisite != 0)
            position.setRequisite(FdRequisite(EFrDriver::PaymentObject, requisite));
        EXPECT_EQ(FrUtils::getPaymentObject(position, QLatin1String(version)), expected)
            << object << ' ' << requisite << ' ' << version;
    }
}

} // namespace
