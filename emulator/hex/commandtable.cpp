#include "hex/commandtable.h"

#include "hex/commands.h"

#include <algorithm>
#include <iterator>

namespace emulator {

namespace {

// clang-format off
constexpr HexCommand hexCommands[] = {
    {0x00, hexcommands::start, 2, false},
    {0x08, hexcommands::changeRegistration, 18, true},
    {0x20, hexcommands::openDocument, 10, true},
    {0x21, hexcommands::printText, 2, true},
    {0x22, hexcommands::finishDocument, 3, true},
    {0x23, hexcommands::cancelDocument, 0, true},
    {0x24, hexcommands::printBarcode, 5, true},
    {0x29, hexcommands::printQrCode, 3, true},
    {0x30, hexcommands::addItem, 23, true},
    {0x34, hexcommands::subtotal, 0, true},
    {0x35, hexcommands::pay, 2, true},
    {0x36, hexcommands::setMoney, 2, true},
    {0x3C, hexcommands::bindAgent, 11, true},
    {0x3D, hexcommands::checkMarking, 10, true},
    {0x3F, hexcommands::clearMarking, 0, true},
    {0x41, hexcommands::bindMarking, 4, true},
    {0x60, hexcommands::printTotals, 1, true},
    {0x61, hexcommands::closeShift, 2, true},
    {0x65, hexcommands::printStored, 1, true},
    {0x6A, hexcommands::printAccounting, 1, true},
    {0x6B, hexcommands::openShift, 2, true},
    {0x80, hexcommands::openDrawer, 0, true},
    {0xA0, hexcommands::state, 0, false},
    {0xA1, hexcommands::parameter, 2, false},
    {0xA2, hexcommands::setParameter, 3, true},
    {0xA3, hexcommands::setTime, 2, false},
    {0xA4, hexcommands::driveData, 0, false},
    {0xA5, hexcommands::deviceData, 1, false},
    {0xA6, hexcommands::serialNumber, 0, false},
    {0xA7, hexcommands::time, 0, false},
    {0xA8, hexcommands::drawerState, 0, false},
    {0xC0, hexcommands::registrationData, 0, false},
    {0xE2, hexcommands::setLogo, 1, true},
    {0xE3, hexcommands::clearLogo, 0, true},
};
// clang-format on

} // namespace

const HexCommand* HexCommand::find(int code)
{
    const auto* const found = std::find_if(std::begin(hexCommands), std::end(hexCommands),
        [code](const HexCommand& command) { return command.code == code; });
    return found == std::end(hexCommands) ? nullptr : found;
}

} // namespace emulator
