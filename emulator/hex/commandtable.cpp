#include "hex/commandtable.h"

#include "hex/commands.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

// clang-format off
constexpr HexCommand hexCommands[] = {
    {0x00, hexcommands::start, "?,?", 0, false},
    {0x08, hexcommands::changeRegistration, ",?,?,?,?,,?,?,?,?,?,?,?,?,?,128,,", 0, true},
    {0x20, hexcommands::openDocument, "?,,?,?,,?,?,?,,", 0, true},
    {0x21, hexcommands::printText, "?,?", 0, true},
    {0x22, hexcommands::finishDocument, "0,1,0", 0, true},
    {0x23, hexcommands::cancelDocument, nullptr, 0, true},
    {0x24, hexcommands::printBarcode, "?,?,?,?,?", 0, true},
    {0x29, hexcommands::printQrCode, "?,1,?", 0, true},
    {0x30, hexcommands::addItem, "?,?,?,?,0,?,,?,,,?,?,?,?,2,?,?,?,?,?,,,", 0, true},
    {0x34, hexcommands::subtotal, nullptr, 0, true},
    {0x35, hexcommands::pay, "?,?", 0, true},
    {0x36, hexcommands::setMoney, ",?", 0, true},
    {0x3C, hexcommands::bindAgent, "?,?,?,?,?,?,?,?,?,?,?", 0, true},
    {0x3D, hexcommands::checkMarking, "0,?,?,?,,,?,0,,", 0, true},
    {0x3F, hexcommands::clearMarking, nullptr, 0, true},
    {0x41, hexcommands::bindMarking, "?,0,,255", 0, true},
    {0x60, hexcommands::printTotals, "?", 0, true},
    {0x61, hexcommands::closeShift, "?,?", 0, true},
    {0x65, hexcommands::printStored, "?", 0, true},
    {0x6A, hexcommands::printAccounting, "?", 0, true},
    {0x6B, hexcommands::openShift, "?,?", 0, true},
    {0x80, hexcommands::openDrawer, nullptr, 0, true},
    {0xA0, hexcommands::state, nullptr, 0, false},
    {0xA1, hexcommands::parameter, "?,?", 0, false},
    {0xA2, hexcommands::setParameter, "?,?,?", 0, true},
    {0xA3, hexcommands::setTime, "?,?", 0, false},
    {0xA4, hexcommands::driveData, "?", 1, false},
    {0xA5, hexcommands::deviceData, "?,1", 1, false},
    {0xA6, hexcommands::serialNumber, nullptr, 0, false},
    {0xA7, hexcommands::time, nullptr, 0, false},
    {0xA8, hexcommands::drawerState, nullptr, 0, false},
    {0xC0, hexcommands::registrationData, "?", 1, false},
    {0xE2, hexcommands::setLogo, "?", 0, true},
    {0xE3, hexcommands::clearLogo, nullptr, 0, true},
};
// clang-format on

} // namespace

const HexCommand* HexCommand::find(int code)
{
    const auto* const found = std::find_if(std::begin(hexCommands), std::end(hexCommands),
        [code](const HexCommand& command) { return command.code == code; });
    return found == std::end(hexCommands) ? nullptr : found;
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
