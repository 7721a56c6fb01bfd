#pragma once

#include "sqliteconnection.h"

#include <optional>

namespace frserver {

/// Whose token has brought a document in, in a table of the service's own beside the journal's. All
/// operations throw sale::JournalError.
class Owners
{
public:
    /// In the journal's file, which is there.
    Owners(const QString& fileName, int patienceMs);

    /// Before the document is accepted: without a document nobody has its id yet.
    void claim(const QString& id, const QString& owner);
    /// Nothing for a document that came in another way.
    std::optional<QString> ownerOf(const QString& id) const;

private:
    sale::SqliteConnection m_connection;
};

} // namespace frserver
