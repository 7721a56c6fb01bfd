#include "conformance/hostreport.h"
#include "conformance/hostwatch.h"
#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QJsonArray>

using emulator::FaultMode;
using enum emulator::FaultMode;

namespace {

/// What the host does, and what goes wrong with it.
template <typename Request>
struct Deed
{
    Request request;
    FaultMode fault = FaultMode::None;
};

/// Warnings as "exchange kind", with commas between them.
QString warningsOf(const emulator::HostWatch& watch)
{
    QStringList texts;
    for (const emulator::HostRecord::Warning& warning : watch.record().warnings)
        texts.append(QString::number(warning.at.number) + ' ' + warning.kind);
    return texts.join(", ");
}

template <typename Line>
void connect(emulator::HostWatch& watch, emulator::Register& device, Line& line)
{
    device.journal().setListener([&watch](const QJsonObject& entry) { watch.store(entry); });
    line.setWatcher([&watch](const emulator::Exchange& exchange) { watch.note(exchange); });
}

struct XmlRequest
{
    int command;
    QString data;
};

XmlRequest soldAt(const QString& price)
{
    return {8, receipt(position(price, "1.000", price), price)};
}

const XmlRequest once = soldAt("10.00");
const XmlRequest otherSale = soldAt("11.00");

// The shift is opened in the first exchange.
const QList<std::pair<QList<Deed<XmlRequest>>, const char*>> xmlCases{
    {{{once}, {once}}, ""},
    {{{once, Lost}, {once}}, "3 outcome-not-asked, 3 receipt-repeated"},
    {{{once, Lost}, {{2, {}}}, {once}}, "4 receipt-repeated"},
    {{{once, Lost}, {{2, {}}}, {otherSale}, {once}}, ""},
    {{{once, Cut}, {{40, {}}}, {otherSale}}, ""},
    // The state of the shift is asked for before every receipt and tells nothing.
    {{{once, Lost}, {{44, {}}}, {otherSale}, {once}}, "4 outcome-not-asked"},
    {{{once, Silence}, {{2, {}}}, {once}}, ""},
    {{{once, Silence}, {{2, {}}, Lost}, {once}}, "4 outcome-not-asked"},
    {{{once, Echo}, {once}}, ""},
    // Nobody waited for the answer.
    {{{once, Slow}, {once}}, "3 outcome-not-asked, 3 receipt-repeated"},
    {{{once, PaperEnds}, {once, PaperIn}}, "3 outcome-not-asked, 3 receipt-repeated"},
    {{{once, ShapeCode8}, {once}}, "3 outcome-not-asked"},
    {{{once, ShapeResult00}, {once}}, "3 outcome-not-asked, 3 receipt-repeated"},
    {{{once, PaperOut}, {{2, {}}, PaperIn}, {once}}, ""},
};

QList<Deed<Step>> sell(const QByteArray& price, FaultMode fault = FaultMode::None)
{
    return {{open(2)}, {item("1.000", price)}, {subtotal()}, {pay(0, price)}, {finish(), fault}};
}

QList<Deed<Step>> operator+(QList<Deed<Step>> deeds, const Step& step)
{
    return deeds << Deed<Step>{step};
}

// The register is started and the shift opened in the first three exchanges.
const QList<std::pair<QList<Deed<Step>>, const char*>> hexCases{
    {sell("1.00") + sell("1.00"), ""},
    {sell("1.00", Lost) + sell("1.00"), "9 outcome-not-asked, 13 receipt-repeated"},
    {sell("1.00", Lost) + Step{0xA0, {}} + sell("1.00"), "14 receipt-repeated"},
    {sell("1.00", Lost) + QList<Deed<Step>>{{{0xA0, {}}, Answer}} + sell("2.00"), "10 outcome-not-asked"},
    {sell("1.00", Lost) + Step{0xA4, {"1"}} + sell("2.00"), ""},
    {sell("1.00", Lost) + Step{0xA4, {"2"}} + sell("2.00"), "10 outcome-not-asked"},
    {sell("1.00", Lost) + open(4) + money("1.00") + finish(), "11 outcome-not-asked"},
    {sell("1.00", Silence) + finish(), "9 outcome-not-asked"},
    {sell("1.00", Silence) + Step{0xA0, {}} + finish(), ""},
    {sell("1.00", Silence) + cancel() + sell("1.00"), ""},
    // The document stays open until it is printed.
    {sell("1.00", PaperEnds) + QList<Deed<Step>>{{finish(), PaperIn}}, ""},
    {QList<Deed<Step>>{{open(2)}, {item("1.000", "3.00")}, {subtotal()}} + pay(0, "1.00") + pay(1, "2.00"),
        "8 cash-not-last"},
    {QList<Deed<Step>>{{open(2)}, {item("1.000", "3.00")}, {subtotal()}} + pay(1, "1.00") + pay(0, "2.00"),
        ""},
};

} // namespace

