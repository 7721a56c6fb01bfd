#include "driver/messagelog.h"
#include "driver/mockserialdriver.h"
#include "driver/thrown.h"
#include "xmltext.h"

#include "spfxml/envelope.h"
#include "spfxml/spffrcommand.h"

#include <driverlogger.h>
#include <mockfactory.h>

#include <QLoggingCategory>

#include <gtest/gtest.h>

using Code = spfxml::SpfFrCommand::ECommandCode;
using spfxml::RequestParams;
using testing::_;
using testing::NiceMock;

namespace {

const QString id = QStringLiteral("{11111111-2222-3333-4444-555555555555}");
const QString foreignId = QStringLiteral("{00000000-2222-3333-4444-555555555555}");
constexpr const char* malformed = "FrCommandException: Некорректный ответ от ФР";
constexpr const char* failedExchange = "FrCommandException: Ошибка обмена данными";

QByteArray wireAnswer(const QString& answerId, const QString& fields)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmResponse><ResponseBody>"
                          "<RequestId>%1</RequestId>%2</ResponseBody></ArmResponse>")
        .arg(answerId, fields)
        .toUtf8();
}

QByteArray successAnswer(const QString& answerId, const QString& inner = {})
{
    return wireAnswer(
        answerId, QStringLiteral("<Result>0</Result><ResponseData><![CDATA[%1]]></ResponseData>").arg(inner));
}

/// An answer with these fields: "Result=1|ErrorCode=8".
QByteArray refusal(const char* values)
{
    QString fields = QStringLiteral("<ErrorDescription>Сбой</ErrorDescription>");
    for (const QString& value : QString::fromUtf8(values).split(QLatin1Char('|')))
        fields += QStringLiteral("<%1>%2</%1>").arg(value.section('=', 0, 0), value.section('=', 1));
    return wireAnswer(id, fields);
}

class FixedClock : public CurrentTime
{
public:
    QDateTime getCurrentDateTime() const override { return QDateTime(QDate(2026, 3, 1), QTime(14, 5, 9)); }
};

class FixedIdCommand : public spfxml::SpfFrCommand
{
public:
    using SpfFrCommand::SpfFrCommand;
    QByteArray getUuid() const override { return id.toUtf8(); }
};

/// A device that answers by a script, one entry a read: an empty entry is 15 seconds of silence, "fault" and
/// "lost" are trouble with the port. Behind the script there is silence.
class ExchangeTest : public testing::Test
{
protected:
    ExchangeTest()
    {
        MockFactory<CurrentTime>::mocked = &clock;
        ON_CALL(serial, sendData(testing::A<const QByteArray&>()))
            .WillByDefault([this](const QByteArray& data) { sent.append(data); });
        ON_CALL(serial, receiveDataAsByteArray).WillByDefault([this](unsigned long size, unsigned long wait) {
            EXPECT_THAT((std::pair{size, wait}), testing::Pair(200, 15000));
            const QByteArray portion = script.takeFirst();
            if (portion.isEmpty())
                throw ComDriverTimeoutException(QStringLiteral("Нет данных"));
            if (portion == "fault")
                throw ComDriverException(QStringLiteral("Невозможно получить данные"));
            if (portion == "lost")
                throw FrNoConnectionException(QStringLiteral("Нет связи"));
            return portion;
        });
    }

    ~ExchangeTest() override { MockFactory<CurrentTime>::mocked = nullptr; }

    /// The inner document, or what was thrown.
    std::string exchange(const QList<QByteArray>& portions, int attempts)
    {
        script = portions + QList<QByteArray>(qMax(attempts, 0));
        sent.clear();
        std::string answer;
        const std::string failure
            = thrown([&] { answer = flat(command.requestData(Code::GetDateTime, {}, attempts)); });
        return failure.empty() ? answer : failure;
    }

    NiceMock<MockSerialDriver> serial;
    FixedIdCommand command{&serial, driverLogger(QStringLiteral("xml")), QStringLiteral("13.0")};
    FixedClock clock;
    QList<QByteArray> script;
    QList<QByteArray> sent;
};

TEST_F(ExchangeTest, writesTheWholeRequestAsOneDocument)
{
    const RequestParams params(RequestParams::EParamType::Structure, QStringLiteral("2"),
        QList<RequestParams>{{RequestParams::EParamType::Text, EFrDriver::CashierName,
            QStringLiteral("Ёж]]>&") + QChar(0xd83d)}});
    const auto documentOf = [this](int code, const QString& data) {
        return spfxml::envelope::build({"13.0", id.toUtf8(), clock.getCurrentDateTime(), code, data});
    };
    const QByteArray full = command.createCommand(id.toUtf8(), Code::OpenShift, params);
    EXPECT_EQ(full, documentOf(4, params.toString()));
    EXPECT_TRUE(full.contains("Ёж]]"));
    EXPECT_EQ(command.createCommand(id.toUtf8(), Code::OpenDrawer, {}), documentOf(36, {}));
    EXPECT_EQ(command.SpfFrCommand::getUuid().size(), 38);
    EXPECT_NE(command.SpfFrCommand::getUuid(), command.SpfFrCommand::getUuid());
}

