#include "hexdriver.h"

#include <QImage>
#include <QTemporaryDir>

TEST_F(HexDriverTest, theParameterPrintoutAsksForEachRowOnce)
{
    driver.setConnection();
    driver.sent();
    logged();
    device.answer(QStringLiteral("A1 1|0|= 7 ; A1 22|1|={Картой}; A1 41|2|=refused"));
    const QStringList lines = driver.getParametersDescription();
    // Which rows there are is tried out on a whole register.
    EXPECT_THAT(driver.sent(),
        testing::AllOf(testing::StartsWith("A1 1|0|; A1 2|0|; A1 4|0|; A1 5|0|; "),
            testing::HasSubstr("; A1 20|3|; A1 21|0|; A1 21|1|; A1 22|0|; "),
            testing::EndsWith("; A1 81|0|; A1 82|0|")));
    EXPECT_EQ(lines.at(0), QStringLiteral("------------- Параметры устройства -------------"));
    EXPECT_EQ(lines.at(1), QString(48, QLatin1Char('-')));
    EXPECT_EQ(lines.at(2), QStringLiteral("1.0 Номер кассы") + QStringLiteral("7").rightJustified(33));
    EXPECT_TRUE(lines.contains(QStringLiteral("20. Строки клише для документов")));
    EXPECT_TRUE(lines.contains(QStringLiteral("22.1 ") + QStringLiteral("Картой").rightJustified(43)));
    EXPECT_TRUE(lines.contains(QStringLiteral("41.2 Ширина столбца <Цена>")));
    EXPECT_THAT(
        logged(), testing::HasSubstr("d Получение параметра 41 2; w Ошибка при получении параметра: Отказ"));
}

TEST_F(HexDriverTest, parametersAreToldAsDataAndReadByName)
{
    using hw::fr::RegisterParameter;
    const QList<RegisterParameter> known = driver.knownParameters();
    EXPECT_EQ(driver.sent(), "");
    ASSERT_EQ(known.size(), 76);
    const auto told = [](const RegisterParameter& parameter) {
        return QStringLiteral("%1 %2 t%3 %4..%5%6=%7")
            .arg(parameter.name, parameter.caption)
            .arg(static_cast<int>(parameter.type))
            .arg(parameter.least.value_or(-7))
            .arg(parameter.greatest.value_or(-7))
            .arg(parameter.isReadOnly ? QStringLiteral(" r") : QString(), parameter.value)
            .toStdString();
    };
    EXPECT_EQ(told(known.at(0)), "1.0 Номер кассы t1 1..9999=");
    device.answer(QStringLiteral("A1 24|1|= 20 ; A1 41|2|=9; A1 20|0|=refused; A1 82|0|=010126"));
    std::vector<std::string> read;
    for (const RegisterParameter& parameter :
        driver.readParameters({"41.2", "24.1", "20.0", "82.0", "777.0"}))
        read.push_back(told(parameter));
    EXPECT_THAT(read,
        testing::ElementsAre(
            "20.0 Строки клише для документов t0 0..-7=", "24.1 Процент ставки налога t2 -7..-7 r=20",
            "41.2 Ширина столбца <Цена> t1 6..9=9", "82.0 Дата автопереключения на НДС 20% t3 6..6=010126"));
    EXPECT_EQ(driver.sent(), "A1 20|0|; A1 24|1|; A1 41|2|; A1 82|0|");

    // What the table does not know can be written all the same.
    const std::optional<FrParameter> unknown
        = driver.assignment(QStringLiteral("999.3"), QStringLiteral("x"));
    ASSERT_TRUE(unknown.has_value());
    EXPECT_EQ(std::tuple(unknown->getFieldNum(), unknown->getRowNum()), std::tuple(999, 3));
    EXPECT_EQ(driver.assignment(QStringLiteral("6"), QString())->getFieldNum(), 6);
    EXPECT_FALSE(driver.assignment(QStringLiteral("OFD.OFD.OFD_Host"), QString()).has_value());
}

TEST_F(HexDriverTest, pictureBecomesAMonochromeBitmapOfTheDevicesSize)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("logo.png"));
    for (const QSize size : {QSize(288, 100), QSize(300, 120), QSize(100, 50)}) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        for (int i = 0; i < 50; ++i)
            image.setPixel(i, i, qRgb(0, 0, 0));
        ASSERT_TRUE(image.save(file));
        EXPECT_TRUE(driver.setGraphicCliche(file));

        const QByteArray block = device.lastFollowUp;
        EXPECT_EQ(driver.sent(), "E2 " + std::to_string(block.size() - 1) + '|');
        EXPECT_EQ(block.left(3), "\x1B\x42\x4D");
        const QImage sent = QImage::fromData(block.mid(1), "BMP");
        EXPECT_EQ(sent.size(), QSize(288, 100));
        EXPECT_EQ(sent.depth(), 1);
        const QRect kept(QPoint(0, 0), size.boundedTo(QSize(288, 100)));
        EXPECT_EQ(sent.copy(kept).convertToFormat(QImage::Format_RGB32), image.copy(kept));
    }
    EXPECT_THAT(logged(),
        testing::EndsWith("; i Программирование графического клише; d Программирование логотипа; done"));
    device.answer(QStringLiteral("E2=refused"));
    EXPECT_FALSE(driver.setGraphicCliche(file));
    EXPECT_EQ(logged(), "i Программирование графического клише; d Программирование логотипа; e Отказ");
    device.answer(QStringLiteral("E2=port fault"));
    EXPECT_EQ(thrown([&] { driver.setGraphicCliche(file); }), "ComDriverException: Обрыв");
}
