#include "panel/panelrig.h"

#include <gtest/gtest.h>

TEST(Panel, SwitchesAreWhatTheHostMeets)
{
    const Step time{0xA7, {}};
    // The answer code, -1 for none that comes, and the first field.
    const std::tuple<const char*, const char*, Step, int, QByteArray> rows[] = {
        {"paper", R"({"state":"out"})", open(2), 8, ""},
        {"paper", R"({"state":"in"})", {0x60, {"Иванова"}}, 0, ""},
        {"cover", R"({"open":true})", open(2), 9, ""},
        {"cover", R"({"open":false})", {0x60, {"Иванова"}}, 0, ""},
        {"ofd", R"({"reachable":true})", {0xA4, {"8"}}, 0, "1"},
        {"drawer", R"({"open":true})", {0xA8, {}}, 0, "1"},
        {"drawer", R"({"open":false})", {0xA8, {}}, 0, "0"},
        {"marks", R"({"rules":[{"pattern":"^0104","result":13}]})", check(), 0, "13"},
        {"marks", R"({"rules":[{"pattern":"^99","result":0}]})", check(), 0, "15"},
        {"clock", R"({"time":"2024-03-02T09:30:00"})", time, 0, "020324"},
        {"clock", R"({"speed":2})", open(2), 10, ""},
        {"power", R"({"offAt":"beforeStoring"})", {0x6A, {""}}, -1, ""},
        {"power", R"({"state":"on"})", {0xA4, {"1"}}, 0, "2"},
        {"power", R"({"offAt":"afterStoring"})", {0xA4, {"1"}}, -1, ""},
        {"power", R"({"state":"on"})", open(2), 1, ""},
        {"power", R"({"state":"off"})", time, -1, ""},
    };
    HexPanel rig;
    openShift(rig);
    for (const auto& [path, body, step, error, field] : rows) {
        const Served served = rig.ask("PUT", QByteArray("/v1/") + path, body);
        EXPECT_EQ(served.status, 200) << served.text();
        const Reply reply = rig.parse(rig.pass(rig.frame(step)));
        EXPECT_EQ(reply.code, error) << path << ' ' << body;
        EXPECT_EQ(reply.fields.value(0), field) << path << ' ' << body;
    }
}

TEST(Panel, TheClockRunsFaster)
{
    HexPanel rig;
    rig.ask("PUT", "/v1/clock", R"({"speed":3600})");
    rig.clock.advance(2000);
    EXPECT_EQ(rig.ask("GET", "/v1/clock").json().value("time"), "2024-03-01T11:00:00");
    rig.ask("PUT", "/v1/clock", R"({"speed":1})");
    rig.clock.advance(2000);
    EXPECT_EQ(rig.ask("GET", "/v1/clock").json().value("time"), "2024-03-01T11:00:02");
}

TEST(Panel, PowerGoesBeforeOrAfterADocumentIsStored)
{
    for (const auto& [when, documents] : {std::pair{"beforeStoring", 2}, std::pair{"afterStoring", 3}}) {
        HexPanel rig;
        openShift(rig);
        passAll(rig, sale().first(4));
        rig.ask("PUT", "/v1/power", QByteArray(R"({"offAt":")") + when + "\"}");
        EXPECT_EQ(code(rig, finish()), -1);
        EXPECT_EQ(code(rig, {0xA7, {}}), -1);
        const QJsonObject state = rig.ask("GET", "/v1/state").json();
        EXPECT_EQ(state.value("power").toObject().value("state"), "off");
        EXPECT_EQ(state.value("drive").toObject().value("documents"), documents);
        rig.ask("PUT", "/v1/power", R"({"state":"on"})");
        EXPECT_EQ(code(rig, started), 0);
        EXPECT_EQ(code(rig, finish()), documents == 2 ? 0 : 1);
    }
}

TEST(Panel, ALateAnswerGoesWithThePower)
{
    HexPanel rig;
    openShift(rig);
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"late","nth":1}]})");
    EXPECT_EQ(code(rig, {0xA7, {}}), -1);
    rig.ask("PUT", "/v1/power", R"({"state":"off"})");
    rig.ask("PUT", "/v1/power", R"({"state":"on"})");
    EXPECT_EQ(rig.pass(rig.frame({0xA7, {}})).count('\x02'), 1);
}

TEST(Panel, EventsComeInTheirOrderAndOfTheirRegister)
{
    HexPanel rig;
    emulator::Register other(rig.clock);
    emulator::HostWatch otherWatch(other);
    rig.panel.add(other, otherWatch, rig.faults);
    http::Request request = http::Request::of("GET", "/v1/registers/1/events");
    const http::Answer answer = rig.panel.site().answer(request);
    openShift(rig);
    EXPECT_EQ(code(rig, subtotal()), 1);
    rig.ask("PUT", "/v1/registers/2/paper", R"({"state":"out"})");
    rig.ask("PUT", "/v1/faults", R"({"rules":[{"mode":"restart","nth":1}]})");
    passAll(rig, {{0xA7, {}}});
    ASSERT_TRUE(std::holds_alternative<std::shared_ptr<http::Stream>>(answer));
    QStringList names;
    for (const QByteArray& line : std::get<std::shared_ptr<http::Stream>>(answer)->take().split('\n')) {
        if (line.startsWith("event: "))
            names.append(line.mid(7));
    }
    EXPECT_EQ(names.join(' '), "exchange document tape exchange exchange refusal state exchange fault");
}

TEST(Panel, WhatAHostChangesIsToldWithoutBeingAsked)
{
    HexPanel rig;
    rig.ask("PUT", "/v1/paper", R"({"state":"nearEnd","linesLeft":500})");
    const auto partsOf = [&rig](const Step& step) {
        http::Request request = http::Request::of("GET", "/v1/events?event=state");
        const auto stream = std::get<std::shared_ptr<http::Stream>>(rig.panel.site().answer(request));
        EXPECT_EQ(code(rig, step), 0);
        QStringList parts;
        for (const QByteArray& line : stream->take().split('\n')) {
            if (line.startsWith("data: "))
                parts.append(QJsonDocument::fromJson(line.mid(6)).object().value("part").toString());
        }
        return parts.join(' ');
    };
    EXPECT_EQ(partsOf(started), "");
    EXPECT_EQ(partsOf({0x6B, {"Иванова", ""}}), "paper");
    EXPECT_EQ(partsOf({0x80, {}}), "drawer");
    EXPECT_EQ(partsOf({0xA8, {}}), "");
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0xA8, {}}), "drawer");
    rig.ask("PUT", "/v1/drawer", R"({"open":true})");
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0x80, {}}), "") << "it was held open";
    rig.clock.advance(20'000);
    EXPECT_EQ(partsOf({0xA8, {}}), "drawer") << "and is shut after a host had it opened";
}
