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
    // A number alone is row 0.
    const QStringList rows = QStringLiteral(
        "1 2 4 5 6 7 8 11 12 13 20|0 20|1 20|2 20|3 21|0 21|1 22|0 22|1 22|2 22|3 22|4 23|0 23|1 23|2 23|3 23|4 "
        "23|5 24|0 24|1 24|2 24|3 24|4 24|5 25 26|1 26|2 26|3 26|4 26|5 26|6 27 30 31 37 38 40 41|0 41|1 41|2 "
        "41|3 41|4 50 51 52 53 54 55 56 57 58 59 60 62 63 64 65 67 68 70 71 72 73 74 75 81 82")
                                 .split(' ');
    ASSERT_EQ(rows.size(), 76);
    QStringList asked;
    for (const QString& row : rows)
        asked << "A1 " + row + (row.contains('|') ? "|" : "|0|");
    EXPECT_EQ(driver.sent(), asked.join("; ").toStdString());
    EXPECT_EQ(lines.at(0), QStringLiteral("------------- Параметры устройства -------------"));
    EXPECT_EQ(lines.at(1), QString(48, QLatin1Char('-')));
    EXPECT_EQ(lines.at(2), QStringLiteral("1.0 Номер кассы") + QStringLiteral("7").rightJustified(33));
    EXPECT_TRUE(lines.contains(QStringLiteral("20. Строки клише для документов")));
    EXPECT_TRUE(lines.contains(QStringLiteral("22.1 ") + QStringLiteral("Картой").rightJustified(43)));
    EXPECT_TRUE(lines.contains(QStringLiteral("41.2 Ширина столбца <Цена>")));
    EXPECT_THAT(
        logged(), testing::HasSubstr("d Получение параметра 41 2; w Ошибка при получении параметра: Отказ"));
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
    logged();
    device.answer(QStringLiteral("E2=refused"));
    EXPECT_FALSE(driver.setGraphicCliche(file));
    EXPECT_FALSE(driver.setGraphicCliche(QStringLiteral("none.png")));
    EXPECT_EQ(logged(),
        "i Программирование графического клише; d Программирование логотипа; e Отказ; "
        "i Программирование графического клише; e Не удалось загрузить изображение");
    device.answer(QStringLiteral("E2=port fault"));
    EXPECT_EQ(thrown([&] { driver.setGraphicCliche(file); }), "ComDriverException: Обрыв");
}
