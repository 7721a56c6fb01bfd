#include "rig.h"

#include <gtest/gtest.h>

namespace {

QJsonObject lastEntry(Rig& rig)
{
    return rig.device.journal().entries().constLast();
}

} // namespace

TEST(Sale, IsJournalledPrintedAndCounted)
{
    Rig rig;
    rig.openShift();
    EXPECT_EQ(rig.send(check()).fields, QList<QByteArray>{"3"});
    const auto phase = [&rig] { return rig.send({0xA0, {}}).fields.at(2).toInt(); };
    const QList<std::pair<Step, int>> steps{
        {open(2), 1},
        {{0x3C, {"64", "", "", "", "", "", "", "", "+70000000000", "ООО Ферма", "7701234567"}}, 1},
        {bind(), 1},
        {item("2.000", "60.05", "2", "33"), 3},
        {text("До свидания", 16), 3},
        {item("0.333", "10.00", "6"), 3},
        {subtotal(), 5},
        {pay(1, "50.00"), 7},
        {pay(0, "100.00"), 7},
    };
    for (const auto& [step, expected] : steps) {
        EXPECT_EQ(rig.code(step), 0);
        EXPECT_EQ(phase(), expected * 256 + 2);
    }
    EXPECT_EQ(rig.code(finish()), 0);
    EXPECT_EQ(phase(), 0);

    const QJsonObject entry = lastEntry(rig);
    // What the goods are is told in the journals of the examples.
    EXPECT_EQ(entry.value("number"), 3);
    EXPECT_EQ(entry.value("dateTime"), "2024-03-01T09:00:00");
    EXPECT_EQ(entry.value("change"), "26.57");
    EXPECT_EQ(entry.value("fiscalSign").toString().size(), 10);

    EXPECT_EQ(rig.send({0xA5, {"3"}}).fields, (QList<QByteArray>{"73.43", "50.00", "0.00", "0.00", "0.00"}));
    EXPECT_EQ(rig.ask(0xA5, {"5"}), "73.43");
    EXPECT_EQ(rig.send({0xA4, {"14"}}).fields.value(6), "1");
}

TEST(Sale, LooksLikeAReceipt)
{
    for (const int width : {44, 48}) {
        emulator::Identity identity;
        identity.width = width;
        Rig rig(identity);
        rig.openShift();
        rig.device.tape().clear();
        rig.run({{0xA2, {"20", "2", to866("Вход со двора")}}, open(2), item("2.000", "60.00"),
            item("1.000", "61.00", "11"), item("2.000", "61.00", "12"), subtotal(), pay(0, "400.00"),
            text("К О Н Е Ц"), finish()});
        const auto right = [width](const QString& left, const QString& value) {
            return left + value.rightJustified(width - left.size());
        };
        // In this order, with other lines between them.
        const QStringList expected{"ЭМУЛЯТОР, НЕ ЧЕК", "ООО \"РОМАШКА\"", "Вход со двора", "КАССОВЫЙ ЧЕК",
            "ПРИХОД", "Молоко", right("  2.000 x 60.00", "=120.00"), "  НДС 10%", right("ИТОГ", "=303.00"),
            right("НАЛИЧНЫМИ", "=400.00"), right("СДАЧА", "=97.00"), right("СУММА НДС 10%", "=10.91"),
            right("СУММА НДС 22%", "=11.00"), right("СУММА НДС 22/122", "=22.00"), "СНО: ОСН", "К О Н Е Ц",
            "КАССИР: Иванова", right("ФН: 9999078900001234", "ФД: 3"), "СПАСИБО ЗА ПОКУПКУ!"};
        EXPECT_EQ(missingFrom(rig.device.tape().text(), expected), "");
        for (const QString& line : rig.device.tape().lines())
            EXPECT_LE(line.size(), width) << line.toStdString();
    }
}

