#pragma once

#include "hex/answer.h"
#include "hex/fields.h"
#include "register/register.h"

namespace emulator {

/// The commands of the HEX protocol: each reads its fields, has the register judge and act, and answers.
namespace hexcommands {

/// @name Start, clock, shift, reports
/// @{
HexAnswer start(Register& device, HexFields& fields);
HexAnswer setTime(Register& device, HexFields& fields);
HexAnswer time(Register& device, HexFields& fields);
HexAnswer openShift(Register& device, HexFields& fields);
HexAnswer closeShift(Register& device, HexFields& fields);
HexAnswer printTotals(Register& device, HexFields& fields);
HexAnswer printAccounting(Register& device, HexFields& fields);
HexAnswer printStored(Register& device, HexFields& fields);
/// @}

/// @name Documents
/// @{
HexAnswer openDocument(Register& device, HexFields& fields);
HexAnswer printText(Register& device, HexFields& fields);
HexAnswer printBarcode(Register& device, HexFields& fields);
HexAnswer printQrCode(Register& device, HexFields& fields);
HexAnswer finishDocument(Register& device, HexFields& fields);
HexAnswer cancelDocument(Register& device, HexFields& fields);
HexAnswer setMoney(Register& device, HexFields& fields);
/// @}

/// @name Receipts and marked goods
/// @{
HexAnswer addItem(Register& device, HexFields& fields);
HexAnswer bindAgent(Register& device, HexFields& fields);
HexAnswer subtotal(Register& device, HexFields& fields);
HexAnswer pay(Register& device, HexFields& fields);
HexAnswer checkMarking(Register& device, HexFields& fields);
HexAnswer bindMarking(Register& device, HexFields& fields);
HexAnswer clearMarking(Register& device, HexFields& fields);
/// @}

/// @name Queries
/// @{
HexAnswer state(Register& device, HexFields& fields);
HexAnswer driveData(Register& device, HexFields& fields);
HexAnswer deviceData(Register& device, HexFields& fields);
HexAnswer serialNumber(Register& device, HexFields& fields);
HexAnswer drawerState(Register& device, HexFields& fields);
HexAnswer registrationData(Register& device, HexFields& fields);
/// @}

/// @name Settings, registration, logo, drawer
/// @{
HexAnswer parameter(Register& device, HexFields& fields);
HexAnswer setParameter(Register& device, HexFields& fields);
HexAnswer changeRegistration(Register& device, HexFields& fields);
HexAnswer setLogo(Register& device, HexFields& fields);
HexAnswer clearLogo(Register& device, HexFields& fields);
HexAnswer openDrawer(Register& device, HexFields& fields);
/// @}

} // namespace hexcommands

} // namespace emulator
