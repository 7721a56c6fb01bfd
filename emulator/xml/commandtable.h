#pragma once

#include "line/exchange.h"
#include "xml/answer.h"
#include "xml/context.h"
#include "xml/rule.h"

#include <optional>

namespace emulator {

/// One command of the XML protocol.
struct XmlCommand
{
    int code;
    const char* name;
    XmlAnswer (*handler)(const XmlContext& context, const XmlNode& data);
    /// None for a command without parameters.
    std::optional<XmlRule> rule;
    /// What a strict register asks of the parameters besides.
    XmlVerdict (*form)(const XmlNode& data) = nullptr;
    ExchangeRole role = ExchangeRole::Other;

    /// Nothing for a code that no command has.
    static const XmlCommand* find(int code);
};

} // namespace emulator
