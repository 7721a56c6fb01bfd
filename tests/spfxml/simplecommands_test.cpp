#include "xmltext.h"

#include "spfxml/spffrcommand.h"

#include <logger.h>
#include <logmanager.h>

#include <gmock/gmock.h>
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
        sent.push_back(std::to_string(static_cast<int>(code)) + " x" + std::to_string(attempts) + " "
            + (text.isEmpty() ? std::string("-") : flatXml(xmlDocument(text).documentElement())));
        return answers.isEmpty() ? QDomDocument() : answers.takeFirst();
    }

    mutable QList<QDomDocument> answers;
    mutable std::vector<std::string> sent;
};

TEST(SimpleCommands, sendTheirTrees)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9));
    const struct
    {
        const char* inn;
        std::function<void(const RecordedCommand&)> call;
        std::vector<std::string> expected;
    } cases[] = {
        {"", [&](auto& c) { c.setDateTime(time); },
            {"24 x5 <pa n=200001 t=7><pa n=DateTime t=5>2026-03-01 14:05:09</pa></pa>"}},
        {"77", [](auto& c) { c.printXReport(); }, {"46 x5 <pa n=200015 t=7><pa n=1021 t=1>Ёжик</pa></pa>"}},
        {"77", [](auto& c) { c.accountingReport(); }, {"12 x5 <pa n=21 t=7><pa n=1021 t=1>Ёжик</pa></pa>"}},
        {"77", [](auto& c) { c.shiftOpen(); },
            {"4 x5 <pa n=2 t=7><pa n=1021 t=1>Ёжик</pa><pa n=1203 t=1>77</pa></pa>"}},
        {"77", [](auto& c) { c.shiftClose(); },
            {"6 x5 <pa n=5 t=7><pa n=1021 t=1>Ёжик</pa><pa n=1203 t=1>77</pa></pa>"}},
        {"", [](auto& c) { c.shiftClose(); }, {"6 x5 <pa n=5 t=7><pa n=1021 t=1>Ёжик</pa></pa>"}},
        {"", [](auto& c) { c.printFNDocument(0); }, {"16 x5 <pa n=100000 t=7><pa n=1040 t=4>0</pa></pa>"}},
        {"", [](auto& c) { c.printLastFNDocument(); }, {"28 x5 -"}},
        {"", [](auto& c) { c.openDrawer(); }, {"36 x5 -"}},
        {"", [](auto& c) { c.getDateTime(); }, {"22 x5 -"}},
        {"", [](auto& c) { c.getShiftStatus(); }, {"44 x5 -"}},
        {"", [](auto& c) { c.getCashDrawerStatus(); }, {"52 x5 -"}},
        {"", [](auto& c) { c.getStatus(); }, {"58 x5 -", "2 x5 -"}},
    };
    for (const auto& c : cases) {
        RecordedCommand command;
        command.setCashierInfo(QStringLiteral("Ёжик"), QString::fromUtf8(c.inn));
        c.call(command);
        EXPECT_EQ(command.sent, c.expected);
    }
}

TEST(SimpleCommands, sendACashierWithoutAName)
{
    RecordedCommand command;
    command.shiftOpen();
    EXPECT_THAT(command.sent, testing::ElementsAre("4 x5 <pa n=2 t=7><pa n=1021 t=1></pa></pa>"));
}

TEST(SimpleCommands, readTheClock)
{
    const struct
    {
        const char* answer;
        const char* expected;
    } cases[] = {
        {"<pa n='200001' t='5'>2026-03-01 14:05:09</pa>", "2026-03-01 14:05:09"},
        {"<pa n='200001' t='5'>01.03.2026</pa>", ""},
        // Only the root is looked at.
        {"<pa n='1'><pa n='200001' t='5'>2026-03-01 14:05:09</pa></pa>", ""},
    };
    for (const auto& c : cases) {
        RecordedCommand command;
        command.answers = {xmlDocument(QString::fromUtf8(c.answer))};
        EXPECT_EQ(
            command.getDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString(), c.expected);
    }
}

TEST(SimpleCommands, readTheDrawer)
{
    const std::pair<const char*, bool> cases[] = {{"<pa n='r'><pa n='IsOpen' t='1'>1</pa></pa>", true},
        {"<pa n='r'><pa n='Is'>0</pa><pa n='IsOpen'>true</pa></pa>", true},
        {"<pa n='r'><pa n='IsOpen' t='1'>0</pa></pa>", false},
        {"<pa n='r'><pa n='IsOpen' t='1'>FALSE</pa></pa>", false},
        {"<pa n='r'><pa n='IsOpen' t='1'/></pa>", false}, {"<pa n='IsOpen'>1</pa>", false}};
    for (const auto& [answer, isOpen] : cases) {
        RecordedCommand command;
        command.answers = {xmlDocument(QString::fromUtf8(answer))};
        EXPECT_EQ(command.getCashDrawerStatus(), isOpen) << answer;
    }
}

TEST(SimpleCommands, readTheStatusFromTwoAnswers)
{
    RecordedCommand command;
    command.answers = {answerWith({{QStringLiteral("1037"), QStringLiteral("инфо")},
                           {QStringLiteral("1013"), QStringLiteral("инфо")}}),
        answerWith({{QStringLiteral("1037"), QStringLiteral("состояние")},
            {QStringLiteral("1013"), QStringLiteral("состояние")}})};
    const spfxml::SpfStatus status = command.getStatus();
    EXPECT_EQ(status.registrationNumber, QStringLiteral("инфо"));
    EXPECT_EQ(status.kktNumber, QStringLiteral("состояние"));
}

} // namespace
