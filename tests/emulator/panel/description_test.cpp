#include "memory/foreignstate.h"
#include "panel/panelrig.h"
#include "tests/http/apirecord.h"
#include "tests/http/askrow.h"

#include <gtest/gtest.h>

#include <span>

namespace {

/// A receipt that is too long for a PNG.
QList<Step> longSale()
{
    QList<Step> steps = sale();
    for (int line = 0; line < 1400; ++line)
        steps.insert(1, text(QStringLiteral("Строка")));
    return steps;
}

/// Asks, and notes what is asked and answered.
class Record
{
public:
    explicit Record(HexPanel& rig)
        : m_rig(rig)
        , m_record(rig.panel.site().router)
    {
    }

    Served ask(const QByteArray& method, const QByteArray& target, const QByteArray& body,
        const QByteArray& host = "127.0.0.1")
    {
        const Served served = m_rig.ask(method, target, body, host);
        m_record.add(method, target, served.status, served.type, served.body);
        return served;
    }

    QByteArray findings() const { return m_record.findings({"emulator.openapi.json"}); }

private:
    HexPanel& m_rig;
    ApiRecord m_record;
};

// In this order, on a register with a shift, a sale (document 3) and a very long one (4).
const AskRow askRows[] = {
    {"GET", "registers", "", 200, "\"register\":1"},
    {"GET", "openapi.json", "", 200, "Control interface"},
    {"GET", "state", "", 200, "\"documents\":4"},
    {"GET", "registers/1/state", "", 200, "\"shift\":{"},
    {"GET", "registers/2/state", "", 404, "no register 2"},
    {"GET", "settings", "", 200, "PRN.Printer.PrintWidthChars"},
    {"GET", "conformance", "", 200, "\"warnings\":[]"},
    {"GET", "documents?limit=1", "", 200, "\"next\":4"},
    {"GET", "documents?before=2", "", 200, "\"next\":null"},
    {"GET", "documents?limit=0", "", 400, "limit"},
    {"GET", "documents?nuber=3", "", 400, "nuber is not known here; known are: number, sum"},
    {"GET", "documents?sum=1.00&sum=2.00", "", 400, "sum stands twice"},
    {"GET", "registers?all=true", "", 400, "all is not known here"},
    {"GET", "documents?sum=much", "", 400, "sum"},
    {"GET", "documents/3", "", 200, "\"refusals\":[]"},
    {"GET", "documents/3.svg", "", 200, "<svg"},
    {"GET", "documents/3.png", "", 200, "PNG"},
    {"GET", "documents/3.pdf", "", 200, "%PDF"},
    {"GET", "documents/4.png", "", 422, "too long"},
    {"GET", "documents/1.svg", "", 404, "nothing of it was printed"},
    {"GET", "documents/99", "", 404},
    {"GET", "documents/99.svg", "", 404},
    {"GET", "documents/99.png", "", 404},
    {"GET", "documents/99.pdf", "", 404},
    {"GET", "tape?after=1&limit=1", "", 200, "\"document\":3"},
    {"GET", "tape?limit=501", "", 400},
    {"GET", "tape.txt", "", 200, "ЭМУЛЯТОР, НЕ ЧЕК"},
    {"GET", "tape/2.svg", "", 200, "<svg"},
    {"GET", "tape/2.png", "", 200, "PNG"},
    {"GET", "tape/2.pdf", "", 200, "%PDF"},
    {"GET", "tape/3.png", "", 422},
    {"GET", "tape/99.svg", "", 404},
    {"GET", "tape/99.png", "", 404},
    {"GET", "tape/99.pdf", "", 404},
    {"GET", "exchanges?document=3", "", 200, "HEX FinishDocument(22) ok"},
    {"GET", "exchanges?after=1&limit=1", "", 200, "\"next\":2"},
    {"GET", "exchanges?refused=maybe", "", 400, "refused"},
    {"GET", "exchanges/1", "", 200, "HEX Initialize(00)"},
    {"GET", "exchanges/0", "", 404},
    {"GET", "paper", "", 200, "\"state\":\"in\""},
    {"PUT", "paper", R"({"state":"nearEnd","linesLeft":5,"quietly":true})", 200, "\"linesLeft\":5"},
    {"PUT", "paper", R"({"state":"in","linesLeft":5})", 400, "linesLeft is not known"},
    {"PUT", "paper", R"({"state":"wet"})", 400, "in, nearEnd, out"},
    {"PUT", "paper", R"({"state":"in"})", 200, "\"linesLeft\":null"},
    {"GET", "drawer", "", 200, "\"cash\":\"200.00\""},
    {"PUT", "drawer", R"({"open":true})", 200, "true"},
    {"PUT", "drawer", R"({"open":1})", 400, "open is true or false"},
    {"GET", "cover", "", 200, "false"},
    {"PUT", "cover", R"({"open":false})", 200},
    {"PUT", "cover", "[]", 400},
    {"PUT", "power", R"({"offAt":"afterStoring"})", 200},
    {"GET", "power", "", 200, "\"offAt\":\"afterStoring\""},
    {"PUT", "power", R"({"state":"on"})", 200, "\"offAt\":null"},
    {"PUT", "power", R"({"state":"on","offAt":"afterStoring"})", 400, "offAt and state do not go together"},
    {"PUT", "power", "{}", 400, "state or offAt is missing"},
    {"PUT", "power", R"({"offAt":"beforeStoring"})", 200, "\"offAt\":\"beforeStoring\""},
    {"PUT", "power", R"({"offAt":null})", 200, "\"offAt\":null"},
    {"PUT", "power", R"({"state":"off"})", 200, "\"state\":\"off\""},
    {"PUT", "power", R"({"offAt":"beforeStoring"})", 409, "The power is off"},
    {"PUT", "power", R"({"offAt":null})", 200},
    {"PUT", "power", R"({"state":"on"})", 200},
    {"GET", "ofd", "", 200, "\"queue\":3"},
    {"PUT", "ofd", R"({"reachable":true})", 200, "\"firstUnsent\":null"},
    {"PUT", "ofd", "{", 400},
    {"GET", "clock", "", 200, "2024-03-01T09:00:00"},
    {"PUT", "clock", R"({"time":"2024-03-01T10:00:00","speed":0.5})", 200, "\"speed\":0.5"},
    {"PUT", "clock", R"({"time":"tomorrow"})", 400},
    {"PUT", "clock", "{}", 400},
    {"PUT", "clock", R"({"time":"2100-01-01T00:00:00"})", 400, "2000 to 2099"},
    {"PUT", "clock", R"({"time":"1999-12-31T23:59:59"})", 400, "2000 to 2099"},
    {"POST", "clock/jump", R"({"seconds":3000000000})", 400, "in the year 2119"},
    {"PUT", "clock", R"({"time":"2024-03-01T08:00:00"})", 409, "last document"},
    {"POST", "clock/jump", R"({"seconds":90})", 200, "T10:01:30"},
    {"POST", "clock/jump", R"({"seconds":1.5})", 400, "whole"},
    {"POST", "clock/jump", R"({"seconds":-7200})", 409},
    {"PUT", "faults",
        R"({"rules":[{"mode":"busy:7","command":"30","field":{"name":"name","value":"b"},"nth":2,"probability":0.5,"seed":3,
            "lifetime":9},{"mode":"power-off-after","each":2}]})",
        200, "\"lifetime\":9"},
    {"GET", "faults", "", 200, "\"hits\":0"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost"},{"mode":"gone"}]})", 400, "rules[1].mode"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","nth":1,"each":1}]})", 400},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","comand":"22"}]})", 400,
        "rules[0].comand is not known here; known are: mode"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost:5"}]})", 400, "rules[0].mode is no fault: lost takes no N"},
    {"PUT", "faults", R"({"rules":[{"mode":"gone:5"}]})", 400, "/faults/modes"},
    {"PUT", "faults", R"({"rules":[{"moed":"lost"}]})", 400, "mode is missing; given are: moed"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":""}]})", 400, "command is empty"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","probability":0}]})", 400, "probability is 0"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","seed":3}]})", 400, "seed goes with probability"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","nth":3,"lifetime":2}]})", 400, "lifetime is over before"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","each":3,"lifetime":2}]})", 400, "lifetime is over before"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","field":{"name":"","value":"1"}}]})", 400,
        "rules[0].field.name is none"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","field":{"name":"nosuchfield","value":"1"}}]})", 400,
        "barcode, "},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"35","field":{"name":"price","value":"1"}}]})",
        400, "known are: kind, sum; over HEX"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"35","field":{"name":"field1","value":"1"}}]})",
        400},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"8","field":{"name":"1079","value":"1"}}]})", 400,
        "price, "},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"FinishReceipt"}]})", 400, "FinishDocument, "},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"a0"}]})", 400, "rules[0].command"},
    {"PUT", "faults", R"({"rules":[{"mode":"answer-shape:flat","command":"A0"}]})", 400,
        "no request would suffer it"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","command":"GetState","storing":true}]})", 400, "storing"},
    {"PUT", "faults", R"({"rules":[{"mode":"lost","storing":1}]})", 400, "storing is true or false"},
    {"GET", "faults", "", 200, "busy:7"},
    {"DELETE", "faults", "", 204},
    {"PUT", "faults",
        R"({"rules":[{"mode":"lost","command":"36","field":{"name":"field1","value":"1"}},
            {"mode":"lost","command":"8","field":{"name":"item[2].price","value":"1"},"each":2,"lifetime":2},
            {"mode":"lost","command":"8","field":{"name":"1115","value":"1"}},
            {"mode":"lost","command":"SetParameters","field":{"name":"Printer.PrintWidthChars","value":"1"}}]})",
        200, "item[2].price"},
    {"POST", "faults", R"({"rules":[{"mode":"cut","nth":1}]})", 200, "\"cut\""},
    {"POST", "faults", R"({"rules":[{"mode":"busy:0"}]})", 400, "busy takes an N"},
    {"GET", "faults", "", 200, "item[2].price"},
    {"DELETE", "faults", "", 204},
    {"GET", "faults/modes", "", 200, "answer-shape:bytes"},
    {"PUT", "marks", R"({"rules":[{"pattern":"^01","result":5}]})", 200},
    {"PUT", "marks", R"({"rules":[{"pattern":"(","result":5}]})", 400, "regular expression"},
    {"GET", "marks", "", 200, "\"pattern\":\"^01\""},
    {"DELETE", "marks", "", 204},
    {"PUT", "snapshots/before", "", 200, "[\"before\"]"},
    {"PUT", "snapshots/a%2Fb", "", 400},
    {"GET", "snapshots", "", 200},
    {"PUT", "snapshots/short-lived", "", 200},
    {"DELETE", "snapshots/short-lived", "", 204},
    {"DELETE", "snapshots/short-lived", "", 404},
    {"POST", "reset", "", 200, "\"documents\":1"},
    {"POST", "reset", R"({"a":1})", 400, "a is not known here, where a body has no meaning"},
    {"POST", "reset", "garbage", 400, "not JSON"},
    {"PUT", "snapshots/before", R"({"name":"after"})", 400, "a body has no meaning"},
    {"POST", "snapshots/before/restore", R"({"name":"after"})", 400, "a body has no meaning"},
    {"POST", "snapshots/before/restore", "{}", 200, "\"documents\":4"},
    {"POST", "snapshots/after/restore", "", 404},
    {"GET", "wait?event=document&type=sell&timeout=0", "", 204},
    {"GET", "wait?event=noise", "", 400, "event is one of: document, tape"},
    {"GET", "wait?timeout=0", "", 400, "event is missing"},
    {"GET", "wait?event=document&tpye=sell", "", 400, "tpye is not known here"},
    {"GET", "wait?event=document&type=sale", "", 400, "type is one of: sell, "},
    {"GET", "wait?event=tape&type=sell", "", 400, "type goes with event=document"},
    {"GET", "wait?event=refusal&command=Sell", "", 400, "command is one of: "},
    {"GET", "wait?event=refusal&command=22&timeout=0", "", 204},
    {"GET", "wait?event=state&part=paper&timeout=0", "", 204},
    {"GET", "wait?event=state&part=weather&timeout=0", "", 400, "part is one of: clock"},
    {"GET", "wait?event=document&timeout=601", "", 400},
    {"GET", "wait?event=document&after=1-1", "", 410},
    {"GET", "events?all=true", "", 200},
    {"GET", "events?event=document,refusal", "", 200},
    {"GET", "events?all=yes", "", 400, "all is one of: true, false"},
    {"GET", "events?event=document,noise", "", 400, "event is one of: document, tape"},
};

