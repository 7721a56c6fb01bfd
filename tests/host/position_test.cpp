#include "qtprinters.h"

#include <decimals.h>
#include <frposition.h>

#include <gtest/gtest.h>

#include <array>
#include <tuple>

namespace {

TEST(Position, PriceDiscountAndSumAgreeAndAreNotRounded)
{
    // Each row: price, count and discount; price and sum with discount.
    const std::array<double, 5> cases[] = {
        {50.0, 2.0, 10.0, 45.0, 90.0},
        {100.0, 3.0, 100.0, 100.0 - 100.0 / 3.0, 200.0},
        {33.33, 0.333, 0.0, 33.33, 33.33 * 0.333},
        {50.0, 2.0, -10.0, 55.0, 110.0},
        {50.0, 0.0, 0.0, 50.0, 0.0},
    };
    for (const auto& [price, count, discount, priceWithDiscount, sumWithDiscount] : cases) {
        FrPosition position("Молоко", price, count);
        position.setDiscsum(discount);
        EXPECT_DOUBLE_EQ(position.getPriceWithDisc(), priceWithDiscount);
        EXPECT_DOUBLE_EQ(position.getPossumWithDisc(), sumWithDiscount);
        EXPECT_DOUBLE_EQ(position.getPossum(), price * count);
    }
}

TEST(Position, RequisitesDecideWhichBlocksItHas)
{
    // Each row: a tag, and whether it makes agent, supplier and industry data.
    const std::tuple<EFrDriver::RequisiteTypes, bool, bool, bool> cases[] = {
        {EFrDriver::AgentData, true, false, false},
        {EFrDriver::SupplierData, false, true, false},
        {EFrDriver::ItemAgentType, false, true, false},
        {EFrDriver::IndustryRequisite, false, false, true},
        {EFrDriver::CountryOfOrigin, false, false, false},
    };
    for (const auto& [tag, agent, supplier, industry] : cases) {
        FrPosition position;
        position.setRequisite(FdRequisite(tag, "x"));
        EXPECT_TRUE(position.hasFdRequisite(tag));
        EXPECT_EQ(position.hasAgentDataRequisites(), agent) << tag;
        EXPECT_EQ(position.hasSupplierRequisites(), supplier) << tag;
        EXPECT_EQ(position.hasIndustryRequisites(), industry) << tag;
    }
    EXPECT_EQ(FrPosition().getRequisite(EFrDriver::AgentData).getTag(), EFrDriver::NoRequisite);
}

TEST(Position, LogLineIsOneLineWithSumsAndCode)
{
    FrPosition position("Молоко\n3,2%", 50.0, 1.5);
    position.setDiscsum(5.0);
    position.setMarkingCode(QStringLiteral("0104\x1d") + "93ab", MarkCommon);
    position.setRequisite(FdRequisite(EFrDriver::CountryOfOrigin, "643"));
    const QString line = position.toString();
    for (const char* part : {"Молоко", "1.500", "50.00", "5.00", "70.00", "0104<GS>93ab", "1230"})
        EXPECT_TRUE(line.contains(QString::fromUtf8(part))) << part << " in " << line.toStdString();
    EXPECT_FALSE(line.contains(QLatin1Char('\n')));
    position.setDiscsum(-0.001);
    EXPECT_FALSE(position.toString().contains("-0.00"));
}

TEST(Decimals, WhatRoundsToZeroHasNoSign)
{
    const std::tuple<double, int, const char*> rows[]
        = {{-0.0, 2, "0.00"}, {-0.004, 2, "0.00"}, {-0.01, 2, "-0.01"}, {-0.004, 3, "-0.004"}};
    for (const auto& [number, decimals, text] : rows)
        EXPECT_EQ(fixedDecimals(number, decimals), QLatin1String(text));
}

TEST(Requisite, CompositeOpensInAscendingOrderOfItsTags)
{
    const FdRequisite industry(EFrDriver::IndustryRequisite,
        QVariantMap{{"1264", "123/45"}, {"44", 1}, {"1262", "030"}, {"65535", 2}, {"name", 3}, {"70000", 4}});
    QList<int> tags;
    for (const EFrDriver::RequisiteTypes tag : industry.toMap().keys())
        tags.append(static_cast<int>(tag));
    EXPECT_EQ(tags, (QList<int>{44, 1262, 1264, 65535}));
    EXPECT_EQ(industry.toMap().value(EFrDriver::IndustryAuthority).getSourceData().toString(), "030");
}

TEST(Requisite, FieldsGoInAndComeOutTheSameAlsoWhenNested)
{
    const FdRequisite phone(EFrDriver::SupplierPhone, "+79001234567");
    const FdRequisite supplier
        = FdRequisite::composite(EFrDriver::SupplierData, {{EFrDriver::SupplierPhone, phone}});
    const FdRequisite outer = FdRequisite::composite(EFrDriver::Item, {{EFrDriver::SupplierData, supplier}});
    const FdRequisiteMap inner = outer.toMap().value(EFrDriver::SupplierData).toMap();
    EXPECT_EQ(inner.value(EFrDriver::SupplierPhone).getSourceData(), phone.getSourceData());
    EXPECT_TRUE(FdRequisite().toMap().isEmpty());
}

TEST(Requisite, NamesAreThoseOfTheFiscalDataFormat)
{
    EXPECT_EQ(FdRequisite(EFrDriver::CashierInn, {}).getDescription(), "ИНН кассира");
    const auto unknown = static_cast<EFrDriver::RequisiteTypes>(1999);
    EXPECT_EQ(FdRequisite(unknown, {}).getDescription(), "реквизит 1999");
}

} // namespace
