#include "frames.h"
#include "trace/hostplayer.h"
#include "trace/identity.h"
#include "trace/registerplayer.h"
#include "trace/script.h"
#include "trace/tracereader.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>

namespace {

using namespace frames;

/// Number, state, number again, a subtotal.
const trace::Trace recorded = traceOf({toRegister(request(' ', "A6")), toHost(answer(' ', "A6", "17,")),
    toRegister(request('!', "A0")), toRegister("\x05"), toHost("\x06"), toHost(answer('!', "A0", "0,4,5,")),
    toRegister(request('"', "34")), toHost(answer('"', "34")), toRegister(request('#', "A0")),
    toHost(answer('#', "A0", "0,4,7,"))});

QByteArray said(trace::RegisterPlayer& player, const QByteArray& bytes)
{
    QByteArray all;
    for (const trace::RegisterPlayer::Answer& answer : player.receive(bytes))
        all += answer.bytes;
    return all;
}

TEST(RegisterPlayer, AnswersHaveTheIdsOfTheLivingHost)
{
    trace::RegisterPlayer player(recorded);
    // What is asked and answered, and whether the trace is done then.
    const std::tuple<const char*, QByteArray, QByteArray, bool> rows[] = {
        {"in order", request('a', "A6"), answer('a', "A6", "17,"), false},
        {"alive", "\x05", "\x06", false},
        {"a question of later", request('b', "A0"), answer('b', "A0", "0,4,5,"), false},
        {"a question of before", request('c', "A6"), answer('c', "A6", "17,"), false},
        {"no question of the trace", request('d', "A8"), answer('d', "A8", {}, "01"), false},
        {"no step of the trace", request('e', "22", "0,1,0,"), answer('e', "22", {}, "01"), false},
        {"the step", request('f', "34"), answer('f', "34"), true},
        {"the step again", request('f', "34"), answer('f', "34"), true},
        {"another one", request('g', "34"), answer('g', "34", {}, "01"), true},
        {"what has become of it", request('h', "A0"), answer('h', "A0", "0,4,7,"), true},
    };
    for (const auto& [what, asked, answered, isDone] : rows) {
        EXPECT_EQ(said(player, asked).toHex(' '), answered.toHex(' ')) << what;
        EXPECT_EQ(player.isDone(), isDone) << what;
    }
    EXPECT_EQ(player.complaints().size(), 3);
    EXPECT_EQ(player.missing(), QStringList());
}

TEST(RegisterPlayer, QuestionsMayBeLeftOutAndStepsMayNot)
{
    trace::RegisterPlayer player(recorded);
    EXPECT_EQ(said(player, request('a', "34")), answer('a', "34"));
    trace::RegisterPlayer other(traceOf({toRegister(request(' ', "34")), toHost(answer(' ', "34")),
        toRegister(request('!', "22", "0,1,0,")), toHost(answer('!', "22"))}));
    EXPECT_EQ(said(other, request('a', "22", "0,1,0,")), answer('a', "22", {}, "01"));
    EXPECT_EQ(other.missing().size(), 2);
    trace::Trace twice = recorded;
    twice.frames.append({0, 2, trace::Direction::ToRegister, request('$', "A0")});
    trace::RegisterPlayer patient(twice);
    said(patient, request('a', "34"));
    EXPECT_FALSE(patient.isDone()) << "another connection is to come";
}

// Who mailed the trace has another cashier, and perhaps a shorter one without a tax number.
TEST(RegisterPlayer, StandInsMeanAnyValue)
{
    const auto opening = [](const QByteArray& people) { return toRegister(xmlRequest("a", 4, people)); };
    const QByteArray tree
        = "<pa n=\"3\" t=\"7\"><pa n=\"1021\" t=\"1\">%1</pa>%2<pa n=\"1055\" t=\"3\">%3</pa></pa>";
    const auto treeOf = [&tree](const char* name, const char* inn, const char* system) {
        return QByteArray(tree).replace("%1", name).replace("%2", inn).replace("%3", system);
    };
    const QByteArray recordedTree = treeOf("Ххххххх", "<pa n=\"1203\" t=\"1\">0000</pa>", "1");
    const QList<trace::Frame> xml{opening(recordedTree), toHost(xmlAnswer("a", 4))};
    const QList<trace::Frame> hex{
        toRegister(request(' ', "61", "\x95\xE5,0000,")), toHost(answer(' ', "61"))};
    const QByteArray living = xmlRequest("b", 4, treeOf("Ли", "", "1"));
    for (const bool isMasked : {true, false}) {
        trace::RegisterPlayer overXml(traceOf(xml, isMasked));
        EXPECT_EQ(said(overXml, living) == xmlAnswer("b", 4), isMasked);
        trace::RegisterPlayer overHex(traceOf(hex, isMasked));
        EXPECT_EQ(said(overHex, request('a', "61", "\x8B\xA8\xA8\xA8,,")) == answer('a', "61"), isMasked);
    }
    trace::RegisterPlayer player(traceOf(xml, true));
    said(player, xmlRequest("b", 4, treeOf("Ли", "", "2")));
    EXPECT_EQ(player.complaints(), QStringList{"XML OpenShift(4): taxSystem: 2, expected 1"});
}

TEST(RegisterPlayer, LateAnswersKeepTheirIds)
{
    trace::RegisterPlayer player(traceOf({toRegister(xmlRequest("new", 2)), toHost(xmlAnswer("old", 2)),
        {700, 1, trace::Direction::ToHost, xmlAnswer("new", 2)}}));
    const QList<trace::RegisterPlayer::Answer> answers = player.receive(xmlRequest("living", 2));
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers.at(0).bytes, xmlAnswer("old", 2));
    EXPECT_EQ(answers.at(1).bytes, xmlAnswer("living", 2));
}

