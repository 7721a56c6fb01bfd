#include "xmltext.h"

#include "spfxml/shiftstatus.h"
#include "spfxml/spfstatus.h"

#include <gtest/gtest.h>

namespace {

QDomDocument stateDocument(const QString& lifePhase, const QString& shiftState)
{
    return answerWith({
        {QStringLiteral("NetworkInterface"), QStringLiteral("eth0")},
        {QStringLiteral("PaperWidth"), QStringLiteral("48")},
        {QStringLiteral("1013"), QStringLiteral("0010512")},
        {QStringLiteral("KKTFWVersion"), QStringLiteral("1.2")},
        {QStringLiteral("LifePhase"), lifePhase},
        {QStringLiteral("CurrentDocType"), QStringLiteral("3")},
        {QStringLiteral("CurrentDocData"), QStringLiteral("1")},
        {QStringLiteral("ShiftState"), shiftState},
        {QStringLiteral("StatusNeedChange"), QStringLiteral("0")},
        {QStringLiteral("StatusEndingResource"), QStringLiteral("4")},
        {QStringLiteral("StatusOverflow"), QStringLiteral("2")},
        {QStringLiteral("1053"), QStringLiteral("8")},
        {QStringLiteral("lastDocDateTime"), QStringLiteral("2026-03-01 14:05:09")},
        {QStringLiteral("lastDocNumber"), QStringLiteral("17")},
        {QStringLiteral("1041"), QStringLiteral("9999")},
        {QStringLiteral("ExpirationDate"), QStringLiteral("2027-05-30 00:00:00")},
        {QStringLiteral("FWVersion"), QStringLiteral("fn_v_1")},
        {QStringLiteral("1097"), QStringLiteral("5")},
        {QStringLiteral("1116"), QStringLiteral("12")},
        {QStringLiteral("1098"), QStringLiteral("вчера")},
    });
}

TEST(SpfStatus, printsTheBlocks)
{
    const QDomDocument info = answerWith({{QStringLiteral("1037"), QStringLiteral("00077")},
        {QStringLiteral("SWVersion"), QStringLiteral("s5")}, {QStringLiteral("1189"), QStringLiteral("4")},
        {QStringLiteral("1190"), QStringLiteral("3")}});
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
    const spfxml::SpfStatus status(stateDocument(QStringLiteral("3"), QStringLiteral("1")), info);
    EXPECT_EQ(status.toString().toStdString(), expected);
}

TEST(SpfStatus, readsNothingAsEmptyAndZero)
{
    const spfxml::SpfStatus status{QDomDocument(), QDomDocument()};
    EXPECT_FALSE(status.fn.isShiftOpen);
    EXPECT_TRUE(status.toString().contains(QStringLiteral("Состояние смены: закрыта")));
    EXPECT_TRUE(
        status.toString().contains(QStringLiteral("Ширина ленты (символов): 0\n  Заводской номер ККТ: \n")));
}

TEST(FnStatus, namesTheLifePhase)
{
    const std::pair<const char*, const char*> cases[]
        = {{"1", "готовность к регистрации"}, {"3", "фискальный режим"}, {"7", "постфискальный режим"},
            {"15", "постфискальный режим"}, {"0", "неизвестный режим"}, {"2", "неизвестный режим"},
            {"8", "неизвестный режим"}, {"-1", "неизвестный режим"}, {"3000000000", "неизвестный режим"}};
    for (const auto& [phase, expected] : cases) {
        const spfxml::FnStatus status(stateDocument(QString::fromUtf8(phase), {}));
        EXPECT_EQ(status.getLifePhaseDescription().toStdString(), expected) << phase;
    }
}

// One reads a text, the other a number; "01" tells them apart.
TEST(ShiftStatus, differsFromTheFiscalDrive)
{
    const struct
    {
        const char* text;
        bool shift;
        bool drive;
    } cases[] = {{"1", true, true}, {"01", false, true}, {"0", false, false}, {"true", false, false}};
    for (const auto& c : cases) {
        const QDomDocument document = stateDocument({}, QString::fromUtf8(c.text));
        EXPECT_EQ(spfxml::ShiftStatus(document).opened, c.shift) << c.text;
        EXPECT_EQ(spfxml::FnStatus(document).isShiftOpen, c.drive) << c.text;
    }
    const spfxml::ShiftStatus status(answerWith({{QStringLiteral("ShiftOvertime"), QStringLiteral("1")},
        {QStringLiteral("1038"), QStringLiteral("7")}, {QStringLiteral("1042"), QStringLiteral("-")}}));
    EXPECT_TRUE(status.overtime);
    EXPECT_EQ(status.shiftNumber, 7);
    EXPECT_EQ(status.documentNumber, 0);
}

} // namespace
