// A campaign that overlooks what must never happen proves nothing.

#include "abstractfrdriver.h"
#include "exceptions.h"
#include "goods.h"
#include "host.h"
#include "sqlitestore.h"
#include "violation.h"

#include <gtest/gtest.h>

namespace {

const QByteArray hexFrame = QByteArray("\x02PIRI 31body\x03") + "5A";
/// The same command under another packet id.
const QByteArray hexFrameAgain = QByteArray("\x02PIRI!31body\x03") + "6B";
const QByteArray hexOther = QByteArray("\x02PIRI\"32body\x03") + "5A";
const QByteArray xmlClose = "<ArmRequest><RequestBody><Command>8</Command></RequestBody></ArmRequest>";

TEST(Watch, ChecksCallsForRepetitionsAndWaits)
{
    // A call with its requests and how long it waits for an answer, and whether that must not be.
    const std::tuple<const char*, Protocol, const char*, QList<QByteArray>, int, bool> rows[] = {
        {"other frames", Protocol::Hex, "checkPay", {hexFrame, hexOther}, 0, false},
        {"a frame again", Protocol::Hex, "checkPay", {hexFrame, hexFrameAgain}, 0, true},
        {"a connection asks again", Protocol::Hex, "connect", {hexFrame, hexFrameAgain}, 0, false},
        {"long waits", Protocol::Hex, "checkPay", {hexFrame}, 300'000, false},
        {"longer than the budget", Protocol::Hex, "checkPay", {hexFrame}, 320'000, true},
        {"one close", Protocol::Xml, "checkClose", {xmlClose}, 0, false},
        {"a close again", Protocol::Xml, "checkClose", {xmlClose, xmlClose}, 0, true},
        {"a close out of place", Protocol::Xml, "init", {xmlClose}, 0, true},
        {"longer than the budget", Protocol::Xml, "getFnInfo", {}, 31'000, true},
    };
    for (const auto& [what, protocol, call, requests, waited, isViolation] : rows) {
        Rig rig(protocol);
        Report report;
        sale::SqliteStore journal(QStringLiteral(":memory:"));
        Host host(rig, journal, report, {protocol});
        const auto exchange = [&line = rig.line, &sent = requests, milliseconds = waited] {
            for (const QByteArray& request : sent)
                line.write(request);
            line.waitForReadyRead(milliseconds);
            throw FrNoConnectionException(QStringLiteral("Нет связи с ФР"));
        };
        if (isViolation) {
            EXPECT_THROW(rig.watch(call, exchange), Violation) << what << ", " << call;
        } else {
            EXPECT_THROW(rig.watch(call, exchange), FrNoConnectionException) << what << ", " << call;
        }
    }
}

TEST(Watch, SeesTheCallsFromOutsideOnly)
{
    Rig rig(Protocol::Xml);
    rig.start();
    QList<QByteArray> calls;
    rig.watch = [&calls](const char* name, const std::function<void()>& work) {
        calls.append(name);
        work();
    };
    // Opens the shift by itself.
    rig.driver().checkOpen(FiscalDocument(hw::fr::CheckSale));
    EXPECT_TRUE(rig.driver().getFnInfo().fnStatus.isShiftOpen);
    EXPECT_EQ(calls, (QList<QByteArray>{"checkOpen", "getFnInfo"}));
}

TEST(DrawnSale, IsPaidAndTheSameForTheSameSeed)
{
    bool hasMark = false;
    bool hasText = false;
    for (quint64 stream = 0; stream < 50; ++stream) {
        Random first(1, stream);
        Random second(1, stream);
        const receipt::Receipt sale = drawSale(QStringLiteral("Товар"), first);
        EXPECT_GE(sale.paid, sale.total);
        EXPECT_GT(sale.total, 0);
        EXPECT_EQ(drawSale(QStringLiteral("Товар"), second).total, sale.total);
        hasMark = hasMark || sale.hasMarkedItems();
        hasText = hasText || sale.items.constLast().kind == receipt::ReceiptItem::Text;
    }
    EXPECT_TRUE(hasMark && hasText);
}

} // namespace
