#pragma once

#include "sqlconnection.h"

#include <memory>
#include <optional>

namespace frserver {

/// Whose token has brought a document in, in a table of the service's own beside the journal's. All
/// operations throw sale::JournalError.
class Owners
{
public:
    /// Beside the journal at that place, which is there.
    Owners(const QString& place, int patienceMs);

    /// Before the document is accepted: without a document nobody has its id yet.
    void claim(const QString& id, const QString& owner);
    /// Nothing for a document that came in another way.
    std::optional<QString> ownerOf(const QString& id) const;

private:
    std::unique_ptr<sale::SqlConnection> m_connection;
};

} // namespace frserver