// Either side is played to the other: ids are new ones, and nothing differs.
class Recorded : public testing::TestWithParam<QString>
{
};

TEST_P(Recorded, HostAndRegisterUnderstandEachOther)
{
    QFile file(QStringLiteral(FRSPF_TRACES "/") + GetParam());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const trace::Trace trace = trace::readTrace(file.readAll());
    trace::RegisterPlayer device(trace);
    trace::HostPlayer host(trace);
    while (!host.isOver()) {
        const QString title = host.title();
        if (!host.receive(said(device, host.nextRequest()))) {
            host.giveUp();
            ADD_FAILURE() << "no answer to " << title.toStdString();
        }
    }
    EXPECT_EQ(host.differences(), QStringList());
    EXPECT_EQ(device.complaints(), QStringList());
    EXPECT_TRUE(device.isDone());
}

INSTANTIATE_TEST_SUITE_P(Traces, Recorded,
    testing::ValuesIn(QDir(QStringLiteral(FRSPF_TRACES)).entryList({QStringLiteral("*.trace")})),
    [](const testing::TestParamInfo<QString>& parameter) {
        return QString(parameter.param).remove(".trace").replace('-', '_').toStdString();
    });

TEST(HostPlayer, RegisterIsAskedWhoItIs)
{
    for (const char* const protocol : {"hex", "xml"}) {
        QFile file(QStringLiteral(FRSPF_TRACES "/%1-day.trace").arg(protocol));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const trace::Trace trace = trace::readTrace(file.readAll());
        trace::RegisterPlayer device(trace);
        trace::HostPlayer host(trace::identityQuestions(trace));
        trace::Identity identity;
        while (!host.isOver()) {
            ASSERT_TRUE(host.receive(said(device, host.nextRequest()))) << host.title().toStdString();
            identity.take(host.lastAnswer());
        }
        EXPECT_EQ(identity.serial, "00103000000012345678");
        EXPECT_EQ(identity.drive, "9999000000000001");
        EXPECT_TRUE(trace::changesOf(trace).contains("OpenShift"));
    }
    EXPECT_EQ(trace::changesOf(traceOf({toRegister(request(' ', "00", "010326,090000,")),
                  toRegister(request('!', "A0")), toRegister(request('"', "A2", "6,0,1,"))})),
        QStringList{"SetParameter"});
}

TEST(HostPlayer, OtherAnswersAreTold)
{
    trace::HostPlayer host(recorded, "ABCD");
    EXPECT_EQ(host.nextRequest().mid(1, 4), "ABCD");
    EXPECT_TRUE(host.receive(answer(' ', "A6", "18,")));
    EXPECT_EQ(host.nextRequest().at(5), '!');
    EXPECT_FALSE(host.receive(answer(' ', "A6", "17,"))) << "a late one";
    host.giveUp();
    EXPECT_EQ(host.differences(),
        (QStringList{"1 HEX GetSerialNumber(A6): serialNumber: 18, expected 17",
            "2 HEX RequestStateStatus(A0): no answer"}));
}

} // namespace
