#include "frames.h"
#include "trace/comparison.h"
#include "trace/meaning.h"

#include <gtest/gtest.h>

namespace {

using namespace frames;

// One after the other, as on one line; a millisecond lies between two.
TEST(Meaning, FramesAreToldInWords)
{
    const std::pair<trace::Frame, const char*> rows[] = {
        {toRegister(request(' ', "A0")), "HEX RequestStateStatus(A0) id=20"},
        {toHost(answer(' ', "A0", "0,4,0,")),
            "HEX RequestStateStatus(A0) ok id=20 fatal=0 flags=4 document=0 1.000 ms"},
        {toHost(request(' ', "A0")), "HEX echo RequestStateStatus(A0) id=20"},
        {toRegister(request('!', "30", "\x95\xAB\xA5\xA1 \"\xAF\",,1.000,64.90,")),
            R"(HEX AddPaymentObject(30) id=21 name="Хлеб \"п\"" quantity=1.000 price=64.90)"},
        {toHost(answer('!', "30", "", "08")),
            R"(HEX AddPaymentObject(30) error 08 "Конец бумаги" id=21 1.000 ms)"},
        {toRegister(request('"', "A5", "5,")), "HEX GetKktData(A5) id=22 question=5"},
        {toHost(answer('"', "A5", "10.00,")), "HEX GetKktData(A5) ok id=22 cashInDrawer=10.00 1.000 ms"},
        {toHost(answer('!', "30", "", "77")), "HEX AddPaymentObject(30) error 77 id=21 4.000 ms"},
        {toRegister(request('#', "6B", "Ира\n,,")), "HEX OpenShift(6B) id=23 cashier=\"Ира\\n\""},
        {toRegister("\x05"), "HEX ENQ"},
        {toHost("\x06"), "HEX ACK"},
        {toRegister("\u001BBM"), R"(HEX picture bytes="1b 42 4d")"},
        {toHost(request('#', "6B", "Ира\n,,")), "HEX echo OpenShift(6B) id=23 cashier=\"Ира\\n\""},
        {toHost(answer('~', "A4", "5,")), "HEX GetFnData(A4) ok id=7E field1=5"},
        {toRegister(request('%', "30", "\x95,П1,1.000,")),
            "HEX AddPaymentObject(30) id=25 name=Х barcode=П1 quantity=1.000"},
        {toHost("\xFF"), "unknown bytes=ff"},
        {toHost("\x02 A0"), "HEX RequestStateStatus(A0) BAD: broken off id=20 16.000 ms"},
        {toRegister(request('$', "77", "x,")), "HEX (77) id=24 field1=x"},
        {toRegister(xmlRequest("{a}", 8,
             R"(<pa n="3" t="7"><pa n="1059" t="6"><pa n="1059" t="7"><pa n="1030" t="1">Хлеб</pa></pa></pa>)"
             R"(<pa n="1031" t="2">1.00</pa><pa n="Footer" t="1"></pa></pa>)")),
            R"(XML CloseReceipt(8) id={a} item[1].name=Хлеб cash=1.00 Footer="")"},
        {toHost(xmlAnswer("{a}", 8, R"(<pa n="3" t="7"><pa n="1040" t="4">7</pa></pa>)")),
            "XML CloseReceipt(8) ok id={a} document=7 1.000 ms"},
        {toHost(xmlAnswer("{a}", 8).replace("<Result>0</Result>",
             "<Result>1</Result><ErrorCategory>3</ErrorCategory><ErrorCode>8</ErrorCode>"
             "<ErrorDescription>нет бумаги</ErrorDescription>")),
            "XML CloseReceipt(8) error 3.8 \"нет бумаги\" id={a} 2.000 ms"},
        {toHost(xmlAnswer("{b}", 22, R"(<pa n="200001" t="5">2026-03-01 09:00:00</pa>)")),
            "XML GetDateTime(22) ok id={b} 200001=\"2026-03-01 09:00:00\""},
        {toHost(xmlAnswer("{b}", 6).replace("<Result>0</Result>", "<Result>0</Result><Result>1</Result>")),
            "XML CloseShift(6) ok id={b}"},
    };
    trace::Decoder decoder;
    qint64 now = 0;
    for (const auto& [passed, expected] : rows) {
        trace::Frame frame = passed;
        frame.microseconds = now += 1000;
        EXPECT_EQ(decoder.decode(frame).text().toStdString(), expected);
    }
}

TEST(Comparison, TimesAndIdsAreNoDifferences)
{
    const QList<trace::Frame> first{toRegister(request(' ', "A7")),
        toHost(answer(' ', "A7", "010326,090000,")), toRegister(request('!', "34")), toRegister("\x05"),
        toHost("\x06"), toHost(answer('!', "34"))};
    QList<trace::Frame> second{toRegister(request('A', "A7")), toHost(answer('A', "A7", "020326,120000,")),
        toRegister(request('B', "34")), toHost(answer('B', "34"))};
    EXPECT_EQ(trace::differencesBetween(traceOf(first), traceOf(second), 9), QStringList());
    second.insert(2, toRegister(request('C', "A0")));
    second.last() = toHost(answer('B', "34", {}, "01"));
    EXPECT_EQ(trace::differencesBetween(traceOf(first), traceOf(second), 9),
        (QStringList{"only in the second: frame 3 > HEX RequestStateStatus(A0)",
            "frame 5 < HEX Subtotal(34) error 01 \"Функция невыполнима при данном статусе ККТ\": "
            "HEX Subtotal(34) error 01 \"Функция невыполнима при данном статусе ККТ\", expected HEX "
            "Subtotal(34) ok"}));
    EXPECT_EQ(trace::differencesBetween(traceOf(first), traceOf({}), 2).size(), 2);
}

TEST(Comparison, ValuesAreToldAndMasksAreNone)
{
    const auto sale = [](const char* cashier, const char* sum) {
        return toRegister(xmlRequest("a", 8,
            "<pa n=\"3\" t=\"7\"><pa n=\"1021\" t=\"1\">" + QByteArray(cashier)
                + "</pa><pa n=\"1031\" t=\"2\">" + sum + "</pa></pa>"));
    };
    EXPECT_EQ(
        trace::differencesBetween(traceOf({sale("Ира", "1.00")}), traceOf({sale("Ххх", "1.50")}, true), 9),
        QStringList{"frame 1 > XML CloseReceipt(8): cash: 1.50, expected 1.00"});
}

} // namespace
