#pragma once

#include "line/exchange.h"

#include <QJsonObject>

#include <optional>

namespace emulator {

/// Something that a host ought to mind although the register does not refuse it.
class HostRule
{
public:
    HostRule() = default;
    virtual ~HostRule() = default;
    HostRule(const HostRule&) = delete;
    HostRule& operator=(const HostRule&) = delete;

    /// The name of its warnings.
    virtual QString kind() const = 0;
    /// A document was stored in the exchange that comes to its end next.
    virtual void store(const QJsonObject& document) { Q_UNUSED(document) }
    /// An exchange came to its end; the warning when it breaks the rule.
    virtual std::optional<QString> look(const Exchange& exchange) = 0;
};

} // namespace emulator
