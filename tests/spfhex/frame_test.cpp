#include "spfhex/cp866.h"
#include "spfhex/frame.h"
#include "spfhex/statestatus.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace frame = spfhex::frame;

TEST(Frame, requestsAreTheseBytes)
{
    const std::vector<std::tuple<quint8, int, QList<QVariant>, QByteArray>> table{
        {0x20, 0xA0, {}, "02 515a5857 20 4130 03 3536"},
        {0x20, 0x08, {}, "02 515a5857 20 3038 03 3246"},
        {0xFD, 0x6B, {QStringLiteral("Ян"), QString()}, "02 515a5857 fd 3642 d0afd0bd1c 1c 03 3943"},
        {0x20, 0x21, {QByteArray("\x97\xA0\xA9"), 16}, "02 515a5857 20 3231 97a0a91c 31361c 03 4244"},
        {0x41, 0x3D, {0.25, QVariant()}, "02 515a5857 41 3344 302e32351c 1c 03 3238"},
    };
    for (const auto& [id, code, fields, bytes] : table)
        EXPECT_EQ(frame::build(id, code, fields), QByteArray::fromHex(bytes)) << bytes.data();
}

TEST(Frame, answersAreCheckedAndTakenApart)
{
    const char* const invalid = nullptr;
    const std::vector<std::pair<QByteArray, const char*>> table{
        {"02 20 4130 3030 301c 341c 301c 03 3741", "0\x1C\x34\x1C\x30"},
        {"02 20 4130 3030 301c 341c 301c 03 3761", "0\x1C\x34\x1C\x30"}, // check digits in small letters
        {"02 4b 4130 3030 03 3339", "\x03\x33\x39"}, // no fields: the trailer comes back as data
        {"02 72 4130 3030 03 5a5a", "\x03ZZ"}, // digits that are none read as 0
        {"02 4b 4130 3030 03 3338", invalid}, {"03 4b 4130 3030 03 3339", invalid},
        {"02 4b 4130 3030 04 3345", invalid},
        {"02 20 4130 30 03 3632", invalid}, // a byte short, its check digits right
    };
    for (const auto& [bytes, data] : table) {
        SCOPED_TRACE(bytes.data());
        const QByteArray answer = QByteArray::fromHex(bytes);
        ASSERT_EQ(frame::isValid(answer), data != invalid);
        EXPECT_EQ(data == invalid ? QByteArray() : frame::data(answer), data);
    }
}

TEST(CodePage, everyByteStandsForOneCharacterBothWays)
{
    QByteArray all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    const QString text = spfhex::fromCp866(all);
    EXPECT_EQ(spfhex::toCp866(text), all);
    EXPECT_EQ(text.first(128), QString::fromLatin1(all.first(128)));
}

TEST(StateStatus, flagsAndDocumentAreReadFromThreeNumbers)
{
    // Facts: n not initialised, s shift open, c document closed, r document to be closed.
    const std::vector<std::tuple<QByteArray, std::string, int, int>> table{
        {"0|4|0", "sc", 0, 0},
        {"255|250|4098", "r", 2, 16},
        {"0|260|67330", "s", 2, 7}, // what goes beyond a byte is dropped
        {"", "c", 0, 0},
    };
    for (auto [data, facts, type, state] : table) {
        SCOPED_TRACE(data.data());
        const spfhex::StateStatus status(data.replace('|', '\x1C'));
        EXPECT_EQ(status.isNotInitialized(), facts.find('n') != std::string::npos);
        EXPECT_EQ(status.isShiftOpened(), facts.find('s') != std::string::npos);
        EXPECT_EQ(status.isDocumentClosed(), facts.find('c') != std::string::npos);
        EXPECT_EQ(status.isCloseDocumentRequired(), facts.find('r') != std::string::npos);
        EXPECT_EQ(status.documentType, type);
        EXPECT_EQ(status.documentState, state);
    }
}

TEST(StateStatus, itsTextsAreThese)
{
    // The labels stand in the order of the bits.
    const auto block = [](const QString& heading, unsigned bits, const QString& labels) {
        QStringList lines{heading};
        for (const QString& label : labels.split(QLatin1Char('|')))
            lines << "  " + label + ((bits >> (lines.size() - 1)) % 2 != 0 ? ": да" : ": нет");
        return lines;
    };
    const spfhex::StateStatus status("165\x1C\x32\x32");
    EXPECT_EQ(status.getFatalStateStatus(),
        block(QStringLiteral("Статус фатального состояния:"), 165,
            QStringLiteral("неверная контрольная сумма сменных счетчиков в NVRAM|неверная контрольная сумма "
                           "конфигурации в NVRAM|ошибка OTP|неверная контрольная сумма NVRAM|ошибка "
                           "флэш-памяти|инсталляция не произведена|фатальная ошибка ФН|расхождение данных "
                           "ККТ и ФН")));
    EXPECT_EQ(status.getCurrentFlagsStatus(),
        block(QStringLiteral("Статус текущих флагов:"), 22,
            QStringLiteral("не была вызвана функция 0|нефискальный (тестовый) режим|смена открыта|смена "
                           "больше 24 часов|архив ФН закрыт|ФН не активизирован")));

    // The types and the states by their numbers; a number without a text leaves the line at its label.
    const QStringList types = QStringLiteral("Документ закрыт|Нефискальный документ|Приход|Возврат прихода|"
                                             "Внесение в кассу|Изъятие|Расход|Возврат расхода|Коррекция "
                                             "прихода|Коррекция расхода|Коррекция возврата прихода|"
                                             "Коррекция возврата расхода|")
                                  .split(QLatin1Char('|'));
    const QMap<qsizetype, QString> states{{0, "Документ закрыт"}, {1, "Документ открыт"},
        {3, "Добавлена позиция"}, {5, "Подитог"}, {7, "Оплата"}, {8, "Документ завершен. Требуется закрытие"},
        {9, "Статус документа в ФН неизвестен"}, {16, "Отмена документа невозможна"}};
    for (qsizetype number = 0; number <= 17; ++number)
        EXPECT_EQ(spfhex::StateStatus("0\x1C\x30\x1C" + QByteArray::number(number * 257)).getDocumentStatus(),
            (QStringList{QStringLiteral("Статус документа:"),
                "  тип текущего открытого документа: " + types.value(number),
                "  состояние  документа: " + states.value(number)}));
}
