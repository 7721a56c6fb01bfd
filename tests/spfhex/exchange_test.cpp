#include "driver/messagelog.h"
#include "driver/thrown.h"
#include "driverlogger.h"
#include "hexline.h"
#include "spfhex/command.h"

#include <QLoggingCategory>

#include <map>

namespace {

class HexCommand : public spfhex::Command
{
public:
    explicit HexCommand(AbstractSerialDriver* line)
        : Command(line, driverLogger(QStringLiteral("spf_0")))
    {
    }
    static quint8& id() { return commandId; }

    /// The data block with bars for its separators, or the exception.
    std::string exchange(const QByteArray& followUp = QByteArray()) const
    {
        QByteArray data;
        const std::string failure = thrown([&] { data = sendCommand(RequestStateStatus, {}, followUp); });
        return failure.empty() ? data.replace('\x1C', '|').toStdString() : failure;
    }
};

// Before any test has sent a frame.
const quint8 idAtStart = HexCommand::id();

std::string linesOf(const std::string& level)
{
    std::string text;
    for (const std::string& line : MessageLog::taken()) {
        if (line.starts_with(level))
            text += (text.empty() ? "" : "; ") + line.substr(level.size());
    }
    return text;
}

const std::string errors = "error frdriver.spf_0: ";

// P paper, S long shift, F fatal; the rest are plain refusals.
const QString answerCodes = QStringLiteral(
    "1 Функция невыполнима при данном статусе ККТ; 2 В команде указан неверный номер функции; 3 В команде "
    "указано неверное, больше чем максимально возможное или несоответствующее типу данных значение; 4 "
    "Переполнение буфера коммуникационного порта; 5 Таймаут при передаче байта информации; 6 В команде "
    "указан неверный пароль; 7 Ошибка контрольной суммы в команде; P8 Конец бумаги; P9 Принтер не готов; "
    "S10 Текущая смена больше 24 часов; 11 Разница во времени ККТ и указанной в команде инициализации "
    "больше 5 минут; 12 Вводимая дата более ранняя, чем дата последней фискальной операции; 13 Не был задан "
    "заголовок документа, что делает невозможным формирование фискального документа; 14 Отрицательный "
    "результат; 15 Ошибка дисплея покупателя; F32 Фатальная ошибка ККТ; F33 Превышено кол-во попыток "
    "коррекции MAC-адреса или заводского номера; F36 Зарезервировано; F37 Зарезервировано; F38 "
    "Зарезервировано; 81 Неверная команда ФН; 82 Неверное состояние ФН; 83 Ошибка ФН; 84 Ошибка "
    "криптографического сопроцессора в составе ФН; 85 Закончен срок эксплуатации ФН; 86 Архив ФН "
    "переполнен; 87 Неверные дата или время ФН; 88 Нет запрошенных данных в ФН; 89 Некорректное значение "
    "параметров команды ФН; 90 Некорректная команда (команда не разрешена в данном режиме "
    "функционирования). ФН в 1.1; 91 Неразрешенные реквизиты (реквизит должен формироваться на стороне ФН); "
    "92 Дублирование данных; 93 Отсутствуют данные; 94 Кол-во позиций в документе превысило допустимый "
    "предел; 96 Превышение размеров TLV данных; 97 Нет транспортного соединения с ОФД; 98 Исчерпан ресурс "
    "криптографического сопроцессора ФН; 100 Исчерпан ресурс хранения документов для ОФД; 101 Исчерпан "
    "ресурс ожидания передачи сообщения в ОФД; 102 Продолжительность смены в ФН превысила 24 часа; 103 "
    "Неверная разница во времени между двумя операциями; 104 Некорректный параметр, не соответствующий "
    "требованиям; 105 Реквизит не соответствует параметрам регистрации (продажа подакцизных товаров или "
    "СНО); 112 Сообщение от ОФД не может быть принято; 115 Ошибка сервиса обновления ключей проверки КМ; "
    "116 Неизвестный ответ сервиса обновления ключей проверки КМ; 130 Запрещена работа с маркированными "
    "товарами (не установлен признак работы с маркированными товарами); 131 Неверная последовательность "
    "команд группы B (при проверке кода маркировки); 132 Работа с маркированными товарами заблокирована; "
    "133 Переполнена таблица хранения КМ; 140 В блоке TLV отсутствуют необходимые реквизиты; 142 В "
    "реквизите 2007 содержится КМ, который ранее не проверялся в ФН; 160 ФН не поддерживает указанный ФФД "
    "или команда недоступна в текущей версии ФФД");

} // namespace

TEST(PacketId, goesRoundFrom20ToFDForAllObjectsTogether)
{
    EXPECT_EQ(idAtStart, 0x1F);
    HexCommand::id() = idAtStart;
    const HexCommand first(nullptr);
    const HexCommand second(nullptr);
    for (int frame = 1; frame <= 223; ++frame) {
        const QByteArray bytes = (frame % 2 != 0 ? first : second).formCommand(HexCommand::OpenDrawer, {});
        EXPECT_EQ(static_cast<quint8>(bytes.at(5)), frame == 223 ? 0x20 : 0x1F + frame);
    }
}

