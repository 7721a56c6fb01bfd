#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>

using emulator::FaultMode;
using emulator::FaultPlan;

namespace {

FaultPlan planOf(FaultMode mode, int exchange, const char* error = "81")
{
    QString name = FaultPlan::modeName(mode);
    if (mode == FaultMode::Answer)
        name += QStringLiteral(":") + error;
    QString wrong;
    const auto plan = FaultPlan::parse(QStringLiteral("%1@%2").arg(name).arg(exchange), &wrong);
    EXPECT_TRUE(plan) << wrong.toStdString();
    return plan.value_or(FaultPlan());
}

QByteArray framed(const QByteArray& body)
{
    return '\x02' + body + Rig::check(body);
}

/// What the host hears of a HEX answer when it has waited for a minute.
QByteArray heardOf(FaultMode mode, const QByteArray& request, const QByteArray& answer)
{
    const auto withSecondByte
        = [&answer](const QByteArray& bytes) { return QByteArray(answer).replace(1, 1, bytes); };
    switch (mode) {
    case FaultMode::Silence:
    case FaultMode::Lost:
    case FaultMode::Late:
        return {};
    case FaultMode::Stale:
    case FaultMode::ShapeBehindForeign:
        return framed(QByteArray(1, static_cast<char>(answer.at(1) - 1)) + answer.mid(2, 2) + "00\x03")
            + answer;
    case FaultMode::Echo:
        return request + answer;
    case FaultMode::BadCheck:
        return answer.chopped(2) + Rig::hex(answer.right(2).toInt(nullptr, 16) ^ 0x55);
    case FaultMode::Noise:
        return QByteArray::fromHex("ff7f0055aa") + answer;
    case FaultMode::Cut:
        return answer.left(answer.size() / 2);
    case FaultMode::Drop:
        return withSecondByte("");
    case FaultMode::Flip:
        return withSecondByte(QByteArray(1, static_cast<char>(answer.at(1) ^ 0x10)));
    case FaultMode::Double:
        return withSecondByte(QByteArray(2, answer.at(1)));
    case FaultMode::PaperOut:
        return framed(answer.mid(1, 3) + "08\x03");
    case FaultMode::Restart:
        return framed(answer.mid(1, 3) + "01\x03");
    case FaultMode::Answer:
        return framed(answer.mid(1, 3) + "51\x03");
    case FaultMode::ShapeNoCode:
        return framed(answer.mid(1, 3) + "ZZ\x03");
    case FaultMode::ShapeAckInside:
        return QByteArray(answer).insert(6, '\x06');
    case FaultMode::ShapeSmallCheck:
        return answer.chopped(2) + answer.right(2).toLower();
    default:
        return answer;
    }
}

} // namespace