/// A hundred of them, all of another register.
class ForeignSnapshots : public emulator::panel::Snapshots
{
public:
    QStringList names() const override
    {
        QStringList names;
        for (int number = 1; number <= 100; ++number)
            names.append(QString::number(number));
        return names;
    }
    void keep(const QString&) override { }
    void remove(const QString&) override { }
    void restore(const QString&) override { throw emulator::ForeignState("it is of the register B"); }
    void reset(const QString&) override { }
};

const AskRow foreignRows[] = {
    {"PUT", "snapshots/101", "", 409, "100 snapshots"},
    {"PUT", "snapshots/100", "", 200},
    {"POST", "snapshots/100/restore", "", 409, "of the register B"},
};

void askAll(Record& record, std::span<const AskRow> rows)
{
    for (const AskRow& row : rows)
        expectAnswer(row, record.ask(row.method, QByteArray("/v1/") + row.path, row.body));
}

} // namespace

TEST(Panel, AnswersAsItsDescriptionSays)
{
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    HexPanel rig;
    Record record(rig);
    const QByteArray start = rig.panel.events().idOf(0);
    openShift(rig);
    passAll(rig, sale() + longSale());
    const Served sold = record.ask("GET", "/v1/wait?event=document&type=sell&after=" + start, {});
    EXPECT_TRUE(sold.status == 200 && sold.json().value("data").toObject().value("number") == 3)
        << sold.text();
    askAll(record, askRows);
    EXPECT_EQ(record.ask("GET", "/v1/state", {}, "till.example").status, 421);
    rig.desk.setSnapshots(std::make_unique<ForeignSnapshots>());
    askAll(record, foreignRows);
    EXPECT_EQ(record.findings().toStdString(), "");
}
