#include "register/settingtable.h"
#include "register/tags.h"
#include "xml/commands.h"

namespace emulator::xmlcommands {

namespace {

const QString ffdVersion = QStringLiteral("4");

XmlNode flag(const QString& name, bool on)
{
    return XmlNode::number(name, on ? 1 : 0);
}

// What every answer about money says of one kind of receipt.
XmlNode turnover(const QString& name, const Turnover& counted)
{
    static const QString paymentTags[paymentKinds] = {tag::countedCash, tag::countedElectronic,
        tag::countedPrepayment, tag::countedCredit, tag::countedOther};
    QList<XmlNode> nodes{
        XmlNode::number(tag::receiptCount, counted.count), XmlNode::money(tag::countedSum, counted.sum)};
    for (size_t kind = 0; kind < counted.payments.size(); ++kind)
        nodes.append(XmlNode::money(paymentTags[kind], counted.payments[kind]));
    return XmlNode::structure(name, nodes);
}

XmlNode receipts(const QString& name, const ShiftCounters& counters)
{
    return XmlNode::structure(
        name, {turnover(tag::sales, counters.sales), turnover(tag::returns, counters.returns)});
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
    const XmlNode when = unsent == nullptr ? XmlNode::text(tag::firstUnsentTime, QString())
                                           : XmlNode::dateTime(tag::firstUnsentTime, unsent->dateTime);
    return XmlNode::structure(QStringLiteral("OFDStatus"),
        {XmlNode::number(tag::unsentCount, drive.queueLength()),
            XmlNode::number(tag::firstUnsentNumber, unsent == nullptr ? 0 : unsent->number), when});
}

XmlNode driveState(const Register& device)
{
    const FiscalDrive& drive = device.drive();
    const int warnings = drive.warnings(device.now());
    const Document& document = device.document();
    const bool receipt = document.isReceiptInWork();
    return XmlNode::structure(QStringLiteral("FNStatus"),
        {XmlNode::number(QStringLiteral("LifePhase"), drive.lifePhase()),
            XmlNode::number(QStringLiteral("CurrentDocType"), receipt ? 4 : 0),
            flag(QStringLiteral("CurrentDocData"), receipt && !document.items.isEmpty()),
            flag(QStringLiteral("ShiftState"), device.state().shift.isOpen),
            flag(QStringLiteral("StatusNeedChange"), (warnings & 1) != 0),
            flag(QStringLiteral("StatusEndingResource"), (warnings & 2) != 0),
            flag(QStringLiteral("StatusOverflow"), (warnings & 4) != 0),
            flag(tag::operatorSilent, (warnings & 8) != 0),
            XmlNode::dateTime(QStringLiteral("lastDocDateTime"), drive.last().dateTime),
            XmlNode::number(QStringLiteral("lastDocNumber"), drive.last().number),
            XmlNode::text(tag::driveNumber, drive.number()),
            XmlNode::dateTime(QStringLiteral("ExpirationDate"), drive.expiry().startOfDay()),
            XmlNode::text(QStringLiteral("FWVersion"), drive.version())});
}

} // namespace

XmlAnswer state(const XmlContext& context, const XmlNode&)
{
    const Identity& identity = context.device.identity();
    return XmlNode::structure(QStringLiteral("Status"),
        {XmlNode::text(QStringLiteral("NetworkInterface"), QStringLiteral("Ethernet")),
            XmlNode::number(QStringLiteral("PaperWidth"), context.device.settings().paperWidth()),
            XmlNode::text(tag::registerNumber, identity.serialNumber.trimmed()),
            XmlNode::text(QStringLiteral("KKTFWVersion"), QStringLiteral("1.%1").arg(identity.release)),
            driveState(context.device), operatorState(context.device.drive())});
}

XmlAnswer information(const XmlContext& context, const XmlNode&)
{
    const Registration& registration = context.device.state().registration;
    return XmlNode::structure(QStringLiteral("Information"),
        {XmlNode::text(tag::registrationNumber, registration.number),
            XmlNode::text(tag::userInn, registration.userInn),
            XmlNode::text(tag::userName, registration.userName),
            XmlNode::text(QStringLiteral("SWVersion"), QStringLiteral("emulated")),
            XmlNode::text(tag::registerFormat, ffdVersion), XmlNode::text(tag::driveFormat, ffdVersion)});
}

XmlAnswer shiftState(const XmlContext& context, const XmlNode&)
{
    return XmlNode::structure(QStringLiteral("Shift"),
        {flag(QStringLiteral("ShiftState"), context.device.state().shift.isOpen),
            flag(QStringLiteral("ShiftOvertime"), context.device.isShiftTooLong()),
            XmlNode::number(tag::shiftNumber, context.device.state().shift.number),
            XmlNode::number(tag::receiptNumber, context.device.state().shift.receipts)});
}

XmlAnswer drawerState(const XmlContext& context, const XmlNode&)
{
    return XmlNode::structure(
        QStringLiteral("CashDrawer"), {flag(QStringLiteral("IsOpen"), context.device.isDrawerOpen())});
}

XmlAnswer time(const XmlContext& context, const XmlNode&)
{
    return XmlNode::dateTime(QStringLiteral("200001"), context.device.now());
}

XmlAnswer taxSystems(const XmlContext& context, const XmlNode&)
{
    return XmlNode::structure(QStringLiteral("TaxSystems"),
        {XmlNode::number(tag::taxSystems, context.device.state().registration.taxSystems)});
}

XmlAnswer counters(const XmlContext& context, const XmlNode&)
{
    QList<XmlNode> blocks{receipts(tag::shiftTotals, context.device.state().shift.counters),
        moneyOperations(context.device.state().shift.counters, context.device.state().drawer.cash)};
    if (context.device.settings().isOn(setting::answeredGrandTotals))
        blocks.insert(1, receipts(tag::driveTotals, context.device.state().shift.grandTotals));
    return XmlNode::structure(QStringLiteral("Counters"), blocks);
}

} // namespace emulator::xmlcommands
