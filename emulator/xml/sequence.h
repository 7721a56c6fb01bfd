#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator::xmlsequence {

/// The order in which each structure of a request has its parameters. It goes down through the whole tree;
/// the verdict names the first two that stand the wrong way round. What a structure does not have is not its
/// business.
XmlVerdict check(const XmlNode& node);

} // namespace emulator::xmlsequence
