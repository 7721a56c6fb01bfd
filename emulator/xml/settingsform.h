#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator::xmlsettingsform {

/// The shape of a tree of settings: section, subsection, setting, none of them empty or twice. A question has
/// no values in it.
XmlVerdict checkQuestion(const XmlNode& tree);
XmlVerdict checkOrder(const XmlNode& tree);

} // namespace emulator::xmlsettingsform
