#pragma once

#include "driver/messagelog.h"
#include "driver/thrown.h"
#include "exceptions.h"
#include "frspfsettings.h"
#include "fruser.h"
#include "hexline.h"
#include "spfhex/command.h"
#include "spfhex/frspf.h"

#include <gmock/gmock.h>

/// The text as UTF-8, its parts in braces as CP866: Cyrillic stands from 0x80 on, from р on at 0xE0.
inline std::string wire(const std::string& text)
{
    std::string bytes;
    bool inBraces = false;
    for (const QChar character : QString::fromStdString(text)) {
        const int code = character.unicode();
        if (character == QLatin1Char('{') || character == QLatin1Char('}'))
            inBraces = !inBraces;
        else
            bytes += inBraces && code >= 0x410
                ? std::string(1, static_cast<char>(code - 0x410 + (code < 0x440 ? 0x80 : 0xB0)))
                : QString(character).toStdString();
    }
    return bytes;
}

/// Commands without a line. What would be sent is kept as "code field|field|", and the answers are given
/// beforehand by such a text or by the code alone, their fields with bars between them.
class RecordingCommand : public spfhex::Command
{
public:
    using Command::Command;

    QByteArray sendCommand(
        CommandCode code, const QList<QVariant>& fields, const QByteArray& followUp) const override
    {
        const std::string name = QByteArray::number(code, 16).rightJustified(2, '0').toUpper().toStdString();
        std::string frame = name;
        for (const QVariant& field : fields)
            frame += (frame == name ? " " : "") + field.toByteArray().toStdString() + '|';
        sent += (sent.empty() ? "" : "; ") + frame;
        lastFollowUp = followUp;
        // Without fields a caller sees the answer's trailer.
        const std::string answer = wire(answers.value(frame, answers.value(name, "\x03\x32\x41")));
        if (answer == "refused")
            throw FrCommandException(QStringLiteral("Отказ"));
        if (answer == "no connection")
            throw FrNoConnectionException(QStringLiteral("Нет связи с ФР"));
        if (answer == "port fault")
            throw ComDriverException(QStringLiteral("Обрыв"));
        return QByteArray::fromStdString(answer).replace('|', '\x1C');
    }

    /// Answers as "frame=answer; frame=answer".
    void answer(const QString& texts)
    {
        for (const QString& text : texts.split(QStringLiteral("; "), Qt::SkipEmptyParts))
            answers[text.section('=', 0, 0).toStdString()] = text.section('=', 1).toStdString();
    }

    QMap<std::string, std::string> answers;
    mutable std::string sent;
    mutable QByteArray lastFollowUp;
};

/// The driver over recorded commands, its port open and a cashier logged in.
class HexDriver : public spfhex::FrSpf
{
public:
    HexDriver(AbstractSerialDriver* serialDriver, FrSpfSettings* driverSettings)
        : FrSpf(serialDriver, driverSettings)
        , recorder(new RecordingCommand(serialDriver, logger))
    {
        command.reset(recorder);
        portState = PortIsOpen;
        cashierLogin({QStringLiteral("Анна Ким"), QStringLiteral("кассир"), QStringLiteral("7701")});
    }

    std::string sent() { return std::exchange(recorder->sent, {}); }

    using FrSpf::agentDataBound;
    using FrSpf::checkedMarkingCodes;
    using FrSpf::optionMask;
    using FrSpf::portState;
    using FrSpf::setConnection;

    RecordingCommand* recorder = nullptr;
};

struct HexDriverTest : testing::Test
{
    HexDriverTest()
    {
        device.answer(QStringLiteral(
            "A0=0|0|0; A4=3|1|0|1|6; A4 1|=1234; A4 2|=010224|153045; A4 3|=9960440300000001; A4 5|=310830; "
            "A4 6|=11; A4 7|=2; A4 8|=3; A4 10|=1230; A4 11|=310124|000102; A4 12|=1.2; A4 15|= fn  v1 |0; "
            "A4 14|=0|1|2|3|4|5|78; A5 0|=5; A5 0|1|=77; A5 1|=41; A5 3|=10.5|20|30|40|50; A5 5|=999.99; "
            "A5 4|=1|2|3|4|5.25; A5 7|=0012; A5 9|=7712345678; A5 10|=0000000001; A6= 00123 ; A8=2; "
            "A5 13|=100|101|102|103|104|105|106|107|108|109|110|111|112; A7=010224|153045; C0 10|=34; "
            "A5 14|=0.5|1.5|2.5|3.5|4.5|5.5|6.5|7.5|8.5|9.5|10.5; "
            "C0=f0|f1|f2|f3|f4|f5|f6|f7|f8|f9|f10|f11|f12"));
    }

    static std::string logged() { return takenLines(); }

    HexLine serial;
    FrSpfSettings settings;
    HexDriver driver{&serial, &settings};
    RecordingCommand& device = *driver.recorder;
    MessageLog messages;
};