TEST(Sale, CancelledLeavesNoTrace)
{
    Rig rig;
    rig.openShift();
    rig.run({check(), open(2), bind(), item("1.000", "5.00"), subtotal(), pay(0, "5.00")});
    EXPECT_EQ(rig.code(cancel()), 0);
    EXPECT_EQ(rig.device.journal().entries().size(), 1);
    EXPECT_EQ(rig.ask(0xA5, {"5"}), "0.00");
    // Its code was checked and not sold, so it can be bound again.
    rig.run({open(2)});
    EXPECT_EQ(rig.code(bind()), 0);
}

TEST(Sale, ParametersChangeHowItGoes)
{
    Rig rig;
    rig.openShift();
    rig.code({0xA2, {"30", "0", "1"}});
    rig.run({open(2), item("1.000", "10.00"), subtotal(), pay(1, "4.00")});
    EXPECT_EQ(rig.code(finish()), 0);
    EXPECT_EQ(lastEntry(rig).value("payments"), (QJsonObject{{"cash", "6.00"}, {"electronically", "4.00"}}));
    rig.code({0xA2, {"6", "0", "1"}});
    rig.run({open(3), item("1.000", "7.00"), subtotal(), pay(0, "7.00")});
    EXPECT_EQ(rig.code(finish()), 14);
    rig.code(cancel());
    rig.run({{0xA2, {"4", "0", "1"}}, {0xA2, {"8", "0", "1"}}});
    EXPECT_EQ(rig.ask(0xA8), "0");
    rig.run(sale());
    EXPECT_EQ(rig.ask(0xA8), "1");
    rig.clock.advance(10'000);
    EXPECT_EQ(rig.ask(0xA8), "0");
    rig.code({0x61, {"", ""}});
    EXPECT_EQ(rig.ask(0xA5, {"5"}), "0.00");
}

TEST(Day, AddsUp)
{
    Rig rig;
    rig.openShift();
    rig.run({open(4), money("500.00"), finish()});
    rig.run(sale());
    rig.run({open(2, 32), item("1.000", "50.00"), subtotal(), pay(1, "30.00"), pay(3, "20.00"), finish()});
    rig.run({open(3), item("1.000", "40.00"), subtotal(), pay(0, "40.00"), finish()});
    rig.run({open(5), money("60.00"), finish(), open(2), cancel()});
    EXPECT_EQ(rig.send({0xA5, {"13"}}).fields,
        (QList<QByteArray>{"2", "1", "0", "0", "0", "0", "0", "0", "0", "0", "0", "1", "1"}));
    EXPECT_EQ(rig.send({0xA5, {"14"}}).fields,
        (QList<QByteArray>{
            "150.00", "40.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "500.00", "60.00"}));
    rig.device.tape().clear();
    EXPECT_EQ(rig.code({0x60, {to866("Петрова")}}), 0);
    const QString report = rig.device.tape().text().simplified();
    for (const char* const part :
        {"ПРИХОД: 2 =150.00 НАЛИЧНЫМИ =100.00 БЕЗНАЛИЧНЫМИ =30.00", "(КРЕДИТ) =20.00",
            "ВОЗВРАТ ПРИХОДА: 1 =40.00", "ВНЕСЕНИЕ: 1 =500.00 ИЗЪЯТИЕ: 1 =60.00 АННУЛИРОВАНО ДОКУМЕНТОВ 1",
            "В ДЕНЕЖНОМ ЯЩИКЕ =500.00", "КАССИР: Петрова"})
        EXPECT_TRUE(report.contains(part)) << part << "\n" << report.toStdString();
    EXPECT_EQ(rig.code({0x61, {"", ""}}), 0);
    EXPECT_EQ(lastEntry(rig).value("sales"), "150.00");
    EXPECT_EQ(rig.ask(0xA5, {"5"}), "500.00");
    EXPECT_EQ(rig.ask(0xA5, {"1"}), "1");
    // The drive has the opening, two sales, one return and the closing behind the registration.
    EXPECT_EQ(rig.ask(0xA4, {"1"}), "6");
    rig.device.tape().clear();
    EXPECT_EQ(rig.code({0x65, {"4"}}), 0);
    EXPECT_TRUE(rig.device.tape().text().contains("СНО: Патент"));
}
