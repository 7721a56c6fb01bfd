#pragma once

#include "driver/messagelog.h"
#include "driver/mockserialdriver.h"
#include "driver/thrown.h"
#include "spfxml/frspf.h"
#include "xmltext.h"

#include <fiscaldocument.h>
#include <frspfsettings.h>
#include <logmanager.h>

#include <QJsonObject>

/// A tree on one line: "name:type=value" for a leaf, "name:type{...}" for a container.
inline std::string flat(const QList<spfxml::RequestParams>& params)
{
    QStringList nodes;
    for (const spfxml::RequestParams& param : params) {
        const int type = static_cast<int>(param.getType());
        const QString inner = QString::fromStdString(flat(param.getParams()));
        nodes += QString("%1:%2").arg(param.getName()).arg(type)
            + (type == 6 || type == 7 ? "{" + inner + "}" : "=" + param.getFormattedValue());
    }
    return nodes.join(' ').toStdString();
}

/// The commands over a scripted register: an open shift, the tax systems 2 and 32.
struct ScriptedCommand : spfxml::SpfFrCommand
{
    ScriptedCommand()
        : SpfFrCommand(nullptr, Log4Qt::LogManager::logger("frdriver", "xml"), QString())
    {
    }

    /// Writes down "code x attempts tree", apart from the questions for the shift.
    QDomDocument requestData(
        ECommandCode code, const spfxml::RequestParams& params, int attempts) const override
    {
        const int number = static_cast<int>(code);
        const std::string tree = params.getName().isEmpty() ? std::string() : flat({params});
        if (number != 44)
            sent.push_back(std::to_string(number) + " x" + std::to_string(attempts) + " " + tree);
        if (number == failing)
            throw FrCommandException("Отказ");
        return answers.contains(number) ? xmlDocument(answers[number]) : QDomDocument();
    }
    /// What was sent since the last call.
    std::vector<std::string> taken() const { return std::exchange(sent, {}); }

    mutable std::vector<std::string> sent;
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
