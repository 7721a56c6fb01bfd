#include "driver/messagelog.h"
#include "driver/mockserialdriver.h"
#include "driver/thrown.h"
#include "xmltext.h"

#include "spfxml/spffrcommand.h"

#include <logger.h>
#include <logmanager.h>
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

QByteArray refusal(const char* result, const char* category, const char* code)
{
    QString fields = QStringLiteral("<ErrorDescription>Сбой</ErrorDescription>");
    const auto add = [&](const char* tag, const char* text) {
        if (*text != 0)
            fields += QStringLiteral("<%1>%2</%1>").arg(QString::fromUtf8(tag), QString::fromUtf8(text));
    };
    add("Result", result);
    add("ErrorCategory", category);
    add("ErrorCode", code);
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

/// A device that answers by a script: one entry a read, an empty entry is 15 seconds of silence, and so is
/// all that comes behind the script.
class ExchangeTest : public testing::Test
{
protected:
    ExchangeTest()
    {
        MockFactory<CurrentTime>::mocked = &clock;
        ON_CALL(serial, sendData(testing::A<const QByteArray&>()))
            .WillByDefault([this](const QByteArray& data) { sent.append(data); });
        ON_CALL(serial, receiveDataAsByteArray(200, 15000)).WillByDefault([this] {
            const QByteArray portion = script.takeFirst();
            if (portion.isEmpty())
                throw ComDriverTimeoutException(QStringLiteral("Нет данных"));
            return portion;
        });
    }

    ~ExchangeTest() override { MockFactory<CurrentTime>::mocked = nullptr; }

    /// The inner document on one line, or what was thrown.
    std::string exchange(const QList<QByteArray>& portions, int attempts)
    {
        script = portions + QList<QByteArray>(qMax(attempts, 0));
        sent.clear();
        std::string answer;
        const std::string failure = thrown([&] {
            answer = flatXml(command.requestData(Code::GetDateTime, {}, attempts).documentElement());
        });
        return failure.empty() ? answer : failure;
    }

    NiceMock<MockSerialDriver> serial;
    FixedIdCommand command{&serial,
        Log4Qt::LogManager::logger(QStringLiteral("frdriver"), QStringLiteral("xml")),
        QStringLiteral("13.0")};
    FixedClock clock;
    QList<QByteArray> script;
    QList<QByteArray> sent;
};

TEST_F(ExchangeTest, writesTheWholeRequestAsOneDocument)
{
    const RequestParams params(RequestParams::EParamType::Structure, QStringLiteral("2"),
        QList<RequestParams>{
            {RequestParams::EParamType::Text, EFrDriver::CashierName, QStringLiteral("Ёж]]>&")}});
    const std::string head = "<ArmRequest><RequestBody><ProtocolLabel>OFDFNARMUKM</ProtocolLabel>"
                             "<ProtocolVersion>13.0</ProtocolVersion><RequestId>"
        + id.toStdString()
        + "</RequestId><msgFFDVer>4</msgFFDVer><msgContVer>1</msgContVer>"
          "<DateTime>2026-03-01 14:05:09</DateTime><Command>";
    const QByteArray full = command.createCommand(id.toUtf8(), Code::OpenShift, params);
    EXPECT_TRUE(
        full.startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmRequest>\n <RequestBody>\n  <"));
    EXPECT_EQ(flatXml(xmlDocument(QString::fromUtf8(full)).documentElement()),
        head
            + "4</Command></RequestBody><RequestData>[[<pa n=2 t=7><pa n=1021 t=1>Ёж]]>&</pa></pa>]]"
              "</RequestData></ArmRequest>");
    const QByteArray empty = command.createCommand(id.toUtf8(), Code::OpenDrawer, {});
    EXPECT_TRUE(empty.contains("<RequestData><![CDATA[]]></RequestData>"));
    EXPECT_EQ(command.SpfFrCommand::getUuid().size(), 38);
    EXPECT_NE(command.SpfFrCommand::getUuid(), command.SpfFrCommand::getUuid());
}

TEST_F(ExchangeTest, findsItsAnswerOrFails)
{
    const QByteArray good = successAnswer(id, QStringLiteral("<pa n='1' t='1'>да</pa>"));
    const QByteArray foreign = successAnswer(foreignId, QStringLiteral("<pa/>"));
    const std::string answered = "<pa n=1 t=1>да</pa>";
    const struct
    {
        const char* what;
        QList<QByteArray> portions;
        int attempts;
        std::string expected;
        qsizetype sends;
    } cases[] = {
        {"split, with blanks around", {"\r\n " + good.chopped(5), good.right(5) + "\n"}, 1, answered, 1},
        {"foreign answer first", {foreign, good}, 1, answered, 1},
        {"foreign answer, then a tail", {foreign + good.left(20), good.mid(20)}, 1, malformed, 1},
        {"half an answer, silence, then the answer", {good.left(99), "", good}, 5, answered, 2},
        {"answer to the last attempt", {"", "", "", "", good}, 5, answered, 5},
        {"silence", {}, 5, failedExchange, 5},
        {"silence after a receipt", {}, 1, failedExchange, 1},
        {"foreign answers, half an answer", {foreign, foreign, good.left(99)}, 1, failedExchange, 1},
        {"no attempt", {good}, 0, failedExchange, 0},
        {"bytes before the answer", {"x" + good}, 5, malformed, 1},
        {"two answers in one portion", {foreign + good}, 5, malformed, 1},
        {"no inner document", {successAnswer(id, QStringLiteral("x"))}, 5, malformed, 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(exchange(c.portions, c.attempts), c.expected) << c.what;
        EXPECT_EQ(sent.size(), c.sends) << c.what;
        EXPECT_EQ(sent.count(sent.value(0)), c.sends) << c.what << ": every attempt sends the same bytes";
    }
}

TEST_F(ExchangeTest, reportsWhatTheDeviceReports)
{
    // Result, category and code; an empty one is missing.
    const char* const cases[][4] = {
        {"", "1", "1", malformed},
        {"1", "", "1", malformed},
        {"1", "x", "1", malformed},
        {"1", "1", "", malformed},
        {"1", "1", "2147483648", malformed},
        {"0", "", "x", ""},
        {"1", "2", "2005", "FrCommandException: Ошибка ФН. Некорректное состояние ФН"},
        {"00", "9", "7", "FrCommandException: Сбой"},
        {"1", "3", "8", "FrWaitForPaperException: Ошибка печатающего устройства. Конец бумаги"},
        {"1", "1", "8", "FrWaitForPaperException: Внутренняя ошибка. Сбой"},
    };
    for (const auto& [result, category, code, expected] : cases)
        EXPECT_EQ(exchange({refusal(result, category, code)}, 5), expected) << result << category << code;
}

TEST_F(ExchangeTest, passesTroubleWithThePortThrough)
{
    EXPECT_CALL(serial, receiveDataAsByteArray(_, _))
        .WillOnce(testing::Throw(ComDriverException(QStringLiteral("Невозможно получить данные"))))
        .WillOnce(testing::Throw(FrNoConnectionException(QStringLiteral("Нет связи"))));
    EXPECT_EQ(exchange({}, 5), "ComDriverException: Невозможно получить данные");
    EXPECT_EQ(sent.size(), 1);
    EXPECT_EQ(exchange({}, 5), "FrCommandException: Нет связи");
    EXPECT_EQ(sent.size(), 1);
}

TEST_F(ExchangeTest, givesUpAnAnswerThatNeverEnds)
{
    EXPECT_CALL(serial, receiveDataAsByteArray(_, _))
        .Times(5)
        .WillRepeatedly(testing::Return(QByteArray(16 * 1024 * 1024, 'x')));
    EXPECT_EQ(exchange({}, 5), failedExchange);
    EXPECT_EQ(sent.size(), 1);
}

TEST_F(ExchangeTest, logsSilenceAndTheNumberOfAllAttempts)
{
    const MessageLog log;
    exchange({}, 5);
    const std::string silence = "error frdriver.xml: Нет данных";
    const std::string attempt = "debug frdriver.xml: Попытка 5";
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre(silence, silence, attempt, silence, attempt, silence, attempt, silence,
            "error frdriver.xml: Ошибка обмена данными"));
}

TEST_F(ExchangeTest, logsWhatIsWrongWithTheAnswer)
{
    const MessageLog log;
    exchange({refusal("1", "я", "1")}, 1);
    exchange({successAnswer(id, QStringLiteral("x"))}, 1);
    exchange({successAnswer(id)}, 1);
    exchange({refusal("1", "3", "8")}, 1);
    EXPECT_THAT(MessageLog::taken(),
        testing::ElementsAre("error frdriver.xml: Некорректный параметр 'ErrorCategory' - я",
            "error frdriver.xml: Некорректное значение параметра ResponseData: 'x'",
            "info frdriver.xml: Ответ пуст",
            "error frdriver.xml: Ошибка печатающего устройства. Конец бумаги"));
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
