#pragma once

#include "register/register.h"
#include "xml/answer.h"
#include "xml/context.h"
#include "xml/settings.h"

namespace emulator {

/// The commands of the XML protocol: each reads its parameters, which have passed its rule, has the register
/// judge and act, and answers.
namespace xmlcommands {

/// @name Queries
/// @{
XmlAnswer state(const XmlContext& context, const XmlNode& data);
XmlAnswer information(const XmlContext& context, const XmlNode& data);
XmlAnswer shiftState(const XmlContext& context, const XmlNode& data);
XmlAnswer drawerState(const XmlContext& context, const XmlNode& data);
XmlAnswer time(const XmlContext& context, const XmlNode& data);
XmlAnswer taxSystems(const XmlContext& context, const XmlNode& data);
XmlAnswer counters(const XmlContext& context, const XmlNode& data);
/// @}

/// @name Shift, reports, clock, drawer, registration, settings
/// @{
XmlAnswer openShift(const XmlContext& context, const XmlNode& data);
XmlAnswer closeShift(const XmlContext& context, const XmlNode& data);
XmlAnswer printTotals(const XmlContext& context, const XmlNode& data);
XmlAnswer printAccounting(const XmlContext& context, const XmlNode& data);
XmlAnswer printStored(const XmlContext& context, const XmlNode& data);
XmlAnswer printLast(const XmlContext& context, const XmlNode& data);
XmlAnswer changeRegistration(const XmlContext& context, const XmlNode& data);
XmlAnswer setTime(const XmlContext& context, const XmlNode& data);
XmlAnswer openDrawer(const XmlContext& context, const XmlNode& data);
XmlAnswer settings(const XmlContext& context, const XmlNode& data);
XmlAnswer setSettings(const XmlContext& context, const XmlNode& data);
/// @}

/// @name Marked goods
/// @{
XmlAnswer checkMarking(const XmlContext& context, const XmlNode& data);
XmlAnswer clearMarking(const XmlContext& context, const XmlNode& data);
/// @}

/// @name Documents, each whole
/// @{
XmlAnswer receipt(const XmlContext& context, const XmlNode& data);
XmlAnswer moneyDocument(const XmlContext& context, const XmlNode& data);
XmlAnswer textDocument(const XmlContext& context, const XmlNode& data);
/// @}

} // namespace xmlcommands

} // namespace emulator