TEST_F(ExchangeTest, findsItsAnswerOrFails)
{
    const QByteArray good = successAnswer(id, QStringLiteral("<pa n='5' t='7'><pa n='1' t='1'>да</pa></pa>"));
    const QByteArray foreign = successAnswer(foreignId, QStringLiteral("<pa/>"));
    const std::string answered = "5:7{1:1=да}";
    const std::tuple<const char*, QList<QByteArray>, int, std::string, qsizetype> cases[] = {
        {"in pieces, blanks first", {"\r\n ", good.left(1), good.mid(1, 9), good.mid(10)}, 1, answered, 1},
        {"foreign answer first", {foreign, good + "\n"}, 1, answered, 1},
        {"foreign answer, then a tail", {foreign + good.left(20), good.mid(20)}, 1, malformed, 1},
        {"half an answer, silence, then the answer", {good.left(99), "", good}, 5, answered, 2},
        {"answer to the last attempt", {"", "", "", "", good}, 5, answered, 5},
        {"silence", {}, 5, failedExchange, 5},
        {"foreign answers, half an answer", {foreign, foreign, good.left(99)}, 1, failedExchange, 1},
        {"no attempt", {good}, 0, failedExchange, 0},
        {"two answers in one portion", {foreign + good}, 5, malformed, 1},
        {"no inner document", {successAnswer(id, QStringLiteral("x"))}, 5, malformed, 1},
        {"an answer that never ends", {5, QByteArray(16 * 1024 * 1024, 'x')}, 5, failedExchange, 1},
        {"foreign answers that never end", {5, QByteArray(16 * 1024 * 1024, ' ') + foreign}, 5,
            failedExchange, 1},
        {"fault of the port", {"fault"}, 5, "ComDriverException: Невозможно получить данные", 1},
        {"lost connection", {"lost"}, 5, "FrCommandException: Нет связи", 1},
    };
    for (const auto& [what, portions, attempts, expected, sends] : cases) {
        EXPECT_EQ(exchange(portions, attempts), expected) << what;
        EXPECT_EQ(sent.size(), sends) << what;
        EXPECT_EQ(sent.count(sent.value(0)), sends) << what << ": every attempt sends the same bytes";
    }
}

TEST_F(ExchangeTest, reportsWhatTheDeviceReports)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Result=1|ErrorCode=1", malformed},
        {"Result=1|ErrorCategory=x|ErrorCode=1", malformed},
        {"Result=1|ErrorCategory=2|ErrorCode=2005",
            "FrCommandException: Ошибка ФН. Некорректное состояние ФН"},
        {"Result=00|ErrorCategory=9|ErrorCode=7", "FrCommandException: Сбой"},
        {"Result=1|ErrorCategory=3|ErrorCode=8",
            "FrWaitForPaperException: Ошибка печатающего устройства. Конец бумаги"},
        {"Result=1|ErrorCategory=1|ErrorCode=8", "FrWaitForPaperException: Внутренняя ошибка. Сбой"},
    };
    for (const auto& [fields, expected] : cases)
        EXPECT_EQ(exchange({refusal(fields)}, 5), expected) << fields;
}

TEST_F(ExchangeTest, logsSilenceAndWhatIsWrongWithTheAnswer)
{
    const MessageLog log;
    exchange({}, 3);
    const std::string silence = "error frdriver.xml: Нет данных";
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre(silence, silence, "debug frdriver.xml: Попытка 3", silence,
            "error frdriver.xml: Ошибка обмена данными"));
    exchange({refusal("Result=1|ErrorCategory=1|ErrorCode=8")}, 1);
    exchange({refusal("Result=1|ErrorCategory=я|ErrorCode=1")}, 1);
    exchange({successAnswer(id, QStringLiteral("x"))}, 1);
    exchange({successAnswer(id)}, 1);
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre("error frdriver.xml: Внутренняя ошибка. Сбой",
            "error frdriver.xml: Некорректный параметр 'ErrorCategory' - я",
            "error frdriver.xml: Некорректное значение параметра ResponseData: 'x'",
            "info frdriver.xml: Ответ пуст"));
    exchange({QStringLiteral("<a>%1</ArmResponse>").arg(id).toUtf8()}, 1);
    const std::vector<std::string> lines = MessageLog::taken();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_THAT(lines[0],
        testing::MatchesRegex(
            "error frdriver.xml: Ответ не является xml документом. Line 1, column [0-9]+, .+"));
    EXPECT_EQ(lines[1], "error frdriver.xml: <a>" + id.toStdString() + "</ArmResponse>");
}

TEST_F(ExchangeTest, tracesWholeDocumentsOnlyOnDemand)
{
    const MessageLog log;
    command.logTraceData("<a><b/></a>", true);
    EXPECT_TRUE(MessageLog::taken().empty());
    QLoggingCategory::setFilterRules(QStringLiteral("frdriver.xml.trace.debug=true"));
    command.logTraceData("<a><b/></a>", true);
    command.logTraceData("не xml", false);
    QLoggingCategory::setFilterRules({});
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre("debug frdriver.xml.trace: Отправка:\n<a>\n <b/>\n</a>\n",
            "debug frdriver.xml.trace: Получено:\nне xml"));
}

} // namespace
