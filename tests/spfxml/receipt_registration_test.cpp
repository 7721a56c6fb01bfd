#include "scriptedfrspf.h"

#include <fninfo.h>
#include <markedposition.h>

namespace {

using namespace testing;
using namespace hw::fr::common;
using Registration = ScriptedFrSpf;

TEST_F(Registration, sendsTheTaxSystemsInAClosedShift)
{
    const auto call = [&] {
        driver.registration({TaxSystemGeneral, TaxSystemPatent}, {}, "x", {}, {{"1018", 1}});
    };
    const MessageLog log;
    EXPECT_EQ(thrown(call), "FrCommandException: Регистрация невозможна - смена открыта в ФР");
    EXPECT_EQ(
        MessageLog::taken().back(), "error frdriver.spf_0: Регистрация невозможна - смена открыта в ФР");
    script->answers.remove(44);
    call();
    EXPECT_THAT(driver.getAllTaxSystems(), ElementsAre(TaxSystemSimplifiedIncome, TaxSystemPatent));
    EXPECT_EQ(driver.getFfdVersion(), "1.2");
    EXPECT_THAT(script->taken(), ElementsAre("18 x5 11:7{1021:1= 1205:4=8 1062:4=33}", "50 x5 "));
}

TEST_F(Registration, remembersTheVerdictsOnMarkingCodes)
{
    const auto check = [&](const char* answer, bool recheck = false) {
        script->answers[76] = answer;
        return driver.checkMarkingCode({2, "Я\u001d1", 1.5, 11}, recheck);
    };
    const char* const good = "<a><pa n='2106'>15</pa></a>";
    const char* const bad = "<a><pa n='2106'>0</pa></a>";
    EXPECT_EQ(
        thrown([&] { check("<a><pa n='2000'>1</pa></a>"); }), "FrCommandException: Некорректный ответ от ФР");
    script->answers.remove(44);
    script->taken();
    EXPECT_EQ(check(good), 15);
    EXPECT_THAT(script->taken(),
        ElementsAre("4 x5 2:7{1021:1=}",
            "76 x5 200017:7{1023:3=1.500 2000:1=d0af1d31 2003:4=2 2102:4=0 2108:4=11 1163:7{1300:1=9f1d31}}"));
    // Neither a new receipt forgets it, nor a failure.
    driver.checkOpen(sale);
    script->failing = 8;
    EXPECT_NE(thrown([&] { driver.checkClose(sale); }), "");
    script->failing = 90;
    EXPECT_NE(thrown([&] { driver.clearMarkingCodes(); }), "");
    script->failing = 0;
    EXPECT_EQ(check(bad), 15);
    EXPECT_EQ(check(bad, true), 0);
    EXPECT_EQ(check(good), 0);
    driver.clearMarkingCodes();
    EXPECT_EQ(check(good), 15);
    driver.checkClose(sale);
    EXPECT_EQ(check(bad), 0);
}

TEST_F(Registration, fillsTheStateOfTheFiscalDrive)
{
    script->answers[2]
        = "<a><a><pa n='LifePhase'>259</pa><pa n='CurrentDocData'>2</pa><pa n='StatusNeedChange'>1</pa>"
          "<pa n='StatusOverflow'>65</pa><pa n='1053'>1</pa><pa n='1097'>6</pa>"
          "<pa n='lastDocDateTime'>2026-03-01 14:05:09</pa>"
          "<pa n='ExpirationDate'>2027-04-02 00:00:00</pa></a></a>";
    const FnInfo info = driver.getFnInfo();
    EXPECT_EQ(info.validityDate.date, QDate(2027, 4, 2));
    EXPECT_EQ(info.fnStatus.lastFdDateTime, QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)));
    EXPECT_TRUE(info.fnStatus.hasDocData);
    // Numbers are cut to a byte: 259, and 1 | 65 * 4 | 8.
    EXPECT_EQ(info.fnStatus.lifePhase, 3);
    EXPECT_EQ(info.fnStatus.warningFlags, 13);
    EXPECT_EQ(info.ofdStatus.isConnected, 0);
    EXPECT_EQ(info.ofdStatus.firstUnsentNumber, 6);
}

} // namespace
