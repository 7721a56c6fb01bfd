#include "hex/commandtable.h"

#include "hex/commands.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

// clang-format off
constexpr HexCommand hexCommands[] = {
    {0x00, "Initialize", hexcommands::start, "?,?", 0, false},
    {0x08, "Registration", hexcommands::changeRegistration, ",?,?,?,?,,?,?,?,?,?,?,?,?,?,128,,", 0, true},
    {0x20, "OpenDocument", hexcommands::openDocument, "?,,?,?,,?,?,?,,", 0, true, ExchangeRole::Document},
    {0x21, "PrintText", hexcommands::printText, "?,?", 0, true},
    {0x22, "FinishDocument", hexcommands::finishDocument, "0,1,0", 0, true, ExchangeRole::Finishing},
    {0x23, "CancelDocument", hexcommands::cancelDocument, nullptr, 0, true, ExchangeRole::Asking},
    {0x24, "PrintBarcode", hexcommands::printBarcode, "?,?,?,?,?", 0, true},
    {0x29, "PrintQrCode", hexcommands::printQrCode, "?,1,?", 0, true},
    {0x30, "AddPaymentObject", hexcommands::addItem, "?,?,?,?,0,?,,?,,,?,?,?,?,2,?,?,?,?,?,,,", 0, true},
    {0x34, "Subtotal", hexcommands::subtotal, nullptr, 0, true},
    {0x35, "Payment", hexcommands::pay, "?,?", 0, true},
    {0x36, "SumInOut", hexcommands::setMoney, ",?", 0, true},
    {0x3C, "BindAgentData", hexcommands::bindAgent, "?,?,?,?,?,?,?,?,?,?,?", 0, true},
    {0x3D, "CheckMarkingCode", hexcommands::checkMarking, "0,?,?,?,,,?,0,,", 0, true},
    {0x3F, "ClearMarkingCodes", hexcommands::clearMarking, nullptr, 0, true},
    {0x41, "BindMarkingCode", hexcommands::bindMarking, "?,0,,255", 0, true},
    {0x60, "PrintShiftCurrentTotals", hexcommands::printTotals, "?", 0, true},
    {0x61, "PrintShiftCloseReport", hexcommands::closeShift, "?,?", 0, true},
    {0x65, "PrintFnDocument", hexcommands::printStored, "?", 0, true, ExchangeRole::Asking},
    {0x6A, "AccountingReport", hexcommands::printAccounting, "?", 0, true},
    {0x6B, "OpenShift", hexcommands::openShift, "?,?", 0, true},
    {0x80, "OpenDrawer", hexcommands::openDrawer, nullptr, 0, true},
    {0xA0, "RequestStateStatus", hexcommands::state, nullptr, 0, false, ExchangeRole::Asking},
    {0xA1, "GetParameter", hexcommands::parameter, "?,?", 0, false},
    {0xA2, "SetParameter", hexcommands::setParameter, "?,?,?", 0, true},
    {0xA3, "SetDateTime", hexcommands::setTime, "?,?", 0, false},
    {0xA4, "GetFnData", hexcommands::driveData, "?", 1, false, ExchangeRole::Asking, "1"},
    {0xA5, "GetKktData", hexcommands::deviceData, "?,1", 1, false, ExchangeRole::Asking, "3,4,7,13,14"},
    {0xA6, "GetSerialNumber", hexcommands::serialNumber, nullptr, 0, false},
    {0xA7, "GetDateTime", hexcommands::time, nullptr, 0, false},
    {0xA8, "GetDrawerState", hexcommands::drawerState, nullptr, 0, false},
    {0xC0, "GetRegistrationData", hexcommands::registrationData, "10", 1, false},
    {0xE2, "SetLogo", hexcommands::setLogo, "?", 0, true},
    {0xE3, "ClearLogo", hexcommands::clearLogo, nullptr, 0, true},
};
// clang-format on

} // namespace

const HexCommand* HexCommand::find(int code)
{
    const auto* const found = std::find_if(std::begin(hexCommands), std::end(hexCommands),
        [code](const HexCommand& command) { return command.code == code; });
    return found == std::end(hexCommands) ? nullptr : found;
}

ExchangeRole HexCommand::roleWith(const QByteArray& field) const
{
    const bool fits = questions == nullptr || QByteArray(questions).split(',').contains(field);
    return fits ? role : ExchangeRole::Other;
}

QString HexCommand::misfit(const HexFields& fields) const
{
    const QList<QByteArray> wanted = form == nullptr ? QList<QByteArray>() : QByteArray(form).split(',');
    const qsizetype count = fields.count();
    if (count < wanted.size() - optional)
        return QStringLiteral("%1 fields, %2 are too few").arg(wanted.size()).arg(count);
    if (!fields.isStrict())
        return {};
    if (count > wanted.size())
        return QStringLiteral("%1 fields, %2 are too many").arg(wanted.size()).arg(count);
    for (qsizetype index = 0; index < count; ++index) {
        if (wanted.at(index) != "?" && wanted.at(index) != fields.raw(index))
            return QStringLiteral("field %1 is always \"%2\"")
                .arg(index + 1)
                .arg(QLatin1String(wanted.at(index)));
    }
    return {};
}

} // namespace emulator
