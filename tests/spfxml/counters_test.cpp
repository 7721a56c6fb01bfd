#include "scriptedfrspf.h"

namespace {

using namespace testing;

// Sales, returns and money of a shift, with the totals of the drive and without them.
const char* const withTotals
    = "<a><pa n='1194' t='7'><pa n='1129' t='7'><pa n='1135'>3.0</pa><pa n='1201'>300.50</pa><pa n='1136'>100.5</pa>"
      "<pa n='1138'>150</pa><pa n='1218'>20</pa><pa n='1219'>25</pa><pa n='1220'>5</pa></pa>"
      "<pa n='1130' t='7'><pa n='1135'>1.9</pa><pa n='1201'>400</pa><pa n='1136'>400</pa></pa></pa>"
      "<pa n='1157' t='7'><pa n='1129' t='7'><pa n='1201'>9000.25</pa></pa></pa>"
      "<pa n='MOCounters' t='7'><pa n='MOIncomeCount'>2</pa><pa n='MOIncomeSum'>1000.5</pa>"
      "<pa n='MOOutcomeCount'>1</pa><pa n='MOOutcomeSum'>50</pa><pa n='CashSumm'>650.75</pa></pa></a>";
const char* const openShift = "<a><pa n='ShiftState'>1</pa><pa n='1038'>7</pa></a>";
const char* const closedShift = "<a><pa n='ShiftState'>0</pa><pa n='1038'>7</pa></a>";

class Counters : public ScriptedFrSpf
{
protected:
    Counters()
    {
        script->answers[2]
            = "<a><pa n='PaperWidth'>20</pa><pa n='1013'>00105123</pa><pa n='1041'>9999</pa></a>";
        script->answers[58] = "<a><pa n='1037'>0001</pa></a>";
        driver.setDeviceInfo();
        script->answers[40] = withTotals;
        script->answers[44] = openShift;
        script->taken();
    }

    // Registers by position, "-" for one that is not set.
    static std::string row(const QList<QVariant>& registers)
    {
        QStringList texts;
        for (const QVariant& value : registers)
            texts.append(value.isValid() ? value.toString() : QStringLiteral("-"));
        return texts.join('|').toStdString();
    }
};

TEST_F(Counters, belongToAnOpenShift)
{
    using Sums = QMap<int, double>;
    EXPECT_EQ(
        driver.getCheckCounters(hw::fr::CheckSale), (Sums{{0, 100.5}, {1, 150}, {2, 20}, {3, 25}, {4, 5}}));
    EXPECT_EQ(
        driver.getCheckCounters(hw::fr::CheckSaleReturn), (Sums{{0, 400}, {1, 0}, {2, 0}, {3, 0}, {4, 0}}));
    EXPECT_EQ(driver.getMoneyCounters(hw::fr::CheckCashIn).sum, 1000.5);
    EXPECT_EQ(driver.getMoneyCounters(hw::fr::CheckCashOut).count, 1);
    EXPECT_EQ(driver.getCountersDescription().join('\n').toStdString(),
        "---- Суммы в ФП ----\nПриход:\n тип 0 - 100.50\n тип 1 - 150.00\n тип 2 - 20.00\n тип 3 - 25.00\n"
        " тип 4 - 5.00\nВозврат прихода:\n тип 0 - 400.00\n тип 1 - 0.00\n тип 2 - 0.00\n тип 3 - 0.00\n"
        " тип 4 - 0.00");

    script->answers[44] = closedShift;
    script->taken();
    const MessageLog log;
    EXPECT_TRUE(driver.getCheckCounters(hw::fr::CheckSale).isEmpty());
    EXPECT_THAT(MessageLog::taken(), Contains("error frdriver.spf_0: Смена закрыта"));
    EXPECT_EQ(driver.getMoneyCounters(hw::fr::CheckCashIn).count, 0);
    EXPECT_EQ(driver.getCountersDescription().size(), 3);
    EXPECT_THAT(script->taken(), IsEmpty());
    // An unknown type fails before anything is logged.
    EXPECT_EQ(thrown([&] { driver.getCheckCounters(hw::fr::CheckCashIn); }),
        "FrCommandException: Тип чека не поддерживается ФР");
}

TEST_F(Counters, fillTheRegistersOfAShift)
{
    const auto begin = [&] {
        const KkmRegisterBeg r = driver.getKkmRegisterBeg();
        return row({r.producerCode, r.producerName, r.modelCode, r.modelName, r.serialNumber, r.totalSales,
            r.cashInDrawer, r.shiftNumber, r.registrationNumber, r.fnNumber});
    };
    EXPECT_EQ(begin(), "2|Сервис Плюс|5|СП802-Ф|00105123|9000.25|650.75|7|0001|9999");
    EXPECT_THAT(script->taken(), ElementsAre("40 x5 ", "40 x5 ", "58 x5 ", "2 x5 "));
    const std::string names
        = "Наличными|Электронными|Предварительная оплата (аванс)|Последующая оплата (кредит)|"
          "Иная форма оплаты (встречное предоставление)";
    const std::string sold = "9000.25|650.75|-99.5|3|300.5|100.5|150|20|25|5|-|1|400|400|0|0|0|0|-|" + names;
    EXPECT_EQ(row(driver.getKkmRegisterEnd().toList()), sold + "|-|1000.5|2|50|1");
    EXPECT_EQ(script->taken().size(), 5u);

    // After the shift the receipts still show, the money does not.
    script->answers[44] = closedShift;
    EXPECT_EQ(row(driver.getKkmRegisterEnd().toList()), sold + "|-|0|0|0|0");
    EXPECT_EQ(begin(), "2|Сервис Плюс|5|СП802-Ф|00105123|9000.25|650.75|8|0001|9999");
    script->failing = 40;
    EXPECT_EQ(thrown([&] { driver.getKkmRegisterBeg(); }), "FrCommandException: Отказ");
}

} // namespace