TEST(Conformance, WarnsOfHostsThatDoNotMindTheOutcomeOverXml)
{
    for (const auto& [deeds, warnings] : xmlCases) {
        XmlRig rig;
        emulator::HostWatch watch(rig.device);
        connect(watch, rig.device, rig.line);
        rig.openShift();
        int exchange = 1;
        for (const Deed<XmlRequest>& deed : deeds) {
            emulator::FaultPlan plan;
            plan.add(++exchange, {deed.fault, 5});
            rig.line.setFaults(plan);
            rig.send(deed.request.command, deed.request.data);
        }
        EXPECT_EQ(warningsOf(watch), warnings) << deeds.size();
    }
}

TEST(Conformance, WarnsOfHostsThatDoNotMindTheOutcomeOverHex)
{
    for (const auto& [deeds, warnings] : hexCases) {
        Rig rig;
        emulator::HostWatch watch(rig.device);
        connect(watch, rig.device, rig.protocol);
        rig.openShift();
        for (const Deed<Step>& deed : deeds) {
            rig.protocol.setNextFault({deed.fault, 5});
            rig.send(deed.request);
        }
        EXPECT_EQ(warningsOf(watch), warnings) << deeds.size();
    }
}

TEST(Conformance, TellsCommandsAndRefusals)
{
    Rig rig;
    emulator::HostWatch watch(rig.device);
    connect(watch, rig.device, rig.protocol);
    rig.openShift();
    rig.clock.advance(25LL * 3600 * 1000);
    rig.run({open(2), open(2), {0xB0, {}}, open(2, 1, "1\x1B")});
    const QJsonObject told = emulator::hostreport::toJson(watch.record());
    EXPECT_EQ(told.value("exchanges"), 7);
    EXPECT_EQ(told.value("refused"), 4);
    const QJsonArray commands = told.value("commands").toArray();
    EXPECT_EQ(commands.at(3).toObject(),
        (QJsonObject{
            {"protocol", "HEX"}, {"command", "20"}, {"name", "OpenDocument"}, {"count", 3}, {"refused", 3}}));
    EXPECT_EQ(commands.at(4).toObject().value("name"), "");
    const QJsonObject refusal = told.value("refusals").toArray().at(0).toObject();
    EXPECT_EQ(refusal.value("count"), 2);
    EXPECT_EQ(refusal.value("exchange"), 4);
    EXPECT_EQ(refusal.value("error"), "10");
    EXPECT_EQ(warningsOf(watch), "4 shift-too-long, 5 shift-too-long, 7 shift-too-long");
    const QString text = emulator::hostreport::toText(watch.record());
    EXPECT_EQ(missingFrom(text,
                  {"conformance: 7 exchanges, 4 refused, 3 warnings\n", "  HEX 20 OpenDocument: 3\n",
                      "  refused, 2: exchange 4: HEX 20 OpenDocument: 10, 20: the shift has lasted",
                      "OpenDocument: 3, 20: field 8 is a number from 0 to 1: \"1\\x1b\"",
                      "  warning: exchange 4: HEX 20 OpenDocument: a document in a shift"}),
        "");
}
