#include "xmltext.h"

#include "spfxml/shiftstatus.h"
#include "spfxml/spfstatus.h"

#include <gmock/gmock.h>

namespace {

TEST(SpfStatus, printsTheBlocks)
{
    const QDomDocument info = answerWith("1037=00077|SWVersion=s5|1189=4|1190=3");
    const QDomDocument state = answerWith(
        "NetworkInterface=eth0|PaperWidth=48|1013=0010512|KKTFWVersion=1.2|LifePhase=3|CurrentDocType=3|"
        "CurrentDocData=1|ShiftState=1|StatusNeedChange=0|StatusEndingResource=4|StatusOverflow=2|1053=8|"
        "lastDocDateTime=2026-03-01 14:05:09|lastDocNumber=17|1041=9999|ExpirationDate=2027-05-30 00:00:00|"
        "FWVersion=fn_v_1|1097=5|1116=12|1098=вчера");
    const char* const expected = "Статус ФР\n"
                                 "  Сетевые интерфейсы: eth0\n"
                                 "  Ширина ленты (символов): 48\n"
                                 "  Заводской номер ККТ: 0010512\n"
                                 "  Версия прошивки ККТ: 1.2\n"
                                 "  Версия сборки: s5\n"
                                 "  Версия ФФД ККТ ФН: 4\n"
                                 "  Версия ФФД ККТ: 3\n"
                                 "  Регистрационный номер ККТ: 00077\n"
                                 "Статус ФН\n"
                                 "  Состояние фазы жизни: 3 (фискальный режим)\n"
                                 "  Тип текущего документа: 3\n"
                                 "  Наличие данных текущего документа: 1\n"
                                 "  Состояние смены: открыта\n"
                                 "  Требуется замена ФН: 0\n"
                                 "  Заканчивается ресурс ФН: 4\n"
                                 "  ФН переполнен: 2\n"
                                 "  Долгое ожидание ОФД: 8\n"
                                 "  Дата и время текущего документа: 2026-03-01 14:05:09\n"
                                 "  Номер последнего ФД: 17\n"
                                 "  Номер ФН: 9999\n"
                                 "  Срок действия ФН: 2027-05-30 00:00:00\n"
                                 "  Версия ФН: fn_v_1\n"
                                 "Статус ОФД\n"
                                 "  Длина очереди неотправленных документов: 5\n"
                                 "  Номер первого неотправленного документа: 12\n"
                                 "  Время первого неотправленного документа: вчера";
    EXPECT_EQ(spfxml::SpfStatus(state, info).toString().toStdString(), expected);
}

TEST(SpfStatus, aSilentRegisterReadsAsZeros)
{
    const char* const expected = "Статус ФР\n  Сетевые интерфейсы: \n  Ширина ленты (символов): 0\n"
                                 "  Заводской номер ККТ: \n  Версия прошивки ККТ: \n  Версия сборки: \n"
                                 "  Версия ФФД ККТ ФН: \n  Версия ФФД ККТ: \n"
                                 "  Регистрационный номер ККТ: \nСтатус ФН\n"
                                 "  Состояние фазы жизни: 0 (неизвестный режим)\n"
                                 "  Тип текущего документа: 0\n  Наличие данных текущего документа: 0\n"
                                 "  Состояние смены: закрыта\n  Требуется замена ФН: 0\n";
    EXPECT_THAT(spfxml::SpfStatus({}, {}).toString().toStdString(), testing::StartsWith(expected));
}

TEST(FnStatus, namesTheLifePhase)
{
    const QMap<std::string, const char*> known{{"1", "готовность к регистрации"}, {"3", "фискальный режим"},
        {"7", "постфискальный режим"}, {"15", "постфискальный режим"}};
    for (const std::string phase : {"-1", "0", "1", "2", "3", "4", "5", "7", "8", "15", "31", "4294967299"}) {
        const spfxml::FnStatus status(answerWith(("LifePhase=" + phase).c_str()));
        EXPECT_EQ(status.getLifePhaseDescription().toStdString(), known.value(phase, "неизвестный режим"))
            << phase;
    }
}

// One reads a text, the other a number; "01" tells them apart.
TEST(ShiftStatus, differsFromTheFiscalDrive)
{
    const std::tuple<const char*, bool, bool> cases[] = {{"ShiftState=1", true, true},
        {"ShiftState=01", false, true}, {"ShiftState=0", false, false}, {"1=1", false, false}};
    for (const auto& [answer, shift, drive] : cases) {
        EXPECT_EQ(spfxml::ShiftStatus(answerWith(answer)).opened, shift) << answer;
        EXPECT_EQ(spfxml::FnStatus(answerWith(answer)).isShiftOpen, drive) << answer;
    }
    const spfxml::ShiftStatus status(answerWith("ShiftOvertime=1|1038=7|1042=-"));
    EXPECT_TRUE(status.overtime);
    EXPECT_EQ(status.shiftNumber, 7);
    EXPECT_EQ(status.documentNumber, 0);
}

} // namespace
