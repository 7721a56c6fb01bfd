#include "qtprinters.h"

#include <deviceinfo.h>
#include <fninfo.h>
#include <kkmregisterend.h>

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
    EXPECT_EQ(info.getModelCode(), QStringLiteral("17"));
    EXPECT_EQ(info.getBandWidth(), 48U);
    EXPECT_EQ(info.getClicheLineCount(), 4U);
    EXPECT_EQ(info.getTailLineCount(), 30U);
    EXPECT_EQ(info.getMargin(), 1U);
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
    const QStringList quiet = status.getStrInfo();
    const char* const words[] = {"замена", "Ресурс", "Память", "ОФД"};
    for (int bit = 0; bit < 4; ++bit) {
        status.warningFlags = static_cast<quint8>(1 << bit);
        const QStringList lines = status.getStrInfo();
        ASSERT_EQ(lines.size(), quiet.size());
        for (qsizetype line = 0; line < lines.size(); ++line) {
            const bool isMeant = lines.at(line).contains(QString::fromUtf8(words[bit]));
            EXPECT_EQ(lines.at(line) != quiet.at(line), isMeant) << lines.at(line).toStdString();
            EXPECT_TRUE(!isMeant || lines.at(line).endsWith(QStringLiteral(": да")));
        }
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

TEST(KkmRegisterEnd, HostsReadTheRegistersByPosition)
{
    KkmRegisterEnd registers;
    registers.saleSum = 4;
    registers.salePayments[4] = 9;
    registers.returnCount = 11;
    registers.returnPayments[0] = 13;
    registers.paymentNames[4] = 23;
    registers.cashInSum = 25;
    registers.cashOutCount = 28;
    const QList<QVariant> list = registers.toList();
    ASSERT_EQ(list.size(), 29);
    for (const int position : {4, 9, 11, 13, 23, 25, 28})
        EXPECT_EQ(list.at(position).toInt(), position);
    EXPECT_FALSE(list.at(10).isValid());
}

} // namespace
