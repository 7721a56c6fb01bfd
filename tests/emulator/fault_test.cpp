#include "rig.h"

#include <gtest/gtest.h>

using emulator::FaultMode;

namespace {

/// What a fault does to one exchange: whether the register acted, and what the host hears at once and when it
/// has waited for a minute.
struct Effect
{
    bool acts;
    std::function<QByteArray(const QByteArray& request, const QByteArray& answer)> heard;
};

QByteArray nothing(const QByteArray&, const QByteArray&)
{
    return {};
}

QByteArray whole(const QByteArray&, const QByteArray& answer)
{
    return answer;
}

QByteArray changed(QByteArray answer, qsizetype at, const QByteArray& bytes)
{
    return answer.replace(at, 1, bytes);
}

QByteArray framed(QByteArray body)
{
    return '\x02' + body + Rig::check(body);
}

// A bare switch, so that the compiler tells of a mode that has no row.
Effect effectOf(FaultMode mode)
{
    switch (mode) {
    case FaultMode::None:
    case FaultMode::Busy:
    case FaultMode::Slow:
    case FaultMode::Split:
    case FaultMode::PaperIn:
        return {true, whole};
    case FaultMode::Silence:
        return {false, nothing};
    case FaultMode::Lost:
    case FaultMode::Late:
        return {true, nothing};
    case FaultMode::Stale:
        return {true, [](const QByteArray&, const QByteArray& answer) {
                    return framed(QByteArray(1, static_cast<char>(answer.at(1) - 1)) + answer.mid(2, 2)
                               + "00\x03")
                        + answer;
                }};
    case FaultMode::Echo:
        return {true, [](const QByteArray& request, const QByteArray& answer) { return request + answer; }};
    case FaultMode::BadCheck:
        return {true, [](const QByteArray&, const QByteArray& answer) {
                    const int wrong = answer.right(2).toInt(nullptr, 16) ^ 0x55;
                    return answer.left(answer.size() - 2)
                        + QByteArray::number(wrong, 16).toUpper().rightJustified(2, '0');
                }};
    case FaultMode::Noise:
        return {true, [](const QByteArray&, const QByteArray& answer) {
                    return QByteArray::fromHex("ff7f0055aa") + answer;
                }};
    case FaultMode::Cut:
        return {
            true, [](const QByteArray&, const QByteArray& answer) { return answer.left(answer.size() / 2); }};
    case FaultMode::Drop:
        return {true, [](const QByteArray&, const QByteArray& answer) { return changed(answer, 1, ""); }};
    case FaultMode::Flip:
        return {true, [](const QByteArray&, const QByteArray& answer) {
                    return changed(answer, 1, QByteArray(1, static_cast<char>(answer.at(1) ^ 0x10)));
                }};
    case FaultMode::Double:
        return {true, [](const QByteArray&, const QByteArray& answer) {
                    return changed(answer, 1, QByteArray(2, answer.at(1)));
                }};
    case FaultMode::PaperOut:
        return {false,
            [](const QByteArray&, const QByteArray& answer) { return framed(answer.mid(1, 3) + "08\x03"); }};
    case FaultMode::Restart:
        return {false,
            [](const QByteArray&, const QByteArray& answer) { return framed(answer.mid(1, 3) + "01\x03"); }};
    }
    return {};
}

} // namespace

TEST(Faults, EachModeDoesWhatItsNameSays)
{
    QList<FaultMode> modes = emulator::FaultPlan::allModes();
    EXPECT_EQ(modes.size(), static_cast<qsizetype>(FaultMode::Restart));
    for (const FaultMode mode : modes) {
        const std::string name = emulator::FaultPlan::modeName(mode).toStdString();
        Rig rig;
        rig.openShift();
        const QByteArray request = rig.frame(open(2));
        const QByteArray body = request.mid(5, 3) + "00\x03";
        const Effect effect = effectOf(mode);
        QString error;
        const auto plan = emulator::FaultPlan::parse(QString::fromStdString(name) + "@4", &error);
        ASSERT_TRUE(plan) << name;
        rig.protocol.setFaults(*plan);
        QByteArray heard = rig.exchange(request);
        rig.clock.advance(60'000);
        heard += rig.outbox.take();
        EXPECT_EQ(heard.toHex(' '), effect.heard(request, framed(body)).toHex(' ')) << name;
        EXPECT_EQ(rig.device.document().isOpen(), effect.acts) << name;
        // The exchange after it is sound again, behind the answer that comes late.
        const QByteArray next = rig.exchange(rig.frame({0xA6, {}}));
        const QByteArray late = mode == FaultMode::Late ? framed(body) : QByteArray();
        EXPECT_TRUE(next.startsWith(late)) << name;
        EXPECT_EQ(rig.parse(next.mid(late.size())).code, 0) << name;
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
