#include "qtprinters.h"

#include <deviceinfo.h>
#include <fninfo.h>

#include <gtest/gtest.h>

namespace {

TEST(DeviceInfo, KnowsItsProducerAndShowsAllItHas)
{
    DeviceInfo info(QStringLiteral("2"), QStringLiteral("0"));
    EXPECT_EQ(info.getProducerName(false), QStringLiteral("Сервис Плюс"));
    EXPECT_EQ(info.getProducerName(true), QStringLiteral("2 Сервис Плюс"));
    info.setModel(QStringLiteral("17"), QStringLiteral("СП402-Ф"));
    info.setNumber(QStringLiteral("0490000123"));
    info.setFirmwareVersion(QStringLiteral("3.0.1"));
    info.setBandInfo(48, 4, 30, 1);
    info.setBandWidthInfo({{EFrDriver::NormalFont, 44}, {EFrDriver::CondensedFont, 57}});
    const QString text = info.toString();
    EXPECT_GT(text.count(QLatin1Char('\n')), 2);
    for (const char* part : {"Сервис Плюс", "СП402-Ф", "0490000123", "3.0.1", "48", "57"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(part))) << part;

    info.setProducerCode(QStringLiteral("9"));
    EXPECT_EQ(info.getProducerName(false), QString());
    EXPECT_EQ(info.getProducerName(true), QStringLiteral("9"));
}

TEST(FnStatusInfo, EachWarningBitHasALineOfItsOwn)
{
    FnStatusInfo status;
    const char* const words[] = {"замена", "Ресурс", "Память", "ОФД"};
    for (int bit = 0; bit < 4; ++bit) {
        status.warningFlags = static_cast<quint8>(1 << bit);
        const QStringList set = status.getStrInfo().filter(QStringLiteral(": да"));
        ASSERT_EQ(set.size(), 1);
        EXPECT_TRUE(set.constFirst().contains(QString::fromUtf8(words[bit]))) << words[bit];
    }
}

TEST(FnStatusInfo, LinesShowTheState)
{
    FnStatusInfo status;
    status.lastFdNumber = 4000000000U;
    status.lifePhase = 3;
    status.isShiftOpen = true;
    status.lastFdDateTime = QDateTime(QDate(2024, 2, 1), QTime(3, 4));
    status.fnNumber = QStringLiteral("9999078900004312");
    const QStringList lines = status.getStrInfo();
    for (const char* line : {"Номер ФН: 9999078900004312", "Фаза жизни ФН: 3 (фискальный режим)",
             "Смена открыта: да", "Данные текущего документа получены: нет",
             "Номер последнего ФД: 4000000000", "Дата и время последнего ФД: 01.02.2024 03:04:00"})
        EXPECT_TRUE(lines.contains(QString::fromUtf8(line))) << line;
    status.lifePhase = 5;
    EXPECT_TRUE(status.getStrInfo().contains(QStringLiteral("Фаза жизни ФН: 5 (неизвестная фаза)")));
}

TEST(ValidityDate, BytesAreShownAsNumbers)
{
    FnUtils::ValidityDate validity;
    EXPECT_EQ(validity.getStrInfo().constFirst(), QStringLiteral("Срок действия ФН: нет данных"));
    validity = {QDate(2025, 12, 31), 29, 1};
    EXPECT_EQ(validity.getStrInfo(),
        (QStringList{QStringLiteral("Срок действия ФН: 31.12.2025"),
            QStringLiteral("Доступно регистраций: 29"), QStringLiteral("Проведено регистраций: 1")}));
}

TEST(OfdStatusInfo, LineTellsWhetherADocumentWaits)
{
    OfdStatusInfo status;
    EXPECT_EQ(status.toString(),
        QStringLiteral("Соединение с ОФД: нет, непереданный документ: нет данных, "
                       "дата и время: нет данных"));
    status = {1, QDateTime(QDate(2024, 2, 1), QTime(3, 4, 5)), 12, QStringLiteral("ждёт")};
    EXPECT_EQ(status.toString(),
        QStringLiteral("Соединение с ОФД: да, непереданный документ: 12, "
                       "дата и время: 01.02.2024 03:04:05, сообщение: ждёт"));
}

} // namespace
