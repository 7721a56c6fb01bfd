#pragma once

#include "documentrequest.h"

#include <optional>

namespace frserver {

/// Where a document waits, as one word, which tokens have, too: the name of a register, or "pool:NAME". Names
/// have no colon.
class Place
{
public:
    static QString of(const sale::DocumentRequest& document)
    {
        return document.registerName.isEmpty() && !document.pool.isEmpty() ? ofPool(document.pool)
                                                                           : document.registerName;
    }
    static QString ofPool(const QString& pool) { return prefix + pool; }
    /// Nothing for a register.
    static std::optional<QString> poolOf(const QString& place)
    {
        return place.startsWith(prefix) ? std::optional(place.mid(prefix.size())) : std::nullopt;
    }

private:
    inline static const QString prefix = QStringLiteral("pool:");
};

} // namespace frserver
