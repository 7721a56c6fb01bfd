#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator::xmlsettingsform {

/// The shape of a tree of settings: section, subsection, setting, none of them empty or twice. A question has
/// no values in it.
XmlVerdict checkReading(const XmlNode& tree);
XmlVerdict checkWriting(const XmlNode& tree);

} // namespace emulator::xmlsettingsform