TEST(Exchange, meetsEveryOddityOfTheLine)
{
    const char* const lost = "FrNoConnectionException: Нет связи с ФР";
    const char* const broken = "FrCommandException: Ошибка обмена данными";
    const std::string notReceived = "Ответ от ФР не получен";
    const QByteArray bmp = "\x1B\x42\x4D";
    // Script, writes, result, error lines, follow-up, number of the write that fails.
    using Row = std::tuple<const char*, const char*, const char*, std::string, QByteArray, int>;
    const std::vector<Row> table{
        {"ok", "R", "12|34", "", "", 0},
        {"noise ok", "R", "12|34", "", "", 0},
        {"stx", "R", "1\x02\x32", "", "", 0},
        {"T ok", "RE", "12|34", "Тишина", "", 0},
        {"T A F A ok", "REE", "12|34", "Тишина; Обрыв", "", 0},
        {"T T", "RE", lost, "Тишина; Тишина; " + notReceived, "", 0},
        {"A*50 ok", "R", lost, notReceived, "", 0},
        {"half T ok", "R", lost, "Тишина; " + notReceived, "", 0},
        // Echoes and late answers are read past, three at most, each read with a fresh budget and ENQ.
        {"echo old ok", "R", "12|34", "", "", 0},
        {"A*49 old A*49 ok", "R", "12|34", "", "", 0},
        {"old old old ok", "R", broken, "Ошибка обмена данными", "", 0},
        {"bad ok", "R", broken, "Ошибка обмена данными", "", 0},
        {"oldbad ok", "R", broken, "Ошибка обмена данными", "", 0},
        {"short ok", "R", broken, "Ошибка обмена данными", "", 0},
        // A device that sends and sends: 1 MiB a read, noise before the frame with it.
        {"noise Z*1048570 T", "R", lost, "Тишина; " + notReceived, "", 0},
        {"noise Z*1048571 T", "R", broken, "Ошибка обмена данными", "", 0},
        {"X", "R", "BasicException: Чужое", "", "", 0},
        // The follow-up leaves on the first ACK of each read; that ACK costs nothing and answers no ENQ.
        {"ok", "R", "12|34", "", bmp, 0},
        {"A old A ok", "RFF", "12|34", "", bmp, 0},
        {"A*50 ok", "RF", "12|34", "", bmp, 0},
        {"A*51 ok", "RF", lost, notReceived, bmp, 0},
        {"T A T ok", "REF", lost, "Тишина; Тишина; " + notReceived, bmp, 0},
        // A request that cannot be written leaves as it is; the other writes are a lost connection.
        {"ok", "R", "ComDriverException: Обрыв", "", "", 1},
        {"T ok", "RE", lost, "Тишина; " + notReceived, "", 2},
        {"A ok", "RF", lost, notReceived, bmp, 2},
    };
    for (const auto& [script, writes, result, errorLines, followUp, failingStep] : table) {
        SCOPED_TRACE(std::string(script) + (followUp.isEmpty() ? "" : " with a follow-up"));
        HexLine line(script);
        line.failingStep = failingStep;
        const MessageLog log;
        EXPECT_EQ(HexCommand(&line).exchange(followUp), result);
        EXPECT_EQ(line.done, writes);
        EXPECT_EQ(linesOf(errors), errorLines);
    }
}

TEST(Exchange, bytesAreTracedOnlyWhenTraceIsOn)
{
    for (const char* const rule : {"", "frdriver.spf_0.trace.debug=true"}) {
        QLoggingCategory::setFilterRules(QString::fromLatin1(rule));
        HexCommand::id() = 0x4A;
        HexLine line("T A empty");
        const MessageLog log;
        EXPECT_EQ(HexCommand(&line).exchange("\x1B\x42\x4D"), "\x03\x33\x39");
        EXPECT_EQ(linesOf("debug frdriver.spf_0.trace: "),
            *rule == '\0' ? ""
                          : "Отправка: 02 51 5a 58 57 4b 41 30 03 33 44; Отправка: 05; Получено: 06; "
                            "Отправка: 1b 42 4d; Получено: 02 4b 41 30 30 30 03 33 39");
    }
    QLoggingCategory::setFilterRules({});
}

TEST(AnswerCodes, eachHasItsExceptionAndText)
{
    std::map<int, std::string> known;
    for (const QString& row : answerCodes.split(QStringLiteral("; "))) {
        const QString text = row.section(QLatin1Char(' '), 1);
        const bool isPlain = row.at(0).isDigit();
        const int code = row.section(QLatin1Char(' '), 0, 0).mid(isPlain ? 0 : 1).toInt();
        const std::map<QChar, std::string> kinds{{'P', "Paper"}, {'S', "ShiftTooLong"}, {'F', "Fatal"}};
        known[code] = "Fr" + (isPlain ? "Command" : kinds.at(row.at(0))) + "Exception: " + text.toStdString();
    }
    EXPECT_EQ(known.size(), 53U);
    for (int code = 1; code <= 255; ++code) {
        HexLine line("ok");
        line.answerCode = QByteArray::number(code, 16).rightJustified(2, '0');
        const MessageLog log;
        EXPECT_EQ(HexCommand(&line).exchange(),
            known.contains(code) ? known[code] : "FrCommandException: Неизвестная ошибка");
        EXPECT_EQ(linesOf(errors), "Ошибка - " + std::to_string(code));
    }
    HexLine line("ok");
    line.answerCode = "G1";
    const MessageLog log;
    EXPECT_EQ(HexCommand(&line).exchange(), "FrCommandException: Ошибка команды ККМ");
    EXPECT_EQ(linesOf(errors), "");
}
