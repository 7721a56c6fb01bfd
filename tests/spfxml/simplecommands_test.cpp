#include "xmltext.h"

#include "spfxml/spffrcommand.h"

#include <logger.h>
#include <logmanager.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// The commands over a recorded exchange.
class RecordedCommand : public spfxml::SpfFrCommand
{
public:
    RecordedCommand()
        : SpfFrCommand(nullptr, Log4Qt::LogManager::logger(QStringLiteral("frdriver"), QStringLiteral("xml")),
            QStringLiteral("13.0"))
    {
    }

    QDomDocument requestData(
        ECommandCode code, const spfxml::RequestParams& params, int attempts) const override
    {
        const QString text = params.toString();
        sent += std::to_string(static_cast<int>(code)) + " x" + std::to_string(attempts) + " "
            + (text.isEmpty() ? std::string() : flatXml(xmlDocument(text).documentElement())) + ";";
        return answers.isEmpty() ? QDomDocument() : answers.takeFirst();
    }

    mutable QList<QDomDocument> answers;
    mutable std::string sent;
};

TEST(SimpleCommands, sendTheirTrees)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9));
    const std::string name = "<pa n=1021 t=1>Ёжик</pa>";
    using Call = std::function<void(const RecordedCommand&)>;
    const std::tuple<const char*, Call, std::string> cases[] = {
        {"", [&](auto& c) { c.setDateTime(time); },
            "24 x5 <pa n=200001 t=7><pa n=DateTime t=5>2026-03-01 14:05:09</pa></pa>;"},
        {"77", [](auto& c) { c.printXReport(); }, "46 x5 <pa n=200015 t=7>" + name + "</pa>;"},
        {"77", [](auto& c) { c.accountingReport(); }, "12 x5 <pa n=21 t=7>" + name + "</pa>;"},
        {"77", [](auto& c) { c.shiftOpen(); }, "4 x5 <pa n=2 t=7>" + name + "<pa n=1203 t=1>77</pa></pa>;"},
        {"77", [](auto& c) { c.shiftClose(); }, "6 x5 <pa n=5 t=7>" + name + "<pa n=1203 t=1>77</pa></pa>;"},
        {"", [](auto& c) { c.shiftClose(); }, "6 x5 <pa n=5 t=7>" + name + "</pa>;"},
        {"", [](auto& c) { c.printFNDocument(0); }, "16 x5 <pa n=100000 t=7><pa n=1040 t=4>0</pa></pa>;"},
        {"", [](auto& c) { c.printLastFNDocument(); }, "28 x5 ;"},
        {"", [](auto& c) { c.openDrawer(); }, "36 x5 ;"},
        {"", [](auto& c) { c.getDateTime(); }, "22 x5 ;"},
        {"", [](auto& c) { c.getShiftStatus(); }, "44 x5 ;"},
        {"", [](auto& c) { c.getCashDrawerStatus(); }, "52 x5 ;"},
        {"", [](auto& c) { c.getStatus(); }, "58 x5 ;2 x5 ;"},
    };
    for (const auto& [inn, call, expected] : cases) {
        RecordedCommand command;
        command.setCashierInfo(QStringLiteral("Ёжик"), QString::fromUtf8(inn));
        call(command);
        EXPECT_EQ(command.sent, expected);
    }
}

TEST(SimpleCommands, readTheClockOfTheRootOnly)
{
    const std::pair<const char*, const char*> cases[]
        = {{"<pa n='200001' t='5'>2026-03-01 14:05:09</pa>", "2026-03-01 14:05:09"},
            {"<pa n='200001' t='5'>01.03.2026</pa>", ""},
            {"<pa n='1'><pa n='200001' t='5'>2026-03-01 14:05:09</pa></pa>", ""}};
    for (const auto& [answer, expected] : cases) {
        RecordedCommand command;
        command.answers = {xmlDocument(QString::fromUtf8(answer))};
        EXPECT_EQ(
            command.getDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString(), expected);
    }
}

TEST(SimpleCommands, readTheDrawer)
{
    const std::pair<const char*, bool> cases[]
        = {{"<pa n='r'><pa n='Is'>0</pa><pa n='IsOpen'>1</pa></pa>", true},
            {"<pa n='r'><pa n='IsOpen'>FALSE</pa></pa>", false}, {"<pa n='r'><pa n='IsOpen'/></pa>", false},
            {"<pa n='IsOpen'>1</pa>", false}};
    for (const auto& [answer, isOpen] : cases) {
        RecordedCommand command;
        command.answers = {xmlDocument(QString::fromUtf8(answer))};
        EXPECT_EQ(command.getCashDrawerStatus(), isOpen) << answer;
    }
}

TEST(SimpleCommands, readTheStatusFromTwoAnswers)
{
    RecordedCommand command;
    command.answers = {answerWith("1037=инфо|1013=инфо"), answerWith("1037=состояние|1013=состояние")};
    const spfxml::SpfStatus status = command.getStatus();
    EXPECT_EQ(status.registrationNumber, QStringLiteral("инфо"));
    EXPECT_EQ(status.kktNumber, QStringLiteral("состояние"));
}

} // namespace
