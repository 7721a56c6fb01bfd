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

struct Interruption
{
    Protocol protocol;
    FaultKind kind;
};

void PrintTo(const Interruption& interruption, std::ostream* stream)
{
    *stream << (interruption.protocol == Protocol::Hex ? "HEX, " : "XML, ")
            << faultInfo(interruption.kind).text;
}

class InterruptedSale : public testing::TestWithParam<Interruption>
{
};

qsizetype timesStored(const Rig& rig, const QString& goods)
{
    const QList<emulator::StoredDocument> documents = rig.device.drive().documentsFrom(1);
    return std::count_if(documents.cbegin(), documents.cend(),
        [&goods](const auto& document) { return firstGoodsOf(document.entry) == goods; });
}

/// False when the sale had fewer exchanges.
bool interrupt(const Interruption& interruption, int exchange)
{
    const QString goods = QStringLiteral("Товар");
    Random content(1, 4);
    const receipt::Receipt receipt = drawSale(goods, content);
    sale::SqliteStore journal(QStringLiteral(":memory:"));
    Report report;
    Rig rig(interruption.protocol);
    Host host(rig, journal, report, {interruption.protocol});
    host.start();
    rig.line.planFault(exchange, interruption.kind);
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
    int exchange = 0;
    while (interrupt(GetParam(), exchange))
        ++exchange;
    EXPECT_GE(exchange, GetParam().protocol == Protocol::Hex ? 14 : 4);
}

INSTANTIATE_TEST_SUITE_P(Campaign, InterruptedSale,
    testing::Values(Interruption{Protocol::Hex, FaultKind::HostKilledBefore},
        Interruption{Protocol::Hex, FaultKind::HostKilledAfter},
        Interruption{Protocol::Hex, FaultKind::PowerCutBefore},
        Interruption{Protocol::Hex, FaultKind::PowerCutAfter},
        Interruption{Protocol::Xml, FaultKind::HostKilledBefore},
        Interruption{Protocol::Xml, FaultKind::HostKilledAfter},
        Interruption{Protocol::Xml, FaultKind::PowerCutBefore},
        Interruption{Protocol::Xml, FaultKind::PowerCutAfter}));

} // namespace
