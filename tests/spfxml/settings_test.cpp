#include "scriptedfrspf.h"

#include <frparameter.h>

#include <QImage>
#include <QTemporaryDir>

namespace {

using namespace testing;
using Settings = ScriptedFrSpf;

QList<FrParameter> paths(const QStringList& values)
{
    QList<FrParameter> parameters;
    for (const QString& value : values)
        parameters.append(FrParameter(1, 0, 0, value));
    return parameters;
}

TEST_F(Settings, writeWhatTheirPathsName)
{
    const std::tuple<QStringList, bool, std::vector<std::string>> cases[] = {
        {{"MACRO.KKTCounters.PrintZeroCounters.true"}, true,
            {"56 x5 200005:7{MACRO:7{KKTCounters:7{PrintZeroCounters:1=true}}}"}},
        // A value keeps its points and ends at a line feed; of the same path the last one counts; the tree is
        // sorted.
        {{"PRN.Printer.NarrowWidth.0", "OFD.OFD.OFD_Host.ofd.test\nx", "PRN.Printer.NarrowWidth.1"}, true,
            {"56 x5 200005:7{OFD:7{OFD:7{OFD_Host:1=ofd.test}} PRN:7{Printer:7{NarrowWidth:1=1}}}"}},
        // One bad name anywhere, and nothing is written.
        {{"PRN.Printer.NarrowWidth.1", "PRN.Printer.Wide.1"}, false, {}},
        {{"PRN.Printer.NarrowWidth.1", "NarrowWidth=1"}, false, {}},
        // The hyphen does not match.
        {{"IMS.ims-client.ims_session_interval_tr_sec.60"}, false, {}},
    };
    for (const auto& [values, done, sent] : cases) {
        EXPECT_EQ(driver.setParams(paths(values)), done) << values.join('|').toStdString();
        EXPECT_EQ(script->taken(), sent) << values.join('|').toStdString();
    }
    script->failing = 56;
    EXPECT_FALSE(driver.setParams(paths({"PRN.Printer.NarrowWidth.1"})));
    EXPECT_EQ(thrown([&] { driver.setDefaults(); }), "FrWaitForPaperException: Отказ");
}

TEST_F(Settings, areCheckedByTheCommandWithoutTheLimitsOfPaths)
{
    const auto write = [&](const QString& section, const QString& subsection, const QString& name) {
        return thrown([&] { script->setParameters({{section, {{subsection, {{name, "abc"}}}}}}); });
    };
    EXPECT_EQ(write("X", "Y", "Z"), "FrCommandException: Секция 'X' не найдена");
    EXPECT_EQ(write("PRN", "Y", "Z"), "FrCommandException: Подсекция 'PRN.Y' не найдена");
    EXPECT_EQ(write("PRN", "QR", "Z"), "FrCommandException: Настройка 'PRN.QR.Z' не найдена");
    EXPECT_THAT(script->taken(), IsEmpty());
    // A text that is no number becomes 0 where the device wants one.
    EXPECT_EQ(write("IMS", "ims-client", "ims_session_interval_tr_sec"), "");
    script->setParameters({{"PRN", {}}, {"OFD", {{"OFD", {}}}}});
    EXPECT_TRUE(driver.setDefaults());
    EXPECT_THAT(script->taken(),
        ElementsAre("56 x5 200005:7{IMS:7{ims-client:7{ims_session_interval_tr_sec:4=0}}}",
            "56 x5 200005:7{MACRO:7{KKTCounters:7{GetCumulativeCounters:1=true}}}"));
}

TEST_F(Settings, arePrintedInTheOrderOfTheAnswer)
{
    script->answers[2] = "<a><pa n='PaperWidth'>32</pa><pa n='1013'>00105</pa></a>";
    driver.setDeviceInfo();
    script->answers[54]
        = "<pa n='200004'><pa n='PRN'><pa n='QR'><pa n='QRFastPrint' t='1'>true</pa></pa></pa>"
          "<pa n='NEW'><pa n='Sub'><pa n='Par' t='1'>1</pa></pa></pa></pa>";
    EXPECT_EQ(driver.getParametersDescription().join('\n').toStdString(),
        "----- Параметры устройства -----\n--------------------------------\n"
        "------ Настройки принтера ------\nСпособ печати QR кода\n"
        "* Включение/выключение\nускоренной печати QR-кода   true\n"
        "---------------  ---------------\n\n*                              1");
}

TEST_F(Settings, areToldAsDataInOneExchange)
{
    const QList<hw::fr::RegisterParameter> known = driver.knownParameters();
    EXPECT_THAT(script->taken(), IsEmpty());
    ASSERT_EQ(known.size(), 51);
    EXPECT_EQ(known.at(14).name, "OFD.OFD.1208");
    EXPECT_EQ(known.at(14).caption, "Сайт чеков");
    EXPECT_EQ(known.at(48).type, hw::fr::RegisterParameter::Type::Number);

    script->answers[54] = "<pa n='200004'><pa n='OFD'><pa n='OFD'><pa n='OFD_Port' t='1'>7777</pa>"
                          "<pa n='OFD_New' t='1'> x </pa><pa n='OFD_Host' t='1'>a</pa></pa></pa></pa>";
    QStringList read;
    for (const auto& parameter :
        driver.readParameters({"OFD.OFD.OFD_Port", "OFD.OFD.OFD_New", "OFD.OFD.1208"}))
        read.append(parameter.name + '|' + parameter.caption + '|' + parameter.value);
    EXPECT_EQ(read, QStringList({"OFD.OFD.OFD_Port|Порт ОФД|7777", "OFD.OFD.OFD_New||x"}));
    EXPECT_EQ(script->taken().size(), 1U);

    EXPECT_EQ(driver.assignment("OFD.OFD.OFD_Host", "a.b")->getValue(), "OFD.OFD.OFD_Host.a.b");
    for (const char* const name : {"OFD_Host", "OFD.OFD.OFD_Host.x", "6.0", ""})
        EXPECT_FALSE(driver.assignment(name, {}).has_value()) << name;
}

TEST_F(Settings, dressTheReceipt)
{
    EXPECT_TRUE(driver.setCliche({"1", "2", "3", "4", "5"}));
    EXPECT_TRUE(driver.setCliche({}));
    EXPECT_THAT(script->taken(),
        ElementsAre("56 x5 200005:7{PRN:7{PrinterHeader:7{Cliche:1=1\n2\n3\n4}}}",
            "56 x5 200005:7{PRN:7{PrinterHeader:7{Cliche:1=}}}"));
    script->failing = 56;
    EXPECT_EQ(thrown([&] { driver.setCliche({"1"}); }), "FrWaitForPaperException: Отказ");
    EXPECT_FALSE(driver.setTail({"1"}));
}

TEST_F(Settings, scaleThePictureToWhatTheDeviceTakes)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("logo.png");
    const std::pair<QSize, QSize> sizes[]{{{40, 40}, {40, 50}}, {{600, 200}, {575, 100}},
        {{576, 60}, {575, 60}}, {{100, 100}, {100, 100}}, {{575, 50}, {575, 50}}};
    for (const auto& [given, expected] : sizes) {
        QImage picture(given, QImage::Format_RGB32);
        picture.fill(Qt::white);
        ASSERT_TRUE(picture.save(file));
        const MessageLog log;
        EXPECT_TRUE(driver.setGraphicCliche(file));
        EXPECT_EQ(takenLines(), "i Программирование графического клише; d Установка параметров ККТ; done");
        const QByteArray sent = QByteArray::fromStdString(script->taken().at(0));
        ASSERT_TRUE(sent.startsWith("56 x5 200005:7{PRN:7{LogoImage:7{Image:1=424d"));
        const QByteArray digits = sent.mid(sent.lastIndexOf('=') + 1).chopped(3);
        const QImage decoded = QImage::fromData(QByteArray::fromHex(digits), "BMP");
        EXPECT_EQ(decoded.size(), expected);
        EXPECT_EQ(decoded.pixelColor(5, 5), QColor(Qt::white));
    }
    EXPECT_FALSE(driver.setGraphicCliche(folder.filePath("none.png")));
    script->failing = 56;
    const MessageLog log;
    EXPECT_EQ(thrown([&] { driver.setGraphicCliche(file); }), "FrWaitForPaperException: Отказ");
    EXPECT_EQ(takenLines(), "i Программирование графического клише; d Установка параметров ККТ; e Отказ");
}

} // namespace
