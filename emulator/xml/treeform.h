#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator::xmltreeform {

/// How a tree is written, beyond what it takes to be read: its numbers and names have one form.
XmlVerdict check(const XmlNode& tree);

} // namespace emulator::xmltreeform
