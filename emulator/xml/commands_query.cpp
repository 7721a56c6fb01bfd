#include "xml/protocol.h"

namespace emulator {

namespace {

const QString ffdVersion = QStringLiteral("4");

XmlNode flag(const QString& name, bool on)
{
    return XmlNode::number(name, on ? 1 : 0);
}

// What every answer about money says of one kind of receipt.
XmlNode turnover(const QString& tag, const Turnover& counted)
{
    static const char* const paymentTags[paymentKinds] = {"1136", "1138", "1218", "1219", "1220"};
    QList<XmlNode> nodes{XmlNode::number(QStringLiteral("1135"), counted.count),
        XmlNode::money(QStringLiteral("1201"), counted.sum)};
    for (size_t kind = 0; kind < counted.payments.size(); ++kind)
        nodes.append(XmlNode::money(QLatin1String(paymentTags[kind]), counted.payments[kind]));
    return XmlNode::structure(tag, nodes);
}

XmlNode receipts(const QString& tag, const ShiftCounters& counters)
{
    return XmlNode::structure(tag,
        {turnover(QStringLiteral("1129"), counters.sales),
            turnover(QStringLiteral("1130"), counters.returns)});
}

XmlNode moneyOperations(const ShiftCounters& counters, Money cash)
{
    return XmlNode::structure(QStringLiteral("MOCounters"),
        {XmlNode::number(QStringLiteral("MOIncomeCount"), counters.cashIn.count),
            XmlNode::money(QStringLiteral("MOIncomeSum"), counters.cashIn.sum),
            XmlNode::number(QStringLiteral("MOOutcomeCount"), counters.cashOut.count),
            XmlNode::money(QStringLiteral("MOOutcomeSum"), counters.cashOut.sum),
            XmlNode::money(QStringLiteral("CashSumm"), cash)});
}

XmlNode operatorState(const FiscalDrive& drive)
{
    const FiscalRecord* const unsent = drive.firstUnsent();
    const XmlNode when = unsent == nullptr ? XmlNode::text(QStringLiteral("1098"), QString())
                                           : XmlNode::dateTime(QStringLiteral("1098"), unsent->dateTime);
    return XmlNode::structure(QStringLiteral("OFDStatus"),
        {XmlNode::number(QStringLiteral("1097"), drive.queueLength()),
            XmlNode::number(QStringLiteral("1116"), unsent == nullptr ? 0 : unsent->number), when});
}

XmlNode driveState(const Register& device)
{
    const FiscalDrive& drive = device.drive();
    const int warnings = drive.warnings(device.now());
    const Document& document = device.document();
    const bool receipt = document.isReceipt() && !document.isStored();
    return XmlNode::structure(QStringLiteral("FNStatus"),
        {XmlNode::number(QStringLiteral("LifePhase"), drive.lifePhase()),
            XmlNode::number(QStringLiteral("CurrentDocType"), receipt ? 4 : 0),
            flag(QStringLiteral("CurrentDocData"), receipt && !document.items.isEmpty()),
            flag(QStringLiteral("ShiftState"), device.isShiftOpen()),
            flag(QStringLiteral("StatusNeedChange"), (warnings & 1) != 0),
            flag(QStringLiteral("StatusEndingResource"), (warnings & 2) != 0),
            flag(QStringLiteral("StatusOverflow"), (warnings & 4) != 0),
            flag(QStringLiteral("1053"), (warnings & 8) != 0),
            XmlNode::dateTime(QStringLiteral("lastDocDateTime"), drive.last().dateTime),
            XmlNode::number(QStringLiteral("lastDocNumber"), drive.last().number),
            XmlNode::text(QStringLiteral("1041"), drive.number()),
            XmlNode::dateTime(QStringLiteral("ExpirationDate"), drive.expiry().startOfDay()),
            XmlNode::text(QStringLiteral("FWVersion"), drive.version())});
}

} // namespace

XmlAnswer XmlProtocol::state(const XmlNode&)
{
    const Identity& identity = device().identity();
    return XmlNode::structure(QStringLiteral("Status"),
        {XmlNode::text(QStringLiteral("NetworkInterface"), QStringLiteral("Ethernet")),
            XmlNode::number(QStringLiteral("PaperWidth"), identity.width),
            XmlNode::text(QStringLiteral("1013"), identity.serialNumber.trimmed()),
            XmlNode::text(QStringLiteral("KKTFWVersion"), QStringLiteral("1.%1").arg(identity.release)),
            driveState(device()), operatorState(device().drive())});
}

XmlAnswer XmlProtocol::information(const XmlNode&)
{
    const Registration& registration = device().registration();
    return XmlNode::structure(QStringLiteral("Information"),
        {XmlNode::text(QStringLiteral("1037"), registration.number),
            XmlNode::text(QStringLiteral("1018"), registration.userInn),
            XmlNode::text(QStringLiteral("1048"), registration.userName),
            XmlNode::text(QStringLiteral("SWVersion"), QStringLiteral("emulated")),
            XmlNode::text(QStringLiteral("1189"), ffdVersion),
            XmlNode::text(QStringLiteral("1190"), ffdVersion)});
}

XmlAnswer XmlProtocol::shiftState(const XmlNode&)
{
    return XmlNode::structure(QStringLiteral("Shift"),
        {flag(QStringLiteral("ShiftState"), device().isShiftOpen()),
            flag(QStringLiteral("ShiftOvertime"), device().isShiftTooLong()),
            XmlNode::number(QStringLiteral("1038"), device().shiftNumber()),
            XmlNode::number(QStringLiteral("1042"), device().nextReceiptNumber() - 1)});
}

XmlAnswer XmlProtocol::drawerState(const XmlNode&)
{
    return XmlNode::structure(
        QStringLiteral("CashDrawer"), {flag(QStringLiteral("IsOpen"), device().isDrawerOpen())});
}

XmlAnswer XmlProtocol::time(const XmlNode&)
{
    return XmlNode::dateTime(QStringLiteral("200001"), device().now());
}

XmlAnswer XmlProtocol::taxSystems(const XmlNode&)
{
    return XmlNode::structure(QStringLiteral("TaxSystems"),
        {XmlNode::number(QStringLiteral("1062"), device().registration().taxSystems)});
}

XmlAnswer XmlProtocol::counters(const XmlNode&)
{
    QList<XmlNode> blocks{receipts(QStringLiteral("1194"), device().counters()),
        moneyOperations(device().counters(), device().cashInDrawer())};
    if (m_settings.isOn(QStringLiteral("MACRO.KKTCounters.GetCumulativeCounters")))
        blocks.insert(1, receipts(QStringLiteral("1157"), device().grandTotals()));
    return XmlNode::structure(QStringLiteral("Counters"), blocks);
}

} // namespace emulator
