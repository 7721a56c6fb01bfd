// A sale that is interrupted at each of its exchanges in turn: the host's program is killed, or the register
// loses its power. The journal knows what has become of it, and it can be sold again exactly when it was not
// issued.

#include "firstgoods.h"
#include "goods.h"
#include "host.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class InterruptedSale : public testing::TestWithParam<std::tuple<Protocol, FaultKind>>
{
};

qsizetype timesStored(const Rig& rig, const QString& goods)
{
    const QList<emulator::StoredDocument> documents = rig.device.drive().documentsFrom(1);
    return std::count_if(documents.cbegin(), documents.cend(),
        [&goods](const auto& document) { return firstGoodsOf(document.entry) == goods; });
}

/// False when the sale had fewer exchanges.
bool interrupt(Protocol protocol, FaultKind kind, int exchange)
{
    const QString goods = QStringLiteral("Товар");
    Random content(1, 4);
    const receipt::Receipt receipt = drawSale(goods, content);
    sale::SqliteStore journal(QStringLiteral(":memory:"));
    Report report;
    Rig rig(protocol);
    Host host(rig, journal, report, {protocol});
    host.start();
    rig.line.planFault(exchange, kind);
    const SaleResult first = host.sell(QStringLiteral("the-sale"), receipt, nullptr);
    if (!first.hasFailed() && first.faults.isEmpty())
        return false;
    EXPECT_NE(first.outcome, sale::Outcome::Unknown) << exchange;
    EXPECT_EQ(timesStored(rig, goods), first.isIssued() ? 1 : 0) << exchange;
    EXPECT_TRUE(host.sell(QStringLiteral("the-sale"), receipt, nullptr).isIssued()) << exchange;
    EXPECT_EQ(timesStored(rig, goods), 1) << exchange;
    return true;
}

TEST_P(InterruptedSale, IsIssuedOnce)
{
    const auto [protocol, kind] = GetParam();
    int exchange = 0;
    while (interrupt(protocol, kind, exchange))
        ++exchange;
    EXPECT_GE(exchange, protocol == Protocol::Hex ? 14 : 4);
}

INSTANTIATE_TEST_SUITE_P(Campaign, InterruptedSale,
    testing::Combine(testing::Values(Protocol::Hex, Protocol::Xml),
        testing::Values(FaultKind::HostKilledBefore, FaultKind::HostKilledAfter, FaultKind::PowerCutBefore,
            FaultKind::PowerCutAfter)),
    [](const auto& test) {
        return (std::get<0>(test.param) == Protocol::Hex ? "HEX" : "XML")
            + std::to_string(static_cast<int>(std::get<1>(test.param)));
    });

} // namespace
