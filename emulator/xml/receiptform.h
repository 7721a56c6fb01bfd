#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator::xmlreceiptform {

/// What a receipt must have beside a tree that passes the rule of its command. The verdict says which
/// structure breaks what.
XmlVerdict check(const XmlNode& receipt);
/// The same for the opening and the closing of a shift.
XmlVerdict checkShift(const XmlNode& shift);
/// The same for a registration.
XmlVerdict checkRegistration(const XmlNode& registration);
/// The same for the check of a marking code.
XmlVerdict checkMarking(const XmlNode& query);

} // namespace emulator::xmlreceiptform
