#include "xml/commandtable.h"

#include "register/tags.h"
#include "xml/commands.h"
#include "xml/receiptform.h"
#include "xml/settingsform.h"

#include <algorithm>

namespace emulator {

namespace {

QList<XmlCommand> makeXmlCommands()
{
    using Rule = XmlRule;
    const auto cashier = Rule::leaf(tag::cashier, XmlType::Text);
    const auto inn = Rule::optionalLeaf(tag::cashierInn, XmlType::Text);
    constexpr auto number = XmlType::Integer;
    return {
        {2, "GetState", xmlcommands::state, {}, nullptr, ExchangeRole::Asking},
        {4, "OpenShift", xmlcommands::openShift, Rule::tree(QStringLiteral("2"), {cashier, inn}),
            xmlreceiptform::checkShift},
        {6, "CloseShift", xmlcommands::closeShift, Rule::tree(QStringLiteral("5"), {cashier, inn}),
            xmlreceiptform::checkShift},
        {8, "CloseReceipt", xmlcommands::receipt, receiptRule(), xmlreceiptform::check,
            ExchangeRole::Receipt},
        // Reports name the cashier without his INN: hosts never send it with 12 and 46.
        {12, "AccountingReport", xmlcommands::printAccounting, Rule::tree(QStringLiteral("21"), {cashier})},
        {16, "PrintFnDocument", xmlcommands::printStored,
            Rule::tree(QStringLiteral("100000"), {Rule::leaf(tag::documentNumber, number)}), nullptr,
            ExchangeRole::Asking},
        {18, "Registration", xmlcommands::changeRegistration,
            Rule::tree(QStringLiteral("11"),
                {cashier, Rule::leaf(tag::changeReasons, number), Rule::leaf(tag::taxSystems, number)}),
            xmlreceiptform::checkRegistration},
        {22, "GetDateTime", xmlcommands::time, {}},
        {24, "SetDateTime", xmlcommands::setTime,
            Rule::tree(
                QStringLiteral("200001"), {Rule::leaf(QStringLiteral("DateTime"), XmlType::DateTime)})},
        {28, "PrintLastFnDocument", xmlcommands::printLast, {}, nullptr, ExchangeRole::Asking},
        {30, "NonFiscalDocument", xmlcommands::textDocument,
            Rule::tree(
                QStringLiteral("200003"), {Rule::leaf(QStringLiteral("NonFiscalText"), XmlType::Text)})},
        {36, "OpenDrawer", xmlcommands::openDrawer, {}},
        {38, "MoneyOperation", xmlcommands::moneyDocument,
            Rule::tree(QStringLiteral("200007"),
                {cashier, Rule::leaf(QStringLiteral("CashSumm"), XmlType::Sum),
                    Rule::leaf(QStringLiteral("MoneyOperationType"), number),
                    Rule::optionalLeaf(QStringLiteral("HeaderText"), XmlType::Text)}),
            nullptr, ExchangeRole::Document},
        {40, "GetCounters", xmlcommands::counters, {}, nullptr, ExchangeRole::Asking},
        {44, "GetShiftStatus", xmlcommands::shiftState, {}},
        {46, "PrintXReport", xmlcommands::printTotals, Rule::tree(QStringLiteral("200015"), {cashier})},
        {50, "GetTaxSystems", xmlcommands::taxSystems, {}},
        {52, "GetDrawerStatus", xmlcommands::drawerState, {}},
        {54, "GetParameters", xmlcommands::settings, Rule::openTree(QStringLiteral("200004"), true),
            xmlsettingsform::checkReading},
        {56, "SetParameters", xmlcommands::setSettings, Rule::openTree(QStringLiteral("200005"), true),
            xmlsettingsform::checkWriting},
        {58, "GetDeviceInformation", xmlcommands::information, {}},
        {76, "CheckMarkingCode", xmlcommands::checkMarking,
            Rule::tree(QStringLiteral("200017"),
                {Rule::leaf(tag::quantity, XmlType::Thousandths), Rule::leaf(tag::markingCode, XmlType::Text),
                    Rule::leaf(tag::plannedStatus, number), Rule::leaf(tag::markingMode, number),
                    Rule::leaf(tag::unit, number), Rule::openTree(tag::goodsCode, true)}),
            xmlreceiptform::checkMarking},
        {90, "ClearMarkingCodes", xmlcommands::clearMarking, {}},
    };
}

} // namespace

const XmlCommand* XmlCommand::find(int code)
{
    static const QList<XmlCommand> list = makeXmlCommands();
    const auto found = std::find_if(
        list.cbegin(), list.cend(), [code](const XmlCommand& command) { return command.code == code; });
    return found == list.cend() ? nullptr : &*found;
}

} // namespace emulator
