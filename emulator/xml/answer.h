#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

#include <optional>

namespace emulator {

/// Verdict and data of an answer.
struct XmlAnswer
{
    XmlVerdict verdict;
    std::optional<XmlNode> data;

    XmlAnswer(const XmlVerdict& itsVerdict)
        : verdict(itsVerdict)
    {
    }
    XmlAnswer(Refusal refusal)
        : verdict(refusal)
    {
    }
    XmlAnswer(const XmlNode& tree)
        : data(tree)
    {
    }
};

} // namespace emulator