TEST(Faults, EachModeDoesWhatItsNameSays)
{
    const QList<FaultMode> modes = FaultPlan::allModes();
    EXPECT_EQ(modes.size(), static_cast<qsizetype>(FaultMode::ShapeNoCode));
    for (const FaultMode mode : modes) {
        SCOPED_TRACE(FaultPlan::modeName(mode).toStdString());
        Rig rig;
        rig.openShift();
        const QByteArray request = rig.frame(open(2));
        const QByteArray answer = framed(request.mid(5, 3) + "00\x03");
        rig.protocol.setFaults(planOf(mode, 4));
        QString told;
        rig.protocol.setMisfitListener([&told](const QString& words) { told = words; });
        QByteArray heard = rig.exchange(request);
        rig.clock.advance(60'000);
        heard += rig.outbox.take();
        EXPECT_EQ(heard.toHex(' '), heardOf(mode, request, answer).toHex(' '));
        const bool fits = FaultPlan::fits({mode, 81}, emulator::Language::Hex);
        EXPECT_EQ(told.isEmpty(), fits) << told.toStdString();
        const QList<FaultMode> idle{
            FaultMode::Silence, FaultMode::PaperOut, FaultMode::Restart, FaultMode::Answer};
        EXPECT_EQ(rig.device.document().isOpen(), !idle.contains(mode));
        // The exchange after it is sound again, behind the answer that comes late.
        const QByteArray next = rig.exchange(rig.frame({0xA6, {}}));
        const QByteArray late = mode == FaultMode::Late ? answer : QByteArray();
        EXPECT_TRUE(next.startsWith(late));
        EXPECT_EQ(rig.parse(next.mid(late.size())).code, 0);
    }
}

TEST(Faults, WaitingIsCountedInVirtualTime)
{
    Rig rig;
    rig.protocol.setNextFault({FaultMode::Busy, 7});
    const QByteArray request = rig.frame({0xA6, {}});
    EXPECT_EQ(rig.exchange(request), "");
    for (int second = 2; second <= 6; second += 2) {
        rig.clock.advance(2000);
        EXPECT_EQ(rig.exchange("\x05"), "\x06") << second;
    }
    EXPECT_EQ(*rig.outbox.nextDue() - rig.clock.milliseconds(), 1000);
    rig.clock.advance(1000);
    EXPECT_EQ(rig.parse(rig.outbox.take()).code, 0);
    // A slow register does not answer when it is asked, a silent one not even later.
    for (const FaultMode mode : {FaultMode::Slow, FaultMode::Silence, FaultMode::Lost}) {
        rig.protocol.setNextFault({mode, 3});
        EXPECT_EQ(rig.exchange(rig.frame({0xA6, {}}) + '\x05'), "");
        rig.clock.advance(2999);
        EXPECT_EQ(rig.exchange("\x05"), "");
        rig.clock.advance(1);
        EXPECT_EQ(rig.outbox.take().isEmpty(), mode != FaultMode::Slow);
    }
    EXPECT_EQ(rig.protocol.exchangeCount(), 4);
}

TEST(Faults, PlanIsReadFromText)
{
    QString error;
    const auto plan = emulator::FaultPlan::parse("silence@3, busy:9@7,noise@10+,answer:2.2005@8", &error);
    ASSERT_TRUE(plan);
    const QList<std::pair<int, FaultMode>> expected{{1, FaultMode::None}, {3, FaultMode::Silence},
        {4, FaultMode::None}, {7, FaultMode::Busy}, {8, FaultMode::Answer}, {10, FaultMode::Noise},
        {99, FaultMode::Noise}};
    for (const auto& [exchange, mode] : expected)
        EXPECT_EQ(plan->at(exchange).mode, mode) << exchange;
    EXPECT_EQ(plan->at(7).argument, 9);
    EXPECT_TRUE(plan->at(8).category == 2 && plan->at(8).argument == 2005);
    EXPECT_EQ(plan->misfit(emulator::Language::Hex), "the fault answer:2.2005 is one of XML");
    EXPECT_EQ(plan->misfit(emulator::Language::Xml), "");
    for (const char* const wrong :
        {"quiet@1", "silence", "silence@0", "busy:x@1", "answer@1", "answer:0@1", "answer:256@1",
            "answer:0.8@1", "answer:3.0@1", "answer-shape@1", "answer-shape:round@1", "silence@1;noise@2"})
        EXPECT_FALSE(emulator::FaultPlan::parse(wrong, &error)) << wrong;
    EXPECT_EQ(error, "no such fault: \"silence@1;noise@2\"");
    const std::pair<const char*, const char*> mistakes[] = {
        {"busy:0", "busy takes an N (seconds) from 1 to 999999"},
        {"busy:99999999", "busy takes an N (seconds) from 1 to 999999"},
        {"split:0", "split takes an N (size) from 1 to 999999"},
        {"flip:-1", "flip takes an N (byte) from 0 to 999999"},
        {"lost:3", "lost takes no N"},
        {"answer", "answer takes a CODE from 1 to 255 (HEX), or CATEGORY.CODE (XML)"},
        {"answer:256", "answer takes a CODE from 1 to 255 (HEX), or CATEGORY.CODE (XML)"},
    };
    for (const auto& [mode, words] : mistakes) {
        EXPECT_FALSE(emulator::FaultPlan::parse(QLatin1String(mode) + "@1", &error)) << mode;
        EXPECT_EQ(error, QStringLiteral("no such fault: \"%1@1\": %2").arg(mode, words));
    }
    for (const QString text : {"lost", "lost@0", "busy:2"}) {
        EXPECT_FALSE(emulator::FaultPlan::parse(text, &error)) << text.toStdString();
        EXPECT_EQ(error,
            QStringLiteral("no such fault: \"%1\": @ and the number of an exchange, from 1, stand behind it")
                .arg(text));
    }
    // The first byte, and paper that has ended already.
    EXPECT_TRUE(emulator::FaultPlan::parse("drop:0@1,paper-ends:0@2", &error));
}

namespace {

/// What the host hears of one exchange: at once, and piece by piece until nothing comes any more.
struct Heard
{
    QByteArray atOnce;
    QByteArrayList later;
    QByteArray all() const { return atOnce + later.join(); }
};

Heard listen(XmlRig& rig, const QByteArray& request)
{
    Heard heard{rig.exchange(request).bytes, {}};
    for (std::optional<qint64> due = rig.outbox.nextDue(); due; due = rig.outbox.nextDue()) {
        rig.clock.advance(*due - rig.clock.milliseconds());
        heard.later.append(rig.outbox.take());
    }
    return heard;
}

} // namespace

TEST(XmlFaults, TakeTheFormOfItsDocuments)
{
    for (const FaultMode mode : FaultPlan::allModes()) {
        SCOPED_TRACE(FaultPlan::modeName(mode).toStdString());
        const QString opening = pa("2", 7, pa("1021", 1, "Иванова"));
        XmlRig sound;
        const QByteArray answer = sound.send(4, opening).bytes;
        XmlRig rig;
        rig.line.setFaults(planOf(mode, 1, "4.4002"));
        const QByteArray request = rig.request(4, opening);
        const Heard heard = listen(rig, request);
        const XmlReply all{heard.all()};
        if (mode == FaultMode::Stale) {
            EXPECT_TRUE(heard.atOnce.contains("-4000-"));
            EXPECT_EQ(heard.later, QByteArrayList{answer});
        } else if (mode == FaultMode::BadCheck) {
            EXPECT_TRUE(all.isWhole() && all.bytes.contains("<Result></Result><ErrorCategory>0<"));
        } else if (mode == FaultMode::PaperOut || mode == FaultMode::PaperEnds) {
            EXPECT_EQ(all.verdict(), "3.8");
        } else if (mode == FaultMode::Answer || mode == FaultMode::ShapeCode8) {
            EXPECT_EQ(all.verdict(), mode == FaultMode::Answer ? "4.4002" : "1.8");
        } else if (mode == FaultMode::ShapeBehindForeign) {
            EXPECT_TRUE(all.bytes.contains("-4000-") && all.bytes.endsWith(answer));
        } else if (mode < FaultMode::ShapePlain) {
            // It has no need of a start after it was switched on.
            EXPECT_EQ(all.bytes, mode == FaultMode::Restart ? answer : heardOf(mode, request, answer));
        }
        EXPECT_TRUE(mode != FaultMode::Split || heard.later.size() == (answer.size() - 1) / 7);
        const QList<FaultMode> idle{
            FaultMode::Silence, FaultMode::PaperOut, FaultMode::Answer, FaultMode::ShapeCode8};
        EXPECT_EQ(rig.device.state().shift.isOpen, !idle.contains(mode));
        // A late answer comes ahead of the next one and leaves the host time to throw it away.
        const QByteArray earlier = rig.id().toUtf8();
        const Heard next = listen(rig, rig.request(44));
        const bool late = mode == FaultMode::Late;
        EXPECT_EQ(next.atOnce.contains(earlier), late);
        EXPECT_EQ((XmlReply{late ? next.later.value(0) : next.atOnce}.element("RequestId")), rig.id());
    }
}

TEST(XmlFaults, ShapesAreThoseThatRegistersSend)
{
    // A query whose answer takes the form, what stands in it then, and what does not any more.
    const std::tuple<FaultMode, int, QByteArray, QByteArray> rows[] = {
        {FaultMode::ShapePlain, 2, "<ResponseData>&lt;pa n=&quot;Status&quot;", "CDATA"},
        {FaultMode::ShapeAbsent, 2, "</ResponseBody></ArmResponse>", "ResponseData"},
        {FaultMode::ShapeNoValues, 2, "<![CDATA[<pa n=\"Status\" t=\"7\"></pa>]]>", "LifePhase"},
        {FaultMode::ShapeBrokenData, 2, "<![CDATA[<pa]]>", "Status"},
        {FaultMode::ShapeFlat, 2, "<ArmResponse><ProtocolLabel>", "ResponseBody"},
        {FaultMode::ShapeBlanks, 2, "</ArmResponse> \r\n", ""},
        {FaultMode::ShapeNoDeclaration, 2, "<ArmResponse>", "<?xml"},
        {FaultMode::ShapeResult00, 2, "<Result>00</Result>", ""},
        {FaultMode::ShapeFractions, 40, "n=\"1135\" t=\"4\">0.0<", "n=\"1135\" t=\"4\">0<"},
        {FaultMode::ShapeShift01, 44, "n=\"ShiftState\" t=\"4\">01<", ""},
        {FaultMode::ShapeOverflow2, 2, "n=\"StatusOverflow\" t=\"4\">2<", ""},
    };
    for (const auto& [mode, command, has, lacks] : rows) {
        SCOPED_TRACE(FaultPlan::modeName(mode).toStdString());
        XmlRig rig;
        rig.openShift();
        rig.line.setFaults(planOf(mode, 2));
        const QByteArray answer = rig.send(command).bytes;
        EXPECT_TRUE(answer.contains(has)) << answer.toStdString();
        EXPECT_TRUE(lacks.isEmpty() || !answer.contains(lacks)) << answer.toStdString();
        EXPECT_TRUE(answer.contains(rig.id().toUtf8()));
    }
}

TEST(Outbox, KeepsThePaceOfTheLine)
{
    emulator::VirtualClock clock;
    emulator::Outbox outbox(clock, 9600);
    outbox.put(QByteArray(96, 'x'));
    EXPECT_EQ(outbox.take(), "");
    clock.advance(50);
    EXPECT_EQ(outbox.take().size(), 48);
    clock.advance(1000);
    EXPECT_EQ(outbox.take().size(), 48);
    EXPECT_EQ(outbox.nextDue(), std::nullopt);
    // What was idle time is not caught up with.
    outbox.put(QByteArray(96, 'y'));
    EXPECT_EQ(outbox.take(), "");
    EXPECT_EQ(*outbox.nextDue() - clock.milliseconds(), 2);
}
