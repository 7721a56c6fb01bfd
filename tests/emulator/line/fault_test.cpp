#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>

using emulator::FaultMode;
using emulator::FaultPlan;

namespace {

FaultPlan planOf(FaultMode mode, int exchange)
{
    QString error;
    const auto plan
        = FaultPlan::parse(QStringLiteral("%1@%2").arg(FaultPlan::modeName(mode)).arg(exchange), &error);
    EXPECT_TRUE(plan) << error.toStdString();
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
    default:
        return answer;
    }
}

} // namespace

TEST(Faults, EachModeDoesWhatItsNameSays)
{
    const QList<FaultMode> modes = FaultPlan::allModes();
    EXPECT_EQ(modes.size(), static_cast<qsizetype>(FaultMode::Restart));
    for (const FaultMode mode : modes) {
        SCOPED_TRACE(FaultPlan::modeName(mode).toStdString());
        Rig rig;
        rig.openShift();
        const QByteArray request = rig.frame(open(2));
        const QByteArray answer = framed(request.mid(5, 3) + "00\x03");
        rig.protocol.setFaults(planOf(mode, 4));
        QByteArray heard = rig.exchange(request);
        rig.clock.advance(60'000);
        heard += rig.outbox.take();
        EXPECT_EQ(heard.toHex(' '), heardOf(mode, request, answer).toHex(' '));
        const QList<FaultMode> idle{FaultMode::Silence, FaultMode::PaperOut, FaultMode::Restart};
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
    const auto plan = emulator::FaultPlan::parse("silence@3, busy:9@7,noise@10+", &error);
    ASSERT_TRUE(plan);
    const QList<std::pair<int, FaultMode>> expected{{1, FaultMode::None}, {3, FaultMode::Silence},
        {4, FaultMode::None}, {7, FaultMode::Busy}, {10, FaultMode::Noise}, {99, FaultMode::Noise}};
    for (const auto& [exchange, mode] : expected)
        EXPECT_EQ(plan->at(exchange).mode, mode) << exchange;
    EXPECT_EQ(plan->at(7).argument, 9);
    for (const char* const wrong : {"quiet@1", "silence", "silence@0", "busy:x@1", "silence@1;noise@2"})
        EXPECT_FALSE(emulator::FaultPlan::parse(wrong, &error)) << wrong;
    EXPECT_EQ(error, "no such fault: \"silence@1;noise@2\"");
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
        rig.line.setFaults(planOf(mode, 1));
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
        } else {
            // It has no need of a start after it was switched on.
            EXPECT_EQ(all.bytes, mode == FaultMode::Restart ? answer : heardOf(mode, request, answer));
        }
        EXPECT_TRUE(mode != FaultMode::Split || heard.later.size() == (answer.size() - 1) / 7);
        EXPECT_EQ(rig.device.state().shift.isOpen, mode != FaultMode::Silence && mode != FaultMode::PaperOut);
        // A late answer comes ahead of the next one and leaves the host time to throw it away.
        const QByteArray earlier = rig.id().toUtf8();
        const Heard next = listen(rig, rig.request(44));
        const bool late = mode == FaultMode::Late;
        EXPECT_EQ(next.atOnce.contains(earlier), late);
        EXPECT_EQ((XmlReply{late ? next.later.value(0) : next.atOnce}.element("RequestId")), rig.id());
    }
}
