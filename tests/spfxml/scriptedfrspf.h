#pragma once

#include "driver/messagelog.h"
#include "driver/mockserialdriver.h"
#include "driver/thrown.h"
#include "spfxml/frspf.h"
#include "xmltext.h"

#include <driverlogger.h>
#include <fiscaldocument.h>
#include <frspfsettings.h>

#include <QJsonObject>

/// The commands over a scripted register: an open shift, the tax systems 2 and 32.
struct ScriptedCommand : spfxml::SpfFrCommand
{
    ScriptedCommand()
        : SpfFrCommand(nullptr, driverLogger("xml"), QString())
    {
    }

    using SpfFrCommand::tailText;

    /// Writes down "code x attempts tree", apart from the questions for the shift.
    QDomDocument requestData(
        ECommandCode code, const spfxml::RequestParams& params, int attempts) const override
    {
        const int number = static_cast<int>(code);
        const std::string tree = params.getName().isEmpty() ? std::string() : flat({params});
        if (number != 44)
            sent.push_back(std::to_string(number) + " x" + std::to_string(attempts) + " " + tree);
        else
            EXPECT_EQ(attempts, 5);
        if (number == failing)
            throw FrWaitForPaperException("Отказ");
        const QByteArray answer = answers.value(number);
        if (answer.isEmpty())
            return {};
        return answer.startsWith('<') ? xmlDocument(answer) : answerWith(answer);
    }
    /// What was sent since the last call.
    std::vector<std::string> taken() const { return std::exchange(sent, {}); }

    mutable std::vector<std::string> sent;
    /// Documents, or "key=text|key=text" for their leaves.
    QMap<int, const char*> answers{
        {44, "<a><pa n='ShiftState'>1</pa></a>"}, {50, "<a><pa n='1062'>34</pa></a>"}};
    int failing = 0;
};

class ScriptedFrSpf : public testing::Test
{
protected:
    struct Driver : spfxml::FrSpf
    {
        using FrSpf::command;
        using FrSpf::FrSpf;
        using FrSpf::optionMask;
    };

    ScriptedFrSpf()
    {
        driver.command = script;
        driver.portOpen();
    }

    testing::NiceMock<MockSerialDriver> serial;
    FrSpfSettings settings;
    Driver driver{&serial, &settings};
    QSharedPointer<ScriptedCommand> script = QSharedPointer<ScriptedCommand>::create();
    const FiscalDocument sale;
};
